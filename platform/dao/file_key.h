#pragma once

#include <memory>
#include <string>

#include "platform/dao/driver.h"
#include "platform/dao/lock_file.h"
#include "platform/dao/password.h"

namespace dao {

// What it takes to get into a file.
struct FileKey {
    std::string path;  // without links
    std::string password;
    Salt salt{};
};

// A connection of its own. 3049 for a file that cannot be read, 3811 for one that a newer program has
// written.
std::unique_ptr<driver::Store> openStoreFor(const FileKey& key, bool writable);
// The same, writable where the file and its folder are.
std::unique_ptr<driver::Store> openStoreFor(const FileKey& key);
// Nothing where the folder takes no lock file and nothing is to be written.
std::shared_ptr<LockFile> lockFor(const std::string& path, bool readOnly);

}  // namespace dao
