#include "platform/dao/fault_layer.h"

#include <sqlcipher/sqlite3.h>

#include <algorithm>
#include <new>

#include "platform/dao/sqlite/store.h"

namespace daotest {
namespace {

constexpr const char* kName = "faulty";

struct State {
    std::int64_t room = FaultLayer::kPlenty;
    bool recording = false;
    std::vector<FaultLayer::Event> events;
};
State state;

struct File : sqlite3_file {
    const char* name;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File* our(sqlite3_file* file) {
    return static_cast<File*>(file);
}
sqlite3_file* real(sqlite3_file* file) {
    return our(file)->real();
}
sqlite3_vfs* realLayer() {
    static sqlite3_vfs* const kReal = sqlite3_vfs_find(nullptr);
    return kReal;
}

void record(FaultLayer::Event event) {
    if (state.recording) {
        state.events.push_back(std::move(event));
    }
}

int closeFile(sqlite3_file* f) {
    return real(f)->pMethods->xClose(real(f));
}
int readFile(sqlite3_file* f, void* to, int size, sqlite3_int64 at) {
    return real(f)->pMethods->xRead(real(f), to, size, at);
}
int writeFile(sqlite3_file* f, const void* from, int size, sqlite3_int64 at) {
    // A full disk still takes what is written over something older.
    sqlite3_int64 before = 0;
    real(f)->pMethods->xFileSize(real(f), &before);
    const std::int64_t growth = std::max<std::int64_t>(0, at + size - before);
    if (state.room < growth) {
        const auto fits = static_cast<int>(size - growth + state.room);
        state.room = 0;
        if (fits > 0) {
            real(f)->pMethods->xWrite(real(f), from, fits, at);
        }
        return SQLITE_FULL;
    }
    if (state.room != FaultLayer::kPlenty) {
        state.room -= growth;
    }
    record({FaultLayer::Event::Kind::Write, our(f)->name, at,
            std::string(static_cast<const char*>(from), static_cast<std::size_t>(size))});
    return real(f)->pMethods->xWrite(real(f), from, size, at);
}
int truncateFile(sqlite3_file* f, sqlite3_int64 size) {
    record({FaultLayer::Event::Kind::Truncate, our(f)->name, size, {}});
    return real(f)->pMethods->xTruncate(real(f), size);
}
int syncFile(sqlite3_file* f, int flags) {
    record({FaultLayer::Event::Kind::Sync, our(f)->name, 0, {}});
    return real(f)->pMethods->xSync(real(f), flags);
}
int sizeFile(sqlite3_file* f, sqlite3_int64* size) {
    return real(f)->pMethods->xFileSize(real(f), size);
}
int lockFile(sqlite3_file* f, int level) {
    return real(f)->pMethods->xLock(real(f), level);
}
int unlockFile(sqlite3_file* f, int level) {
    return real(f)->pMethods->xUnlock(real(f), level);
}
int checkFile(sqlite3_file* f, int* out) {
    return real(f)->pMethods->xCheckReservedLock(real(f), out);
}
int controlFile(sqlite3_file* f, int op, void* arg) {
    return real(f)->pMethods->xFileControl(real(f), op, arg);
}
int sectorSize(sqlite3_file* f) {
    return real(f)->pMethods->xSectorSize(real(f));
}
// A cautious disk: it promises nothing.
int characteristics(sqlite3_file*) {
    return 0;
}

const sqlite3_io_methods kMethods = {1,           closeFile,  readFile,        writeFile,  truncateFile,
                                     syncFile,    sizeFile,   lockFile,        unlockFile, checkFile,
                                     controlFile, sectorSize, characteristics, nullptr,    nullptr,
                                     nullptr,     nullptr,    nullptr,         nullptr};

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* f, int flags, int* outFlags) {
    File* file = new (f) File{};
    file->name = name == nullptr ? "" : name;
    const int code = realLayer()->xOpen(realLayer(), name, file->real(), flags, outFlags);
    file->pMethods = file->real()->pMethods != nullptr ? &kMethods : nullptr;
    return code;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncFolder) {
    record({FaultLayer::Event::Kind::Delete, name, syncFolder, {}});
    return realLayer()->xDelete(realLayer(), name, syncFolder);
}

sqlite3_vfs& layer() {
    static sqlite3_vfs ours = [] {
        sqlite3_vfs made = *realLayer();
        made.zName = kName;
        made.szOsFile = static_cast<int>(sizeof(File)) + realLayer()->szOsFile;
        made.xOpen = openFile;
        made.xDelete = deleteFile;
        return made;
    }();
    return ours;
}

}  // namespace

FaultLayer::FaultLayer() {
    sqlite3_initialize();
    sqlite3_vfs_register(&layer(), 0);
    dao::driver::setFileLayer(kName);
}

FaultLayer::~FaultLayer() {
    dao::driver::setFileLayer({});
    state = {};
}

void FaultLayer::setRoom(std::int64_t bytes) {
    state.room = bytes;
}

void FaultLayer::startRecording() {
    state.events.clear();
    state.recording = true;
}

std::vector<FaultLayer::Event> FaultLayer::stopRecording() {
    state.recording = false;
    return std::move(state.events);
}

}  // namespace daotest
