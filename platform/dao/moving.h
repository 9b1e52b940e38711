#pragma once

#include <string>

#include "platform/dao/transfer.h"

// A shop that moves house: from its file to a server, and home again. Both ways nothing that existed is
// changed before the copy is whole and was compared with what it was made from.
namespace dao {

// Carries the shop of the file at `path` to the server's database that `server` tells ("host=...
// dbname=..."), and puts a signpost in the file's place; the file stays beside it as NAME.before-server.mdb.
// Alone on both sides throughout: 3045, 3356. 3012 where the database holds a shop already or that name is
// taken; a copy that an earlier try left unfinished is replaced. 3421 with the rows that hold texts which no
// server keeps, before anything is changed.
void moveToServer(const std::string& path, const std::string& connect, const std::string& server,
                  const TransferWatch& watch = {});

// Carries the shop that the signpost at `path` leads to into a new file at `target`, enciphered with the
// password in `connect`. Alone on the server throughout; the server keeps its shop. 3012 where `target`
// exists.
void moveHome(const std::string& path, const std::string& target, const std::string& connect,
              const TransferWatch& watch = {});

// One consistent copy of the server's shop in a file, in the place of whatever stands at `target`, while
// others go on working.
void copyToFile(const std::string& path, const std::string& target);

// Sets the whole shop on the server back to what a file holds, in one transaction. Alone on the server: 3045.
// 3421 as above.
void setBack(const std::string& path, const std::string& file);

}  // namespace dao
