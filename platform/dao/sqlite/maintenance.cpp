#include "platform/dao/sqlite/maintenance.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fstream>
#include <memory>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/limits.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"
#include "platform/dao/opening.h"
#include "platform/dao/read_scope.h"
#include "platform/dao/sqlite/companion_files.h"
#include "platform/dao/sqlite/file_bytes.h"
#include "platform/dao/sqlite/file_copy.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/page_seal.h"

namespace dao::maintenance {
namespace {

constexpr std::size_t kChunk = 256 * kPageSize;

// This process's own windows must not hold what is about to be replaced; they find the new file by its path.
void letGo(const std::string& path) {
    while (const std::shared_ptr<OpenFile> file = OpenFiles::find(fileIdentity(path), false)) {
        if (file->transaction().isBusy()) {
            fail(errFileInUse);
        }
        file->releaseStore();
    }
}

class OutputFile {
 public:
    explicit OutputFile(const std::string& path) : fd_(open(path.c_str(), O_WRONLY | O_CLOEXEC)) {
        if (fd_ < 0) {
            failWithSystemError(errno);
        }
    }
    ~OutputFile() { close(fd_); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) {
                continue;
            }
            if (written <= 0) {
                failWithSystemError(written == 0 ? ENOSPC : errno);
            }
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    // What is written goes on its way to the disk at once: kept back, a large shop's file would all be waited
    // for at the end.
    void sendOff() const { sync_file_range(fd_, 0, 0, SYNC_FILE_RANGE_WRITE); }

 private:
    int fd_;
};

// Every page must carry its seal. What stands behind the last page is none of the file's.
bool areWhole(const driver::PageSeal& seal, driver::PageNumber first, std::string_view pages) {
    for (; !pages.empty(); pages.remove_prefix(kPageSize)) {
        const driver::PageNumber number = first++;
        if (pages.size() < kPageSize ||
            (!driver::isLockPage(number) && !seal.isWhole(number, pages.substr(0, kPageSize)))) {
            return false;
        }
    }
    return true;
}

// The pages of a database from the first to the last, a chunk at a time, while writers wait.
class PageReader {
 public:
    explicit PageReader(driver::SqliteStore& store)
        : file_(store.connection().handle()),
          end_(store.connection().pageCount() * static_cast<std::int64_t>(kPageSize)),
          buffer_(kChunk) {}

    // False behind the last.
    bool next() {
        needGoingOn();
        at_ += static_cast<std::int64_t>(chunk_.size());
        const auto wanted = std::min<std::size_t>(buffer_.size(), static_cast<std::size_t>(end_ - at_));
        chunk_ = std::span(buffer_).first(file_.read(at_, std::span(buffer_).first(wanted)));
        isShort_ = chunk_.size() != wanted;
        return !chunk_.empty();
    }
    std::string_view pages() const { return {chunk_.data(), chunk_.size()}; }
    driver::PageNumber first() const {
        return static_cast<driver::PageNumber>(at_ / static_cast<std::int64_t>(kPageSize)) + 1;
    }
    bool isShort() const { return isShort_; }  // the file ends before its last page does
    std::int64_t read() const { return at_ + static_cast<std::int64_t>(chunk_.size()); }  // bytes
    std::int64_t all() const { return end_; }

