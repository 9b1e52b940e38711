#pragma once

#include <memory>
#include <string>

#include "platform/dao/lock_file.h"
#include "platform/dao/open_file.h"
#include "platform/dao/password.h"

namespace dao {

// How a file is to be opened, found out before anything of it is decrypted.
struct Opening {
    std::string path;  // without links
    std::string password;
    Salt salt{};
    std::shared_ptr<OpenFile> openAlready;  // by this process
};

// 3024, 3044, 3343, 3031. `remembered`: without a password in `connect` that of an earlier opening will do.
Opening examine(const std::string& path, const std::string& connect, bool remembered);
// The connection of this process to the file, made if there is none. 3049 for a file that cannot be read.
std::shared_ptr<OpenFile> openFile(const Opening& opening, bool writable, std::shared_ptr<LockFile> lock);
std::unique_ptr<driver::Store> openStoreFor(const Opening& opening, bool writable);
// Nothing where the folder takes no lock file and nothing is to be written.
std::shared_ptr<LockFile> lockFor(const std::string& path, bool readOnly);

}  // namespace dao
