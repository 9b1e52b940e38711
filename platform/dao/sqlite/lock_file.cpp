#include "platform/dao/sqlite/lock_file.h"

#include <cerrno>
#include <chrono>
#include <map>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/dao/failure.h"
#include "platform/dao/sqlite/companion_files.h"
#include "platform/dao/sqlite/file_paths.h"

namespace dao {
namespace {

// A compaction of the shop's file takes less than this; whoever comes in the middle of one waits for it.
constexpr std::chrono::milliseconds kPatience{1000};
constexpr std::chrono::milliseconds kNap{10};

std::map<std::string, std::weak_ptr<LockFile>>& locks() {
    static auto* const kAll =
        new std::map<std::string, std::weak_ptr<LockFile>>;  // outlives every static window
    return *kAll;
}

// Who is in holds the first byte of the file; a number holds the byte behind as many others. Neither byte is
// ever written.
constexpr off_t kPresence = 0;
constexpr off_t kNumbers = 1;

bool trySetLock(int fd, short kind, off_t byte) noexcept {
    struct flock request {};
    request.l_type = kind;
    request.l_whence = SEEK_SET;
    request.l_start = byte;
    request.l_len = 1;
    return fcntl(fd, F_OFD_SETLK, &request) == 0;
}

// Locks of the open file, not of the process: closing some other handle on the lock file does not lose them,
// and changing between shared and exclusive is one step that either happens or leaves the old lock in place.
bool setLock(int fd, short kind, off_t byte = kPresence) {
    for (;;) {
        if (trySetLock(fd, kind, byte)) {
            return true;
        }
        if (errno == EAGAIN || errno == EACCES) {
            return false;
        }
        if (errno != EINTR) {
            fail(errCannotLockFile);
        }
    }
}

// A colleague whose database this is as well has to get into what we make beside it.
int openOrMake(const std::string& path, const std::string& database) {
    const int made = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (made < 0 && errno == EEXIST) {
        return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    }
    if (made >= 0) {
        followRights(path, database);
    }
    return made;
}

}  // namespace

std::shared_ptr<LockFile> LockFile::of(const std::string& path) {
    return at(lockFileOf(path), path);
}

// A file of its own: earlier releases lock all of the other one, and would keep, or be kept, out.
std::shared_ptr<LockFile> LockFile::ofNumbers(const std::string& path) {
    return at(numbersFileOf(path), path);
}

std::shared_ptr<LockFile> LockFile::at(const std::string& lockPath, const std::string& database) {
    std::weak_ptr<LockFile>& known = locks()[lockPath];
    if (std::shared_ptr<LockFile> lock = known.lock()) {
        return lock;
    }
    std::shared_ptr<LockFile> lock(new LockFile(lockPath, database));
    known = lock;
    return lock;
}

LockFile::LockFile(std::string path, const std::string& database) : path_(std::move(path)) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!tryOpen(database)) {
        if (std::chrono::steady_clock::now() >= deadline) {
            fail(errExclusiveByOther);
        }
        std::this_thread::sleep_for(kNap);
    }
}

bool LockFile::tryOpen(const std::string& database) {
    fd_ = openOrMake(path_, database);
    if (fd_ < 0) {
        fail(errCannotLockFile);
    }
    struct stat held {};
    struct stat named {};
    try {
        if (setLock(fd_, F_RDLCK)) {
            // The last process to leave may have taken the file away between our opening and our locking it.
            if (fstat(fd_, &held) == 0 && stat(path_.c_str(), &named) == 0 && held.st_ino == named.st_ino &&
                held.st_dev == named.st_dev) {
                return true;
            }
        }
    } catch (...) {
        close(fd_);
        throw;
    }
    close(fd_);
    fd_ = -1;
    return false;
}

LockFile::~LockFile() {
    if (fd_ < 0) {
        return;
    }
    if (trySetLock(fd_, F_WRLCK, kPresence)) {
        unlink(path_.c_str());
    }
    close(fd_);
    locks().erase(path_);
}

bool LockFile::enterExclusive() {
    if (exclusive_ == 0 && !setLock(fd_, F_WRLCK)) {
        return false;
    }
    ++exclusive_;
    return true;
}

void LockFile::leaveExclusive() noexcept {
    if (exclusive_ > 0 && --exclusive_ == 0) {
        trySetLock(fd_, F_RDLCK, kPresence);
    }
}

// The system would grant one process the same byte twice.
bool LockFile::holdNumber(int number) {
    if (numbers_.contains(number) || !setLock(fd_, F_WRLCK, kNumbers + number)) {
        return false;
    }
    numbers_.insert(number);
    return true;
}

void LockFile::leaveNumber(int number) noexcept {
    trySetLock(fd_, F_UNLCK, kNumbers + number);
    numbers_.erase(number);
}

}  // namespace dao
