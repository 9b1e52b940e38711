#pragma once

#include <sqlcipher/sqlite3.h>

#include <cstdint>
#include <span>

namespace dao::driver {

// The bytes of a connection's file as they lie, read by the connection's own handle: another handle of this
// process on the same file would, when closed, let go of every lock the process has on it. errDiskIo.
class FileBytes {
 public:
    explicit FileBytes(sqlite3* db) : db_(db) {}

    std::int64_t size() const;
    // The number of bytes read: less than asked for at the end.
    std::size_t read(std::int64_t offset, std::span<char> buffer) const;

 private:
    sqlite3_file* ownFile() const;

    sqlite3* db_;
};

}  // namespace dao::driver
