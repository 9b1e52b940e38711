#include "platform/dao/open_files.h"

#include <map>
#include <utility>

#include "platform/dao/failure.h"

namespace dao {
namespace {

using Entry = std::pair<std::string, bool>;  // the second: it can be written

std::map<Entry, std::weak_ptr<OpenFile>>& registry() {
    static auto* const kAll = new std::map<Entry, std::weak_ptr<OpenFile>>;  // outlives every static window
    return *kAll;
}

}  // namespace

std::vector<std::shared_ptr<OpenFile>> OpenFiles::all() {
    std::vector<std::shared_ptr<OpenFile>> files;
    for (const auto& [key, weak] : registry()) {
        if (std::shared_ptr<OpenFile> file = weak.lock()) {
            files.push_back(std::move(file));
        }
    }
    return files;
}

std::shared_ptr<OpenFile> OpenFiles::find(const std::string& identity, bool writable) {
    for (const bool canWrite : {true, false}) {
        const auto entry = registry().find({identity, canWrite});
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

void OpenFiles::add(const std::string& identity, bool writable, const std::shared_ptr<OpenFile>& file) {
    if (identity.empty()) {
        fail(errFileNotFound);
    }
    std::erase_if(registry(), [](const auto& entry) { return entry.second.expired(); });
    registry()[{identity, writable}] = file;
}

}  // namespace dao
