#include "platform/dao/faults/kept_disk.h"

#include <filesystem>

#include "platform/dao/dao_shop.h"

namespace daotest::disk {
namespace {

// What a disk writes as one.
constexpr std::size_t kSector = 512;

void putPiece(std::string& bytes, std::size_t at, std::string_view piece) {
    if (bytes.size() < at + piece.size()) {
        bytes.resize(at + piece.size(), '\0');
    }
    bytes.replace(at, piece.size(), piece);
}

}  // namespace

KeptDisk::KeptDisk(const std::string& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names_[entry.path().filename()] = 0;
    }
    int number = 0;
    for (auto& [name, file] : names_) {
        file = ++number;
        const std::vector<char> bytes = readFile(folder + '/' + name);
        files_[file].bytes.assign(bytes.begin(), bytes.end());
    }
}

void KeptDisk::happen(const Event& event) {
    switch (event.kind) {
        case Event::Kind::Write:
        case Event::Kind::Truncate:
            files_[event.file].waiting.push_back(event);
            break;
        case Event::Kind::Sync:
            for (const Event& each : files_[event.file].waiting) {
                put(files_[event.file].bytes, each);
            }
            files_[event.file].waiting.clear();
            break;
        case Event::Kind::SyncFolder:
            for (const Event& each : waitingNames_) {
                name(names_, each);
            }
            waitingNames_.clear();
            break;
        case Event::Kind::Create:
        case Event::Kind::Rename:
        case Event::Kind::Link:
        case Event::Kind::Remove:
            waitingNames_.push_back(event);
            break;
        case Event::Kind::Told:
            break;
    }
}

void KeptDisk::name(Names& names, const Event& event) {
    if (event.kind == Event::Kind::Rename || event.kind == Event::Kind::Remove) {
        names.erase(event.name);
    }
    if (event.kind == Event::Kind::Create) {
        names[event.name] = event.file;
    } else if (event.kind != Event::Kind::Remove) {
        names[event.other] = event.file;
    }
}

void KeptDisk::put(std::string& bytes, const Event& event) {
    if (event.kind == Event::Kind::Truncate) {
        bytes.resize(static_cast<std::size_t>(event.offset), '\0');
    } else {
        putPiece(bytes, static_cast<std::size_t>(event.offset), event.bytes);
    }
}

void KeptDisk::putSome(std::string& bytes, const Event& event, std::mt19937_64& random) {
    if (event.kind == Event::Kind::Truncate) {
        if (random() % 2 == 0) {
            put(bytes, event);
        }
        return;
    }
    for (std::size_t done = 0; done < event.bytes.size();) {
        const std::size_t at = static_cast<std::size_t>(event.offset) + done;
        const std::size_t size = std::min(kSector - at % kSector, event.bytes.size() - done);
        if (random() % 2 == 0) {
            putPiece(bytes, at, std::string_view(event.bytes).substr(done, size));
        }
        done += size;
    }
}

void KeptDisk::restore(const std::string& folder, Kept kept, std::mt19937_64& random) const {
    Names names = names_;
    std::size_t known = kept == Kept::All ? waitingNames_.size() : 0;
    if (kept == Kept::Some) {
        known = random() % (waitingNames_.size() + 1);
    }
    for (std::size_t i = 0; i < known; ++i) {
        name(names, waitingNames_[i]);
    }
    for (const auto& [name, number] : names) {
        const auto file = files_.find(number);
        std::string bytes = file == files_.end() ? std::string() : file->second.bytes;
        if (file != files_.end() && kept != Kept::OnlySynced) {
            for (const Event& event : file->second.waiting) {
                kept == Kept::All ? put(bytes, event) : putSome(bytes, event, random);
            }
        }
        daotest::writeFile(folder + '/' + name, {bytes.begin(), bytes.end()});
    }
}

}  // namespace daotest::disk
