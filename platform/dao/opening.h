#pragma once

#include <memory>
#include <string>

#include "platform/dao/file_key.h"

namespace dao {

class OpenFile;

// How a file is to be opened, found out before anything of it is decrypted.
struct Opening : FileKey {
    std::shared_ptr<OpenFile> openAlready;  // by this process
};

// 3024, 3044, 3343, 3031. `remembered`: without a password in `connect` that of an earlier opening will do.
Opening examine(const std::string& path, const std::string& connect, bool remembered);
// The connection of this process to the file, made if there is none. 3049 for a file that cannot be read.
std::shared_ptr<OpenFile> openFile(const Opening& opening, bool writable, std::shared_ptr<LockFile> lock);

}  // namespace dao
