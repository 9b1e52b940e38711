#include "platform/dao/sqlite/file_bytes.h"

#include <algorithm>

#include "platform/dao/failure.h"

namespace dao::driver {

sqlite3_file* FileBytes::ownFile() const {
    sqlite3_file* file = nullptr;
    if (sqlite3_file_control(db_, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || file == nullptr ||
        file->pMethods == nullptr) {
        fail(errDiskIo);
    }
    return file;
}

std::int64_t FileBytes::size() const {
    sqlite3_file* const file = ownFile();
    sqlite3_int64 size = 0;
    if (file->pMethods->xFileSize(file, &size) != SQLITE_OK) {
        fail(errDiskIo);
    }
    return size;
}

std::size_t FileBytes::read(std::int64_t offset, std::span<char> buffer) const {
    const std::int64_t all = size();
    if (offset >= all) {
        return 0;
    }
    sqlite3_file* const file = ownFile();
    const std::size_t wanted = std::min<std::size_t>(buffer.size(), static_cast<std::size_t>(all - offset));
    const int code = file->pMethods->xRead(file, buffer.data(), static_cast<int>(wanted), offset);
    if (code != SQLITE_OK && code != SQLITE_CORRUPT) {  // a page of zeroes is read all the same
        fail(errDiskIo);
    }
    return wanted;
}

}  // namespace dao::driver
