#pragma once

#include <memory>
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
                  const RowWatch& watch = {});

// Carries the shop that the signpost at `path` leads to into a new file at `target`, enciphered with the
// password in `connect`. Alone on the server throughout; the server keeps its shop. 3012 where `target`
// exists.
void moveHome(const std::string& path, const std::string& target, const std::string& connect,
              const RowWatch& watch = {});

// The shop on the server that the signpost at `path` leads to, as it is when this is made: others go on
// working meanwhile. It reads over a connection of its own, which keeps nobody out and counts as nobody's
// presence.
class ShopView {
 public:
    explicit ShopView(const std::string& path);

    // What the shop's records are: another text once anything but a stored query has changed, and another for
    // every other shop.
    const std::string& state() const { return state_; }
    // One consistent copy of it, in the place of whatever stands at `target`, enciphered with the password
    // that the shop was last opened with.
    void copyTo(const std::string& target, const RowWatch& watch = {});

 private:
    std::string connect_;  // lets into the copy
    std::unique_ptr<driver::Store> store_;
    std::string state_;
};

// Sets the whole shop on the server back to what a file holds, in one transaction. Alone on the server: 3045.
// 3421 as above.
void setBack(const std::string& path, const std::string& file);

}  // namespace dao
