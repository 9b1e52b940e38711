#include "exchange/unfinished.h"

#include <fcntl.h>
#include <stdio.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace exchange {
namespace {

QString beside(const std::string& target) {
    const std::filesystem::path path = std::filesystem::absolute(target).lexically_normal();
    // A folder may be named with a separator behind it.
    const std::filesystem::path named = path.has_filename() ? path : path.parent_path();
    return QString::fromStdString(named.parent_path() / ("." + named.filename().string() + ".XXXXXX"));
}

std::string withoutSeparator(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

// Some disks know of no renaming that spares what is there.
bool giveName(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return false;
    }
    needNothingAt(to);
    return rename(from.c_str(), to.c_str()) == 0;
}

}  // namespace

void needNothingAt(const std::string& path) {
    std::error_code failed;
    const std::filesystem::file_status found = std::filesystem::symlink_status(path, failed);
    if (found.type() != std::filesystem::file_type::not_found) {
        throw std::runtime_error("'" + path + "' is there already; nothing is written over it.");
    }
}

Unfinished::Unfinished(const std::string& target)
    : target_(withoutSeparator(target)), folder_(beside(target_)) {
    needNothingAt(target_);
    if (!folder_.isValid()) {
        throw std::runtime_error("'" + target_ + "' cannot be made: " + folder_.errorString().toStdString());
    }
}

void Unfinished::finish() {
    if (!giveName(path(), target_)) {
        throw std::runtime_error("'" + target_ + "' cannot be made: " + std::strerror(errno));
    }
}

}  // namespace exchange
