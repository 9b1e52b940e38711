#pragma once

#include <string>
#include <vector>

#include "platform/dao/sqlite/password.h"

namespace dao {

// A workstation notes the salts of the files that it opens, in the file that DBEngine::setNotesFile names:
// where a file's own first bytes are gone, no password opens it any more, though every record may still be
// there.

void noteSalt(const std::string& path, const Salt& salt) noexcept;
// The last one first. Nothing where nothing was noted.
std::vector<Salt> notedSalts(const std::string& path);

}  // namespace dao
