#include "platform/dao/open_files.h"

#include <map>
#include <tuple>

#include <sys/stat.h>

#include "platform/dao/failure.h"

namespace dao {
namespace {

using FileIdentity = std::tuple<dev_t, ino_t, bool>;  // the last: it can be written

std::map<FileIdentity, std::weak_ptr<OpenFile>>& registry() {
    static auto* const kAll =
        new std::map<FileIdentity, std::weak_ptr<OpenFile>>;  // outlives every static window
    return *kAll;
}

}  // namespace

std::vector<std::shared_ptr<OpenFile>> OpenFiles::all() {
    std::vector<std::shared_ptr<OpenFile>> files;
    for (const auto& [identity, weak] : registry()) {
        if (std::shared_ptr<OpenFile> file = weak.lock()) {
            files.push_back(std::move(file));
        }
    }
    return files;
}

std::shared_ptr<OpenFile> OpenFiles::find(const std::string& path, bool writable) {
    struct stat found {};
    if (stat(path.c_str(), &found) != 0) {
        return nullptr;
    }
    for (const bool canWrite : {true, false}) {
        const auto entry = registry().find({found.st_dev, found.st_ino, canWrite});
        if (entry == registry().end() || (writable && !canWrite)) {
            continue;
        }
        if (std::shared_ptr<OpenFile> file = entry->second.lock()) {
            return file;
        }
    }
    return nullptr;
}

void OpenFiles::forget(const OpenFile* file) {
    std::erase_if(registry(), [file](const auto& entry) {
        const std::shared_ptr<OpenFile> open = entry.second.lock();
        return open == nullptr || open.get() == file;
    });
}

void OpenFiles::add(const std::string& path, bool writable, const std::shared_ptr<OpenFile>& file) {
    struct stat found {};
    if (stat(path.c_str(), &found) != 0) {
        fail(errFileNotFound);
    }
    std::erase_if(registry(), [](const auto& entry) { return entry.second.expired(); });
    registry()[{found.st_dev, found.st_ino, writable}] = file;
}

}  // namespace dao
