#include "exchange/old_format.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace exchange {
namespace {

// A file for reading; closed with it.
class ReadFile {
 public:
    explicit ReadFile(const std::string& path) : fd_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~ReadFile() {
        if (fd_ >= 0) {
            close(fd_);
        }
    }
    ReadFile(const ReadFile&) = delete;
    ReadFile& operator=(const ReadFile&) = delete;
    int get() const { return fd_; }

 private:
    int fd_;
};

constexpr std::size_t kHead = 32;
constexpr std::size_t kVersionAt = 0x14;
constexpr std::size_t kMarkAt = 4;

bool hasMark(const std::array<char, kHead>& head, std::string_view mark) {
    return std::equal(mark.begin(), mark.end(), head.begin() + kMarkAt);
}

// The lock file is a list of those who came in: a machine and a user, 32 bytes each. It outlives a crash.
constexpr std::size_t kEntry = 64;
constexpr std::size_t kName = 32;

std::string nameAt(const char* bytes) {
    std::string name(bytes, strnlen(bytes, kName));
    name.erase(name.find_last_not_of(' ') + 1);
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return c < ' ' || c >= 0x7f; }, '?');
    return name;
}

std::string firstEntry(int fd) {
    std::array<char, kEntry> entry{};
    if (pread(fd, entry.data(), kEntry, 0) != static_cast<ssize_t>(kEntry)) {
        return {};
    }
    const std::string machine = nameAt(entry.data());
    const std::string user = nameAt(entry.data() + kName);
    return user.empty() ? machine : machine + " (" + user + ")";
}

// Every living program keeps a byte of the lock file locked, far behind its end.
bool isLocked(int fd) {
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    if (fcntl(fd, F_GETLK, &whole) == 0 && whole.l_type != F_UNLCK) {
        return true;
    }
    if (flock(fd, LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK;
    }
    flock(fd, LOCK_UN);
    return false;
}

bool hasOpen(const std::filesystem::path& process, const struct stat& file) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(process / "fd", error), end; !error && entry != end;
         entry.increment(error)) {
        struct stat opened {};
        if (stat(entry->path().c_str(), &opened) == 0 && opened.st_dev == file.st_dev &&
            opened.st_ino == file.st_ino) {
            return true;
        }
    }
    return false;
}

// Some programs, and disks of other machines, keep their locks where this system does not see them: then it
// counts who has the lock file open.
bool isOpenElsewhere(const struct stat& file) {
    const std::string own = std::to_string(getpid());
    std::error_code error;
    for (std::filesystem::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const bool isProcess = name.find_first_not_of("0123456789") == std::string::npos;
        if (isProcess && name != own && hasOpen(entry->path(), file)) {
            return true;
        }
    }
    return false;
}

std::string sentence(const std::string& path, const std::string& rest) {
    return "'" + path + "' " + rest;
}

// Of the lock file beside it, in whatever letters the other program writes its ending.
std::optional<std::string> holderIn(const std::string& lockFile) {
    const ReadFile file(lockFile);
    struct stat found {};
    if (file.get() < 0 || fstat(file.get(), &found) != 0 || !S_ISREG(found.st_mode)) {
        return std::nullopt;
    }
    if (!isLocked(file.get()) && !isOpenElsewhere(found)) {
        return std::nullopt;
    }
    const std::string who = firstEntry(file.get());
    return who.empty() ? "another program" : who;
}

}  // namespace

OldFormat oldFormatOf(const std::string& path) {
    struct stat found {};
    if (stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) {
        return OldFormat::None;
    }
    const ReadFile file(path);
    std::array<char, kHead> head{};
    if (file.get() < 0 || pread(file.get(), head.data(), kHead, 0) != static_cast<ssize_t>(kHead)) {
        return OldFormat::None;
    }
    if (hasMark(head, "Standard ACE DB")) {
        return OldFormat::Later;
    }
    if (!hasMark(head, "Standard Jet DB")) {
        return OldFormat::None;
    }
    switch (head[kVersionAt]) {
        case 0:
            return OldFormat::Version3;
        case 1:
            return OldFormat::Version4;
        default:
            return OldFormat::Later;
    }
}

std::optional<std::string> holderOf(const std::string& path) {
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(path, error);
    for (const std::filesystem::path& one : {std::filesystem::path(path), file}) {
        for (const char* ending : {".ldb", ".LDB"}) {
            std::filesystem::path lockFile = one;
            if (auto who = holderIn(lockFile.replace_extension(ending).string())) {
                return who;
            }
        }
    }
    return std::nullopt;
}

void needOldFile(const std::string& path) {
    struct stat found {};
    if (stat(path.c_str(), &found) != 0) {
        throw OldFileError(sentence(path, std::string("cannot be read: ") + std::strerror(errno) + "."));
    }
    if (S_ISREG(found.st_mode) && ReadFile(path).get() < 0) {
        throw OldFileError(sentence(path, std::string("cannot be read: ") + std::strerror(errno) + "."));
    }
    const OldFormat format = oldFormatOf(path);
    if (format == OldFormat::None) {
        throw OldFileError(sentence(path, "is no database of the old format."));
    }
    if (format == OldFormat::Later) {
        throw OldFileError(sentence(path,
                                    "is of a later form of the old format than versions 3 and 4, which alone "
                                    "can be taken over."));
    }
    if (const auto who = holderOf(path)) {
        throw OldFileError(sentence(path, "is open in another program: " + *who + ". Close it there first."));
    }
}

}  // namespace exchange
