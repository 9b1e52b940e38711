#include "platform/dao/faults/faulty_disk.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace daotest::disk {
namespace {

constexpr int kNotOurs = 0;
constexpr int kFolder = -1;

struct State {
    std::string folder;  // empty: nothing is watched
    Fault fault = Fault::None;
    std::uint64_t at = 0;
    std::uint64_t calls = 0;
    bool failed = false;
    bool recording = false;
    std::vector<Event> events;
    std::map<std::string, int> numbers;  // of the files, by their present names
    int lastNumber = 0;
    std::array<int, 4096> files{};  // by descriptor
    std::array<bool, 4096> unfinished{};
};

State& state() {
    static auto* const kState = new State;  // files are closed when the program ends, too
    return *kState;
}

// The operating system's own function of that name.
template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool isOurs(const char* path) {
    const std::string& folder = state().folder;
    return !folder.empty() && path != nullptr && std::string(path).starts_with(folder);
}

std::string nameOf(const char* path) {
    const std::string text(path);
    return text.size() <= state().folder.size() ? std::string() : text.substr(state().folder.size() + 1);
}

bool isKnown(int fd) {
    return fd >= 0 && fd < static_cast<int>(state().files.size()) && !state().folder.empty() &&
           state().files[static_cast<std::size_t>(fd)] != kNotOurs;
}
int& fileOf(int fd) {
    return state().files[static_cast<std::size_t>(fd)];
}

enum class Wants { Nothing, Room };

// The error that a call ends in; 0: it goes on.
int refusal(Wants wants) {
    State& now = state();
    if (now.fault == Fault::None || now.fault == Fault::Forgets ||
        (now.fault == Fault::Full && wants == Wants::Nothing)) {
        return 0;
    }
    ++now.calls;
    const bool reached = now.calls >= now.at;
    const bool only = now.calls == now.at;
    switch (now.fault) {
        case Fault::Full:
            now.failed |= reached;
            return reached ? ENOSPC : 0;
        case Fault::FailsOnce:
            now.failed |= only;
            return only ? EIO : 0;
        case Fault::Dead:
            now.failed |= reached;
            return reached ? EIO : 0;
        case Fault::None:
        case Fault::Forgets:
            break;
    }
    return 0;
}

bool refuses(Wants wants) {
    const int error = refusal(wants);
    if (error != 0) {
        errno = error;
    }
    return error != 0;
}

void record(Event event) {
    if (state().recording) {
        state().events.push_back(std::move(event));
    }
}

int numberOf(const std::string& name) {
    int& number = state().numbers[name];
    if (number == 0) {
        number = ++state().lastNumber;
    }
    return number;
}

void remember(int fd, const char* path, int flags, bool made) {
    if (fd < 0 || fd >= static_cast<int>(state().files.size())) {
        return;
    }
    const std::string name = nameOf(path);
    state().unfinished[static_cast<std::size_t>(fd)] = name.find(".part") != std::string::npos;
    if (name.empty()) {
        fileOf(fd) = kFolder;
        return;
    }
    if (made) {
        state().numbers.erase(name);
    }
    fileOf(fd) = numberOf(name);
    if (made) {
        record({Event::Kind::Create, fileOf(fd), name, {}, 0, {}});
    } else if ((flags & O_TRUNC) != 0) {
        record({Event::Kind::Truncate, fileOf(fd), name, {}, 0, {}});
    }
}

template <typename Open>
int openFile(const char* path, int flags, mode_t mode, Open* open) {
    if (!isOurs(path)) {
        const int fd = open(path, flags, mode);
        if (fd >= 0 && fd < static_cast<int>(state().files.size())) {
            fileOf(fd) = kNotOurs;
        }
        return fd;
    }
    static auto* const kAccess = real<int(const char*, int)>("access");
    const bool makes = (flags & O_CREAT) != 0 && kAccess(path, F_OK) != 0;
    if (refuses(makes ? Wants::Room : Wants::Nothing)) {
        return -1;
    }
    const int fd = open(path, flags, mode);
    remember(fd, path, flags, makes);
    return fd;
}

bool isForgotten(int fd) {
    State& now = state();
    if (now.fault != Fault::Forgets || !now.unfinished[static_cast<std::size_t>(fd)] ||
        ++now.calls != now.at) {
        return false;
    }
    now.failed = true;
    return true;
}

// `Write` takes the bytes and where they go.
template <typename Write>
ssize_t writeFile(int fd, const void* from, std::size_t size, std::int64_t at, const Write& write) {
    std::string bytes(static_cast<const char*>(from), size);
    const bool wasFull = state().failed;
    if (state().fault != Fault::Forgets && refuses(Wants::Room)) {
        if (state().fault != Fault::Full || wasFull || size < 2) {
            return -1;
        }
        bytes.resize(size / 2);
    }
    record({Event::Kind::Write, fileOf(fd), {}, {}, at, bytes});
    if (isForgotten(fd)) {
        bytes[size / 2] ^= 1;
    }
    return write(bytes.data(), bytes.size());
}

template <typename Call>
int truncateFile(int fd, std::int64_t size, const Call& call) {
    if (!isKnown(fd)) {
        return call();
    }
    if (refuses(Wants::Nothing)) {
        return -1;
    }
    record({Event::Kind::Truncate, fileOf(fd), {}, {}, size, {}});
    return call();
}

template <typename Call>
int syncFile(int fd, const Call& call) {
    if (!isKnown(fd)) {
        return call();
    }
    if (refuses(Wants::Room)) {
        return -1;
    }
    const bool folder = fileOf(fd) == kFolder;
    record({folder ? Event::Kind::SyncFolder : Event::Kind::Sync, fileOf(fd), {}, {}, 0, {}});
    return call();
}

// A call that only asks, of a path or of an open file.
template <typename Call>
int ask(bool ours, const Call& call) {
    return ours && refuses(Wants::Nothing) ? -1 : call();
}

}  // namespace

