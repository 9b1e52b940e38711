#include "platform/dao/sqlite/page_guard.h"

#include <sqlcipher/sqlite3.h>

#include <map>
#include <memory>
#include <new>
#include <string_view>

#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/page_seal.h"

namespace dao::driver {
namespace {

// What the library sees of a file; the one below stands behind it.
struct GuardedFile : sqlite3_file {
    bool isDatabase;
    sqlite3_file* below() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* below(sqlite3_file* file) {
    return static_cast<GuardedFile*>(file)->below();
}

bool isPage(int size, sqlite3_int64 at) {
    return size == static_cast<int>(kPageSize) && at % static_cast<sqlite3_int64>(kPageSize) == 0;
}

int readFile(sqlite3_file* file, void* to, int size, sqlite3_int64 at) {
    const int code = below(file)->pMethods->xRead(below(file), to, size, at);
    if (code != SQLITE_OK || !static_cast<GuardedFile*>(file)->isDatabase || !isPage(size, at) ||
        !isEmptyPage({static_cast<const char*>(to), kPageSize}) ||
        isLockPage(static_cast<PageNumber>(at / static_cast<sqlite3_int64>(kPageSize)) + 1)) {
        return code;
    }
    return SQLITE_CORRUPT;
}

int closeFile(sqlite3_file* file) {
    return below(file)->pMethods->xClose(below(file));
}
int writeFile(sqlite3_file* file, const void* from, int size, sqlite3_int64 at) {
    return below(file)->pMethods->xWrite(below(file), from, size, at);
}
int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    return below(file)->pMethods->xTruncate(below(file), size);
}
int syncFile(sqlite3_file* file, int flags) {
    return below(file)->pMethods->xSync(below(file), flags);
}
int sizeOfFile(sqlite3_file* file, sqlite3_int64* size) {
    return below(file)->pMethods->xFileSize(below(file), size);
}
int lockFile(sqlite3_file* file, int level) {
    return below(file)->pMethods->xLock(below(file), level);
}
int unlockFile(sqlite3_file* file, int level) {
    return below(file)->pMethods->xUnlock(below(file), level);
}
int checkReserved(sqlite3_file* file, int* held) {
    return below(file)->pMethods->xCheckReservedLock(below(file), held);
}
int controlFile(sqlite3_file* file, int operation, void* argument) {
    return below(file)->pMethods->xFileControl(below(file), operation, argument);
}
int sectorSize(sqlite3_file* file) {
    return below(file)->pMethods->xSectorSize(below(file));
}
int characteristics(sqlite3_file* file) {
    return below(file)->pMethods->xDeviceCharacteristics(below(file));
}

// The first version of the table: the shop's file is neither mapped into memory nor shared by a log.
constexpr sqlite3_io_methods kMethods = {1,           closeFile,  readFile,        writeFile,  truncateFile,
                                         syncFile,    sizeOfFile, lockFile,        unlockFile, checkReserved,
                                         controlFile, sectorSize, characteristics, nullptr,    nullptr,
                                         nullptr,     nullptr,    nullptr,         nullptr};

int openFile(sqlite3_vfs* layer, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    auto* const over = static_cast<sqlite3_vfs*>(layer->pAppData);
    auto* const guarded = new (file) GuardedFile{};
    guarded->isDatabase = (flags & SQLITE_OPEN_MAIN_DB) != 0;
    const int code = over->xOpen(over, name, guarded->below(), flags, outFlags);
    guarded->pMethods = guarded->below()->pMethods != nullptr ? &kMethods : nullptr;
    return code;
}

struct Layer {
    std::string name;
    sqlite3_vfs vfs;
};

std::unique_ptr<Layer> newLayer(const std::string& over) {
    sqlite3_initialize();
    sqlite3_vfs* const found = sqlite3_vfs_find(over.empty() ? nullptr : over.c_str());
    if (found == nullptr) {
        throw std::bad_alloc();
    }
    auto layer = std::make_unique<Layer>(Layer{"guarded " + over, *found});
    layer->vfs.zName = layer->name.c_str();
    layer->vfs.pAppData = found;
    layer->vfs.szOsFile = static_cast<int>(sizeof(GuardedFile)) + found->szOsFile;
    layer->vfs.xOpen = openFile;
    sqlite3_vfs_register(&layer->vfs, 0);
    return layer;
}

}  // namespace

const char* guardedLayer(const std::string& over) {
    static auto* const layers =
        new std::map<std::string, std::unique_ptr<Layer>>;  // outlives every static window
    std::unique_ptr<Layer>& layer = (*layers)[over];
    if (layer == nullptr) {
        layer = newLayer(over);
    }
    return layer->name.c_str();
}

}  // namespace dao::driver
