#include "exchange/unfinished.h"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace exchange {
namespace {

constexpr const char* kRandom = "-XXXXXX";

std::string withoutSeparator(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

// Hidden, and on the same disk.
std::string besideOf(const std::string& target) {
    needNothingAt(target);
    const std::filesystem::path path = std::filesystem::absolute(target).lexically_normal();
    return (path.parent_path() / ("." + path.filename().string() + ".unfinished")).string();
}

// Whether the open folder is the one of that name, and not one that was taken away.
bool isThere(int folder, const std::string& path) {
    struct stat held {};
    struct stat found {};
    return fstat(folder, &held) == 0 && lstat(path.c_str(), &found) == 0 && held.st_ino == found.st_ino &&
           held.st_dev == found.st_dev;
}

int openFolder(const std::string& path) {
    return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

void removeFolder(const std::string& path) noexcept {
    std::error_code failed;
    std::filesystem::remove_all(path, failed);
}

bool isMadeFrom(const std::string& name, const std::string& stem) {
    return name.size() == stem.size() + std::strlen(kRandom) && name.compare(0, stem.size(), stem) == 0 &&
           name[stem.size()] == '-';
}

// Where a disk has no locks, nobody knows whether a maker lives, and all of them stay.
void sweepLeft(const std::filesystem::path& stem) {
    std::error_code failed;
    for (std::filesystem::directory_iterator entry(stem.parent_path(), failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const std::string path = entry->path().string();
        if (!isMadeFrom(entry->path().filename().string(), stem.filename().string())) {
            continue;
        }
        const int folder = openFolder(path);
        if (folder >= 0) {
            if (flock(folder, LOCK_EX | LOCK_NB) == 0 && isThere(folder, path)) {
                removeFolder(path);
            }
            close(folder);
        }
    }
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

MakingFolder::MakingFolder(const std::string& stem) {
    sweepLeft(stem);
    // Another process may sweep it away between its making and its holding, but not again and again.
    for (int tries = 3; !makeAndHold(stem); --tries) {
        if (tries == 1) {
            throw std::runtime_error("'" + path_ +
                                     "' was taken away as soon as it was made, three times running.");
        }
    }
}

bool MakingFolder::makeAndHold(const std::string& stem) {
    path_ = stem + kRandom;
    if (mkdtemp(path_.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category());
    }
    held_ = openFolder(path_);
    const int failed = held_ < 0 ? errno : 0;
    flock(held_, LOCK_EX);
    if (isThere(held_, path_)) {
        return true;
    }
    letGo();
    if (failed != 0 && failed != ENOENT) {
        rmdir(path_.c_str());
        throw std::system_error(failed, std::generic_category());
    }
    return false;
}

void MakingFolder::letGo() noexcept {
    if (held_ >= 0) {
        close(held_);
        held_ = -1;
    }
}

MakingFolder::~MakingFolder() {
    removeFolder(path_);
    letGo();
}

Unfinished::Unfinished(const std::string& target) try
    : target_(withoutSeparator(target)), folder_(besideOf(target_)) {
} catch (const std::system_error& error) {
    throw std::runtime_error("'" + target + "' cannot be made: " + error.code().message());
}

void Unfinished::finish() {
    if (!giveName(path(), target_)) {
        throw std::runtime_error("'" + target_ + "' cannot be made: " + std::strerror(errno));
    }
}

}  // namespace exchange
