#include "platform/dao/sqlite/file_paths.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/dao/failure.h"
#include "platform/dao/sqlite/companion_files.h"

namespace dao {
namespace {

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string resolved(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
    return real != nullptr ? std::string(real.get()) : std::string();
}

// Whether the system said that there is nothing at a path; where it says anything else, nobody knows.
bool saysNothingThere(int systemError) {
    return systemError == ENOENT || systemError == ENOTDIR || systemError == ENAMETOOLONG ||
           systemError == ELOOP || systemError == EACCES;
}

bool isFolder(const std::string& path) {
    struct stat found {};
    return lookAt(path, found) && S_ISDIR(found.st_mode);
}

bool isLink(const std::string& path) {
    struct stat found {};
    return lstat(path.c_str(), &found) == 0 && S_ISLNK(found.st_mode);
}

class Descriptor {
 public:
    // A file that it makes is for its user alone.
    Descriptor(const std::string& path, int flags) : fd_(open(path.c_str(), flags | O_CLOEXEC, 0600)) {}
    ~Descriptor() {
        if (fd_ >= 0) {
            close(fd_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }

 private:
    int fd_;
};

void syncPath(const std::string& path) {
    const Descriptor file(path, O_RDONLY);
    if (file.get() < 0 || fsync(file.get()) != 0) {
        failWithSystemError(errno);
    }
}

bool lives(int process) {
    return kill(process, 0) == 0 || errno != ESRCH;
}

void copyBytes(const std::string& from, const std::string& to) {
    const Descriptor source(from, O_RDONLY);
    const Descriptor target(to, O_WRONLY | O_CREAT | O_TRUNC);
    if (source.get() < 0 || target.get() < 0) {
        failWithSystemError(errno);
    }
    for (;;) {
        const ssize_t copied = copy_file_range(source.get(), nullptr, target.get(), nullptr, 1 << 30, 0);
        if (copied == 0) {
            return;
        }
        if (copied < 0) {
            failWithSystemError(errno);
        }
    }
}

void sweepFolder(const std::string& path) {
    std::error_code error;
    const std::filesystem::path folder = folderOf(path);
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const int process = writerOf(path, entry->path().filename().native());
        if (process > 0 && !lives(process)) {
            unlink(entry->path().c_str());
        }
    }
}

}  // namespace

void failWithSystemError(int systemError) {
    switch (systemError) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            fail(errNotEnoughSpace);
        case EROFS:
        case EACCES:
        case EPERM:
            fail(errReadOnly);
        case ENOENT:
            fail(errFileNotFound);
        default:
            fail(errDiskIo);
    }
}

bool lookAt(const std::string& path, struct stat& found) {
    if (stat(path.c_str(), &found) == 0) {
        return true;
    }
    if (!saysNothingThere(errno)) {
        failWithSystemError(errno);
    }
    return false;
}

std::string existingFile(const std::string& path) {
    struct stat found {};
    if (path.empty()) {
        fail(errFileNotFound, "Couldn't find file ''.");
    }
    if (!lookAt(path, found)) {
        if (errno == EACCES) {
            fail(errNoPermission);
        }
        if (errno == ENOTDIR || errno == ENAMETOOLONG || errno == ELOOP || !isFolder(folderOf(path))) {
            fail(errPathInvalid, "'" + path + "' isn't a valid path.");
        }
        fail(errFileNotFound, "Couldn't find file '" + path + "'.");
    }
    if (!S_ISREG(found.st_mode)) {
        fail(errPathInvalid, "'" + path + "' isn't a valid path.");
    }
    std::string real = resolved(path);
    if (real.empty()) {
        fail(errPathInvalid, "'" + path + "' isn't a valid path.");
    }
    return real;
}

std::string targetFile(const std::string& path) {
    if (fileExists(path)) {
        return existingFile(path);
    }
    // Who shares the file behind the link would never see what is put in the link's place.
    if (isLink(path)) {
        fail(errPathInvalid, "'" + path + "' is a link to a file that isn't there.");
    }
    const std::string folder = resolved(folderOf(path));
    if (path.empty() || nameOf(path).empty() || folder.empty() || !isFolder(folder)) {
        fail(errPathInvalid, "'" + path + "' isn't a valid path.");
    }
    return (folder == "/" ? "" : folder) + '/' + nameOf(path);
}

bool fileExists(const std::string& path) {
    struct stat found {};
    return lookAt(path, found);
}

bool mayWrite(const std::string& path) {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}
bool folderMayWrite(const std::string& path) {
    return mayWrite(folderOf(path));
}

bool hasJournal(const std::string& path) {
    const Descriptor journal(journalOf(path), O_RDONLY);
    if (journal.get() < 0) {
        if (errno != ENOENT) {
            failWithSystemError(errno);
        }
        return false;
    }
    char head = 0;
    const ssize_t size = pread(journal.get(), &head, 1, 0);
    if (size < 0) {
        failWithSystemError(errno);
    }
    return size == 1 && head != 0;
}

void removeSpentJournal(const std::string& path) noexcept {
    try {
        const QuietErrors quiet;
        if (!hasJournal(path)) {
            unlink(journalOf(path).c_str());
        }
    } catch (const std::exception&) {
        // One that cannot be read may hold what is to be put back: it stays.
    }
}

Salt readSalt(const std::string& path) {
    const Descriptor file(path, O_RDONLY);
    if (file.get() < 0) {
        if (errno == EACCES || errno == EPERM) {
            fail(errNoPermission);
        }
        failWithSystemError(errno);
    }
    struct stat found {};
    Salt salt{};
    if (fstat(file.get(), &found) != 0) {
        failWithSystemError(errno);
    }
    const ssize_t size = pread(file.get(), salt.data(), salt.size(), 0);
    if (size < 0) {
        failWithSystemError(errno);
    }
    if (found.st_size < static_cast<off_t>(kPageSize) || size != static_cast<ssize_t>(salt.size()) ||
        !hasOurMark(salt)) {
        fail(errUnrecognisedFormat, "Unrecognized database format '" + path + "'.");
    }
    return salt;
}

void syncFolderOf(const std::string& path) {
    const Descriptor folder(folderOf(path), O_RDONLY | O_DIRECTORY);
    if (folder.get() >= 0) {
        fsync(folder.get());
    }
}

void removeFile(const std::string& path) {
    if (unlink(path.c_str()) != 0 && errno != ENOENT) {
        failWithSystemError(errno);
    }
}

void renameFile(const std::string& from, const std::string& to) {
    if (rename(from.c_str(), to.c_str()) != 0) {
        failWithSystemError(errno);
    }
    syncFolderOf(to);
}

// A file system without rights refuses, and loses nothing by it.
void followRights(const std::string& path, const std::string& like) noexcept {
    struct stat found {};
    struct stat own {};
    if (stat(like.c_str(), &found) != 0 || stat(path.c_str(), &own) != 0) {
        return;
    }
    mode_t rights = (found.st_mode & 0666) | 0600;
    if (own.st_gid != found.st_gid && chown(path.c_str(), static_cast<uid_t>(-1), found.st_gid) != 0) {
        rights &= ~static_cast<mode_t>(S_IRWXG);
    }
    chmod(path.c_str(), rights);
}

// A second name for the same file costs nothing; not every file system has such.
void keepUnder(const std::string& path, const std::string& kept) {
    const std::string fresh = unfinishedOf(kept);
    removeFile(fresh);
    if (link(path.c_str(), fresh.c_str()) != 0) {
        copyBytes(path, fresh);
        followRights(fresh, path);
    }
    renameFile(fresh, kept);
}

void sweepUnfinished(const std::string& path) noexcept {
    try {
        sweepFolder(path);
    } catch (const std::exception&) {
        // No memory for it now: the next one who has the file alone sweeps.
    }
}

UnfinishedFile::UnfinishedFile(std::string target) : target_(std::move(target)) {
    path_ = unfinishedOf(target_);
    unlink(path_.c_str());
    unlink(journalOf(path_).c_str());
}

UnfinishedFile::~UnfinishedFile() {
    if (finished_) {
        return;
    }
    unlink(path_.c_str());
    unlink(journalOf(path_).c_str());
}

void UnfinishedFile::make() const {
    const Descriptor file(path_, O_WRONLY | O_CREAT | O_EXCL);
    if (file.get() < 0) {
        failWithSystemError(errno);
    }
}

void UnfinishedFile::finish() {
    followRights(path_, target_);
    syncPath(path_);
    removeSpentJournal(path_);
    removeFile(journalOf(target_));
    renameFile(path_, target_);
    unlink(damageMarkOf(target_).c_str());  // it spoke of the former file
    finished_ = true;
}

}  // namespace dao
