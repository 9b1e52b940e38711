#pragma once

#include <string>

#include "platform/dao/postgres/place.h"

// A signpost is a small text file that stands where a shop's database file would, and says on which server
// the records are instead:
//
//     Tarvello server 1
//     host = shop
//     dbname = tarvello
//
// Empty lines and those that begin with '#' are passed over.
namespace dao::postgres {

// By the size and the first bytes of the file. False for everything else: an encrypted database, which is not
// even opened, a folder, no file at all.
bool isSignpost(const std::string& path);

// errFileNotFound, errNoPermission, errDiskIo: as with any file. errUnrecognisedFormat: not a signpost, or a
// line that cannot be understood, with its number. errNewerForm: a signpost of a newer program.
Address readSignpost(const std::string& path);

// New or over the old one, at once: whoever reads meanwhile finds the one or the other. errInvalidOperation:
// a place that could not be read back.
void writeSignpost(const std::string& path, const Address& place);

}  // namespace dao::postgres
