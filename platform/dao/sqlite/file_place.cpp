#include "platform/dao/sqlite/file_place.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/dao/failure.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"
#include "platform/dao/sqlite/companion_files.h"
#include "platform/dao/sqlite/file_bytes.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/salt_notes.h"
#include "platform/dao/sqlite/salvage.h"

namespace dao {

std::string fileIdentity(const std::string& path) {
    struct stat found {};
    if (!lookAt(path, found)) {
        return {};
    }
    return "file " + std::to_string(found.st_dev) + ' ' + std::to_string(found.st_ino);
}

Salt saltOf(const std::string& path) {
    if (const std::shared_ptr<OpenFile> open = OpenFiles::find(fileIdentity(path), false)) {
        return static_cast<const FilePlace&>(open->place()).salt();
    }
    return readSalt(path);
}

std::shared_ptr<LockFile> lockFor(const std::string& path, bool reading) {
    if (!folderMayWrite(path)) {
        if (reading) {
            return nullptr;
        }
        fail(errCannotLockFile);
    }
    return LockFile::of(path);
}

std::string FilePlace::identity() const {
    return fileIdentity(path_);
}

PlacePtr FilePlace::again() const {
    const std::string path = existingFile(path_);
    const Salt salt = saltOf(path);
    if (!isRightPassword(password_, salt)) {
        fail(errInvalidPassword);
    }
    return std::make_shared<FilePlace>(path, password_, salt);
}

void FilePlace::needWritable() const {
    if (!mayWrite(path_)) {
        fail(errReadOnly);
    }
}

std::shared_ptr<Presence> FilePlace::enter(bool reading) const {
    return lockFor(path_, reading);
}

std::shared_ptr<Numbers> FilePlace::numbers() const {
    return LockFile::ofNumbers(path_);
}

driver::OpenRequest FilePlace::request(bool writable) const {
    return {path_, rawKey(password_, salt_), writable, false};
}

std::unique_ptr<driver::SqliteStore> FilePlace::open(bool writable) const {
    auto store = std::make_unique<driver::SqliteStore>(request(writable));
    store->keepOrder();
    store->keepLayout();
    return store;
}

std::unique_ptr<driver::Store> FilePlace::open() const {
    return open(mayWrite(path_) && folderMayWrite(path_));
}

void FilePlace::prove(driver::Store& store) const {
    noteSalt(path_, salt_);
    auto& file = static_cast<driver::SqliteStore&>(store);
    // The pages first: others write meanwhile, and the file grows.
    const std::int64_t pages = file.connection().pageCount();
    if (driver::FileBytes(file.connection().handle()).size() < pages * static_cast<std::int64_t>(kPageSize)) {
        fail(errCannotOpen);  // its last page is torn
    }
    if (!fileExists(damageMarkOf(path_))) {
        return;
    }
    if (!driver::isWhole(file, request(false).key)) {
        fail(errCannotOpen);
    }
    unlink(damageMarkOf(path_).c_str());
}

void FilePlace::sweep() const noexcept {
    sweepUnfinished(path_);
}

// The journal stays beside the file for the next write; the last one to leave takes it away.
void FilePlace::tidy() const noexcept {
    removeSpentJournal(path_);
}

}  // namespace dao