 private:
    driver::FileBytes file_;
    std::int64_t end_;
    std::int64_t at_ = 0;
    std::vector<char> buffer_;
    std::span<char> chunk_;
    bool isShort_ = false;
};

void tell(const CopyWatch& watch, std::int64_t done, std::int64_t all) {
    if (watch) {
        watch(done, all);
    }
}

// False where a page of the file is damaged.
bool writePages(driver::SqliteStore& store, const std::string& key, OutputFile& out, const CopyWatch& watch) {
    const driver::PageSeal seal(key);
    PageReader reader(store);
    while (reader.next()) {
        if (!areWhole(seal, reader.first(), reader.pages())) {
            return false;
        }
        out.write(reader.pages());
        out.sendOff();
        tell(watch, reader.read(), 2 * reader.all());
    }
    return !reader.isShort();
}

// The copy is read again: a disk that takes everything and keeps something else makes no backup.
bool holdsTheSame(driver::SqliteStore& store, const std::string& copy, const CopyWatch& watch) {
    std::ifstream file(copy, std::ios::binary);
    PageReader reader(store);
    std::vector<char> buffer(kChunk);
    while (reader.next()) {
        const std::string_view pages = reader.pages();
        if (!file.read(buffer.data(), static_cast<std::streamsize>(pages.size())) ||
            std::memcmp(buffer.data(), pages.data(), pages.size()) != 0) {
            return false;
        }
        tell(watch, reader.all() + reader.read(), 2 * reader.all());
    }
    return true;
}

// Whoever opens the file next must not work on in what is broken, nor copy it over a sound backup.
[[noreturn]] void failDamaged(const std::string& path) {
    const int mark = open(damageMarkOf(path).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (mark >= 0) {
        close(mark);
        followRights(damageMarkOf(path), path);
    }
    fail(errCannotOpen);
}

// A file that gives nothing away without its password, or none of this engine's, can still be copied between
// two writes: by the store's own locks on the file's bytes.
class PlainReader {
 public:
    explicit PlainReader(const std::string& path) : fd_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (fd_ < 0) {
            failWithSystemError(errno);
        }
        const auto deadline =
            std::chrono::steady_clock::now() + std::chrono::milliseconds(driver::lockTimeout());
        while (!lockShared()) {
            if (std::chrono::steady_clock::now() >= deadline) {
                close(fd_);
                fail(errLocked);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(3));
        }
    }
    ~PlainReader() { close(fd_); }
    PlainReader(const PlainReader&) = delete;
    PlainReader& operator=(const PlainReader&) = delete;

    std::size_t read(std::span<char> buffer) const {
        for (;;) {
            const ssize_t size = ::read(fd_, buffer.data(), buffer.size());
            if (size >= 0) {
                return static_cast<std::size_t>(size);
            }
            if (errno != EINTR) {
                failWithSystemError(errno);
            }
        }
    }

 private:
    static constexpr off_t kPendingByte = 0x40000000;
    static constexpr off_t kSharedFirst = kPendingByte + 2;
    static constexpr off_t kSharedSize = 510;

    bool lock(short kind, off_t start, off_t length) const {
        struct flock request {};
        request.l_type = kind;
        request.l_whence = SEEK_SET;
        request.l_start = start;
        request.l_len = length;
        return fcntl(fd_, F_SETLK, &request) == 0;
    }
    bool lockShared() const {
        if (!lock(F_RDLCK, kPendingByte, 1)) {
            return false;
        }
        const bool locked = lock(F_RDLCK, kSharedFirst, kSharedSize);
        lock(F_UNLCK, kPendingByte, 1);
        return locked;
    }

    int fd_;
};

void copyPlain(const std::string& path, OutputFile& out) {
    const PlainReader reader(path);
    std::vector<char> buffer(kChunk);
    while (const std::size_t size = reader.read(buffer)) {
        needGoingOn();
        out.write({buffer.data(), size});
    }
}

// The connection a file is copied through; nothing where it does not open as a database.
std::shared_ptr<OpenFile> openForCopy(const std::string& path) {
    int number = 0;
    std::string sentence;
    {
        const QuietErrors quiet;
        try {
            const PlacePtr place = examine(path, {}, true);
            return openPlace(place, false, place->enter(true));
        } catch (const Error& error) {
            number = error.Number();
            sentence = error.Description();
        }
    }
    if (number == errCannotOpen) {
        failDamaged(path);
    }
    if (number == errLocked || number == errExclusiveByOther || number == errNotEnoughSpace) {
        fail(number, sentence);
    }
    return nullptr;  // as it lies, then
}

void copySealed(OpenFile& file, OutputFile& out, const std::string& fresh, const CopyWatch& watch) {
    driver::OpenRequest copy = static_cast<const FilePlace&>(file.place()).request(false);
    auto& store = static_cast<driver::SqliteStore&>(file.store());
    const ReadScope scope(store);
    store.definitions().schemaVersion();  // from here on writers wait
    if (!writePages(store, copy.key, out, watch)) {
        failDamaged(file.place().path());
    }
    copy.path = fresh;
    if (!holdsTheSame(store, fresh, watch)) {
        fail(errDiskIo);
    }
    driver::SqliteStore(copy).definitions().tables();  // it opens
}

// A journal left by a crash is rolled into its file by opening that; only then may the file go elsewhere.
void settleJournal(const std::string& path) {
    if (hasJournal(path)) {
        openForCopy(path);
    }
}

}  // namespace

std::shared_ptr<const FilePlace> examine(const std::string& path, const std::string& connect,
                                         bool remembered) {
    const std::string real = existingFile(path);
    const std::shared_ptr<OpenFile> open = OpenFiles::find(fileIdentity(real), false);
    const Salt salt = saltOf(real);
    std::string password;
    const bool given = passwordFrom(connect, password);
    if (!given) {
        if (open != nullptr) {
            return std::make_shared<FilePlace>(real, static_cast<const FilePlace&>(open->place()).password(),
                                               salt);
        }
        if (remembered && rememberedPassword(salt, password)) {
            return std::make_shared<FilePlace>(real, password, salt);
        }
        password.clear();
    }
    if (!isRightPassword(password, salt)) {
        fail(errInvalidPassword);
    }
    return std::make_shared<FilePlace>(real, password, salt);
}

void create(const std::string& path, const std::string& connect) {
    const std::string target = targetFile(path);
    if (fileExists(target)) {
        fail(errObjectExists, "Database '" + path + "' already exists.");
    }
    if (!folderMayWrite(target)) {
        fail(errReadOnly);
    }
    std::string password;
    passwordFrom(connect, password);
    UnfinishedFile fresh(target);
    fresh.make();
    { const driver::SqliteStore made({fresh.path(), rawKey(password, newSalt(password)), true, true}); }
    fresh.finish();
}

void compact(const std::string& from, const std::string& to, const std::string& connect) {
    const std::shared_ptr<const FilePlace> place = examine(from, connect, true);
    const std::string target = targetFile(to);
    if (fileExists(target)) {
        fail(errObjectExists, "Database '" + to + "' already exists.");
    }
    const std::shared_ptr<OpenFile> open = OpenFiles::find(place->identity(), false);
    if (open != nullptr && open->transaction().isBusy()) {
        fail(errFileInUse);
    }
    const ExclusiveUse use(place->enter(false));
    openPlace(place, false, nullptr)
        ->store()
        .definitions()
        .schemaVersion();  // 3049 here, before anything is made

    UnfinishedFile fresh(target);
    fresh.make();
    const std::string key = rawKey(place->password(), newSalt(place->password()));
    driver::OpenRequest source = place->request(true);
    source.create = true;
    {
        driver::SqliteStore whole(source, false);
        driver::copyInto(whole, {fresh.path(), key, true, true});
    }
    driver::SqliteStore({fresh.path(), key}).keepLayout();
    fresh.finish();
}

void copy(const std::string& from, const std::string& to, const CopyWatch& watch) {
    const std::string source = existingFile(from);
    const std::string target = targetFile(to);
    if (source == target) {
        fail(errInvalidOperation, "A file can't be copied onto itself.");
    }
    if (!fileExists(target)) {
        sweepUnfinished(target);
    }
    UnfinishedFile fresh(target);
    {
        const std::shared_ptr<OpenFile> file = openForCopy(source);
        fresh.make();
        followRights(fresh.path(), source);
        OutputFile out(fresh.path());
        if (file == nullptr) {
            copyPlain(source, out);
        } else {
            copySealed(*file, out, fresh.path(), watch);
        }
    }
    letGo(target);
    fresh.finish();
}

void remove(const std::string& path) {
    const std::string real = existingFile(path);
    const ExclusiveUse use(lockFor(real, false));
    letGo(real);
    removeFile(real);
    removeFile(journalOf(real));
    syncFolderOf(real);
}

void discard(const std::string& path) noexcept {
    unlink(path.c_str());
    unlink(journalOf(path).c_str());
}

void rename(const std::string& from, const std::string& to) {
    const std::string source = existingFile(from);
    const std::string target = targetFile(to);
    if (source == target) {
        return;
    }
    const ExclusiveUse useSource(lockFor(source, false));
    const ExclusiveUse useTarget(lockFor(target, false));
    settleJournal(source);
    letGo(source);
    letGo(target);
    removeFile(journalOf(target));
    if (hasJournal(source)) {
        renameFile(journalOf(source), journalOf(target));
    }
    renameFile(source, target);
}

}  // namespace dao::maintenance