void watch(const std::string& folder) {
    state() = State{};
    state().folder = folder;
}

void unwatch() {
    state() = State{};
}

void failAt(Fault fault, std::uint64_t n) {
    state().fault = fault;
    state().at = n;
    state().calls = 0;
    state().failed = false;
}

void heal() {
    state().fault = Fault::None;
}

std::uint64_t calls() {
    return state().calls;
}
bool hasFailed() {
    return state().failed;
}

void startRecording() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(state().folder)) {
        names.insert(entry.path().filename());
    }
    for (const std::string& name : names) {
        numberOf(name);
    }
    state().recording = true;
}

void tell(int what) {
    record({Event::Kind::Told, what, {}, {}, 0, {}});
}

std::vector<Event> stopRecording() {
    state().recording = false;
    return std::move(state().events);
}

}  // namespace daotest::disk

using namespace daotest::disk;

// The functions of the C library, by their names. The library of the record store calls those of 64 bits.
extern "C" {

int open(const char* path, int flags, ...) {
    static auto* const kOpen = real<int(const char*, int, mode_t)>("open");
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return openFile(path, flags, mode, kOpen);
}
int open64(const char* path, int flags, ...) {
    static auto* const kOpen = real<int(const char*, int, mode_t)>("open64");
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return openFile(path, flags, mode, kOpen);
}
int close(int fd) {
    static auto* const kClose = real<int(int)>("close");
    if (isKnown(fd)) {
        fileOf(fd) = kNotOurs;
    }
    return kClose(fd);
}

ssize_t read(int fd, void* to, std::size_t size) {
    static auto* const kRead = real<ssize_t(int, void*, std::size_t)>("read");
    return isKnown(fd) && refuses(Wants::Nothing) ? -1 : kRead(fd, to, size);
}
ssize_t pread(int fd, void* to, std::size_t size, off_t at) {
    static auto* const kRead = real<ssize_t(int, void*, std::size_t, off_t)>("pread");
    return isKnown(fd) && refuses(Wants::Nothing) ? -1 : kRead(fd, to, size, at);
}
ssize_t pread64(int fd, void* to, std::size_t size, off64_t at) {
    return pread(fd, to, size, at);
}

ssize_t write(int fd, const void* from, std::size_t size) {
    static auto* const kWrite = real<ssize_t(int, const void*, std::size_t)>("write");
    if (!isKnown(fd)) {
        return kWrite(fd, from, size);
    }
    return writeFile(fd, from, size, lseek(fd, 0, SEEK_CUR),
                     [&](const void* bytes, std::size_t length) { return kWrite(fd, bytes, length); });
}
ssize_t pwrite(int fd, const void* from, std::size_t size, off_t at) {
    static auto* const kWrite = real<ssize_t(int, const void*, std::size_t, off_t)>("pwrite");
    if (!isKnown(fd)) {
        return kWrite(fd, from, size, at);
    }
    return writeFile(fd, from, size, at,
                     [&](const void* bytes, std::size_t length) { return kWrite(fd, bytes, length, at); });
}
ssize_t pwrite64(int fd, const void* from, std::size_t size, off64_t at) {
    return pwrite(fd, from, size, at);
}

int ftruncate(int fd, off_t size) noexcept {
    static auto* const kTruncate = real<int(int, off_t)>("ftruncate");
    return truncateFile(fd, size, [&] { return kTruncate(fd, size); });
}
int ftruncate64(int fd, off64_t size) noexcept {
    return ftruncate(fd, size);
}
int fsync(int fd) {
    static auto* const kSync = real<int(int)>("fsync");
    return syncFile(fd, [&] { return kSync(fd); });
}
int fdatasync(int fd) {
    static auto* const kSync = real<int(int)>("fdatasync");
    return syncFile(fd, [&] { return kSync(fd); });
}

int rename(const char* from, const char* to) noexcept {
    static auto* const kRename = real<int(const char*, const char*)>("rename");
    if (!isOurs(from)) {
        return kRename(from, to);
    }
    if (refuses(Wants::Room)) {
        return -1;
    }
    const int result = kRename(from, to);
    if (result == 0) {
        const int number = numberOf(nameOf(from));
        state().numbers.erase(nameOf(from));
        state().numbers[nameOf(to)] = number;
        record({Event::Kind::Rename, number, nameOf(from), nameOf(to), 0, {}});
    }
    return result;
}
int link(const char* from, const char* to) noexcept {
    static auto* const kLink = real<int(const char*, const char*)>("link");
    if (!isOurs(from)) {
        return kLink(from, to);
    }
    if (refuses(Wants::Room)) {
        return -1;
    }
    const int result = kLink(from, to);
    if (result == 0) {
        const int number = numberOf(nameOf(from));
        state().numbers[nameOf(to)] = number;
        record({Event::Kind::Link, number, nameOf(from), nameOf(to), 0, {}});
    }
    return result;
}
int unlink(const char* path) noexcept {
    static auto* const kUnlink = real<int(const char*)>("unlink");
    if (!isOurs(path)) {
        return kUnlink(path);
    }
    if (refuses(Wants::Nothing)) {
        return -1;
    }
    const int result = kUnlink(path);
    if (result == 0) {
        record({Event::Kind::Remove, numberOf(nameOf(path)), nameOf(path), {}, 0, {}});
        state().numbers.erase(nameOf(path));
    }
    return result;
}

int stat(const char* path, struct stat* to) noexcept {
    static auto* const kStat = real<int(const char*, struct stat*)>("stat");
    return ask(isOurs(path), [&] { return kStat(path, to); });
}
int stat64(const char* path, struct stat64* to) noexcept {
    static auto* const kStat = real<int(const char*, struct stat64*)>("stat64");
    return ask(isOurs(path), [&] { return kStat(path, to); });
}
int fstat(int fd, struct stat* to) noexcept {
    static auto* const kStat = real<int(int, struct stat*)>("fstat");
    return ask(isKnown(fd), [&] { return kStat(fd, to); });
}
int fstat64(int fd, struct stat64* to) noexcept {
    static auto* const kStat = real<int(int, struct stat64*)>("fstat64");
    return ask(isKnown(fd), [&] { return kStat(fd, to); });
}
int chmod(const char* path, mode_t mode) noexcept {
    static auto* const kChange = real<int(const char*, mode_t)>("chmod");
    return ask(isOurs(path), [&] { return kChange(path, mode); });
}
int fchmod(int fd, mode_t mode) noexcept {
    static auto* const kChange = real<int(int, mode_t)>("fchmod");
    return ask(isKnown(fd), [&] { return kChange(fd, mode); });
}
ssize_t copy_file_range(int from, off64_t* fromAt, int to, off64_t* toAt, std::size_t size, unsigned flags) {
    static auto* const kCopy =
        real<ssize_t(int, off64_t*, int, off64_t*, std::size_t, unsigned)>("copy_file_range");
    return isKnown(to) && refuses(Wants::Room) ? -1 : kCopy(from, fromAt, to, toAt, size, flags);
}

}  // extern "C"
