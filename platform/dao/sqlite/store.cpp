#include "platform/dao/sqlite/store.h"

#include <cerrno>
#include <random>
#include <thread>

#include <unistd.h>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/limits.h"
#include "platform/dao/memory_store.h"
#include "platform/dao/sqlite/layout.h"
#include "platform/dao/sqlite/long_statements.h"
#include "platform/dao/sqlite/page_guard.h"
#include "platform/text/order.h"

namespace dao::driver {
namespace {

constexpr std::size_t kKeyDigits = 64;  // the salt stands behind them
constexpr std::size_t kCachedStatements = 64;
constexpr std::size_t kCachedTextLimit = 4096;

std::string& fileLayerSetting() {
    static std::string name;
    return name;
}

// The version of the order that the indexes of texts are kept in, in the number that the file's head has for
// the programs that use it. 0: a file of before the shop had one alphabet.
constexpr const char* kOrder = "PRAGMA application_id";
constexpr const char* kForm = "PRAGMA user_version";

std::string assigned(const char* pragma, std::int64_t value) {
    return std::string(pragma) + " = " + std::to_string(value);
}

// Every parameter of the cipher by name: another release of the library has other defaults, and the shop's
// file must open under each.
constexpr std::string_view kCipherSettings[] = {
    "cipher_page_size = 4096",
    "kdf_iter = 64000",
    "cipher_use_hmac = ON",
    "cipher_hmac_algorithm = HMAC_SHA1",
    "cipher_kdf_algorithm = PBKDF2_HMAC_SHA1",
};

std::string cipherSettings(std::string_view schema) {
    std::string text;
    for (const std::string_view setting : kCipherSettings) {
        text += "PRAGMA " + std::string(schema) + '.' + std::string(setting) + ';';
    }
    return text;
}

constexpr const char* kSessionSettings =
    "PRAGMA foreign_keys = ON;"
    // A commit is on disk when it returns: crossing out the journal's head is made to last, as removing the
    // journal would not be. It is also the quickest way, since nothing about the files themselves changes.
    "PRAGMA journal_mode = PERSIST;"
    "PRAGMA journal_size_limit = 1048576;"
    "PRAGMA synchronous = FULL;"
    // What is deleted is gone from the file too: a repair must not find it again. And no page of the file is
    // ever left unwritten, so that one of zeroes is damage.
    "PRAGMA secure_delete = ON;"
    "PRAGMA temp_store = MEMORY;"
    // All of a large shop's file: a page once deciphered need not be deciphered again. A file that is larger
    // still is gone through from end to end, and more room for it would not save a page.
    "PRAGMA cache_size = -131072;"
    // Nothing of a transaction reaches the file before its commit, so a copy taken meanwhile is whole.
    "PRAGMA cache_spill = OFF;";

struct CodeNumber {
    int code;
    int number;
};

constexpr CodeNumber kExtended[] = {
    {SQLITE_CONSTRAINT_UNIQUE, errDuplicateKey},
    {SQLITE_CONSTRAINT_PRIMARYKEY, errDuplicateKey},
    {SQLITE_CONSTRAINT_ROWID, errDuplicateKey},
    {SQLITE_CONSTRAINT_FOREIGNKEY, errRelatedRecordRequired},
};

constexpr CodeNumber kPrimary[] = {
    {SQLITE_BUSY, errLocked},       {SQLITE_LOCKED, errLocked},         {SQLITE_FULL, errNotEnoughSpace},
    {SQLITE_READONLY, errReadOnly}, {SQLITE_CORRUPT, errCannotOpen},    {SQLITE_NOTADB, errCannotOpen},
    {SQLITE_PERM, errReadOnly},     {SQLITE_CANTOPEN, errDiskIo},       {SQLITE_IOERR, errDiskIo},
    {SQLITE_TOOBIG, errOverflow},   {SQLITE_MISMATCH, errTypeMismatch}, {SQLITE_INTERRUPT, errCancelled},
};

bool isFullDisk(int systemError) {
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

// Processes that wait for the same lock must not knock at the same moments.
int jitter() {
    static std::minstd_rand random(static_cast<unsigned>(getpid()) * 2654435761U + 1);
    return std::uniform_int_distribution<int>(1000, 8000)(random);
}

// The library makes its ciphers ready for the first connection that has a key, without looking whether there
// is memory for that, and takes them away behind the last. One connection that nobody uses keeps them for as
// long as the process runs, or each opening of the shop could be its end.
void keepCiphersReady() {
    using Keeper = std::unique_ptr<sqlite3, decltype(&sqlite3_close_v2)>;
    static const Keeper kept = [] {
        sqlite3* db = nullptr;
        int code = sqlite3_open_v2(":memory:", &db, SQLITE_OPEN_READWRITE, nullptr);
        Keeper keeper(db, &sqlite3_close_v2);
        if (code == SQLITE_OK) {
            code = sqlite3_exec(db, "PRAGMA key = 'none'", nullptr, nullptr, nullptr);
        }
        if (code != SQLITE_OK) {
            throw std::bad_alloc();
        }
        return keeper;
    }();
}

}  // namespace

std::string saltText(const std::string& key) {
    return key.substr(std::min(kKeyDigits, key.size()));
}

void setFileLayer(std::string name) {
    fileLayerSetting() = std::move(name);
}

std::unique_ptr<Store> openMemoryStore() {
    return std::make_unique<SqliteStore>(OpenRequest{});
}

SqliteStore::SqliteStore(const OpenRequest& request, bool withSystemTables) {
    try {
        open(request);
        configure(request);
        if (request.create && withSystemTables) {
            createSystemTables();
        }
    } catch (const std::bad_alloc&) {
        // Closed after its key had no room, the library gives parts of it back twice. A little that is never
        // given back does no harm.
        db_ = nullptr;
        throw;
    } catch (...) {
        close();
        throw;
    }
}

SqliteStore::~SqliteStore() {
    close();
}

void SqliteStore::open(const OpenRequest& request) {
    const bool memory = request.path.empty();
    writable_ = request.writable;
    salt_ = saltText(request.key);
    const int flags = (writable_ ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY) |
                      (request.create || memory ? SQLITE_OPEN_CREATE : 0) | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(memory ? ":memory:" : request.path.c_str(), &db_, flags,
                                     memory ? nullptr : guardedLayer(fileLayerSetting()));
    if (db_ == nullptr) {
        throw std::bad_alloc();
    }
    sqlite3_extended_result_codes(db_, 1);
    if (code != SQLITE_OK) {
        failWith(code);
    }
    sqlite3_busy_handler(db_, &SqliteStore::onBusy, this);
}

void SqliteStore::configure(const OpenRequest& request) {
    installFunctions(db_);
    gatherer_.install(db_);
    installIdSets(db_, this);
    installLinks(db_);
    letLeave(db_);
    if (!request.path.empty()) {
        keepCiphersReady();
        execute("PRAGMA key = \"x'" + request.key + "'\"");
        execute(cipherSettings("main"));
    }
    execute(kSessionSettings);
}

void SqliteStore::createSystemTables() {
    execute(std::string("BEGIN IMMEDIATE;") +
            "CREATE TABLE dao_queries(name TEXT NOT NULL PRIMARY KEY COLLATE DAO_TEXT,"
            " version INTEGER NOT NULL, sql TEXT NOT NULL);" +
            assigned(kOrder, alphabet::kOrderVersion) + ";COMMIT");
}

void SqliteStore::close() noexcept {
    recentByText_.clear();
    recent_.clear();
    for (SqliteStatement* statement : live_) {
        statement->finalize();
    }
    live_.clear();
    sqlite3_close_v2(db_);
    db_ = nullptr;
}

int SqliteStore::onBusy(void* self, int count) {
    auto* store = static_cast<SqliteStore*>(self);
    const auto now = std::chrono::steady_clock::now();
    if (count == 0) {
        store->busySince_ = now;
    }
    const auto left = std::chrono::milliseconds(lockTimeout()) - (now - store->busySince_);
    if (left <= std::chrono::milliseconds(0)) {
        return 0;
    }
    const auto nap = std::chrono::microseconds(jitter());
    std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(nap, left));
    return 1;
}

void SqliteStore::failWith(int code, bool preparing) const {
    const std::string message = db_ != nullptr ? sqlite3_errmsg(db_) : "";
    const int extended =
        db_ != nullptr && code == (sqlite3_errcode(db_) & 0xFF) ? sqlite3_extended_errcode(db_) : code;
    const int primary = code & 0xFF;
    if (primary == SQLITE_NOMEM) {
        throw std::bad_alloc();
    }
    const int system = db_ != nullptr ? sqlite3_system_errno(db_) : 0;
    if ((primary == SQLITE_IOERR || primary == SQLITE_CANTOPEN) && isFullDisk(system)) {
        fail(errNotEnoughSpace);
    }
    // Clearing up after a failed write hides its reason (there is no journal to remove, say). A write that
    // was not refused by the device itself has met a limit: the disk's, the user's share of it, the file's.
    if (extended == SQLITE_IOERR_WRITE && system != EIO && system != EROFS) {
        fail(errNotEnoughSpace);
    }
    for (const CodeNumber& entry : kExtended) {
        if (entry.code == extended || entry.code == code) {
            fail(entry.number);
        }
    }
    for (const CodeNumber& entry : kPrimary) {
        if (entry.code == primary) {
            fail(entry.number);
        }
    }
    if (preparing) {
        fail(errSyntax, "Syntax error in query expression: " + message + ".");
    }
    // A page that does not carry the seal of its key is no page of this file: the cipher calls that a general
    // error and says no more of it, the shop calls it damage. Whoever else fails in general says why.
    if (primary == SQLITE_ERROR && message == sqlite3_errstr(SQLITE_ERROR)) {
        fail(errCannotOpen);
    }
    fail(errInvalidOperation, "Invalid operation: " + message + ".");
}

void SqliteStore::execute(const std::string& text) {
    const int code = sqlite3_exec(db_, text.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        failWith(code);
    }
}

std::shared_ptr<Statement> SqliteStore::prepare(std::string_view text) {
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v2(db_, text.data(), static_cast<int>(text.size()), &raw, nullptr);
    if (code != SQLITE_OK) {
        failWith(code, true);
    }
    return std::make_shared<SqliteStatement>(this, raw);
}

std::shared_ptr<Statement> SqliteStore::cached(const std::string& text) {
    const auto found = recentByText_.find(text);
    if (found != recentByText_.end()) {
        recent_.splice(recent_.begin(), recent_, found->second);
        return recent_.front().statement;
    }
    std::shared_ptr<Statement> statement = prepare(text);
    if (text.size() > kCachedTextLimit) {
        return statement;
    }
    recent_.push_front({text, statement});
    recentByText_.emplace(recent_.front().text, recent_.begin());
    if (recent_.size() > kCachedStatements) {
        recentByText_.erase(recent_.back().text);
        recent_.pop_back();
    }
    return statement;
}

void SqliteStore::beginWrite() {
    if (!writable_) {
        fail(errReadOnly);
    }
    cached("BEGIN IMMEDIATE")->run();
}

void SqliteStore::beginRead() {
    cached("BEGIN")->run();
}
void SqliteStore::commit() {
    if (layoutChanged_ && !salt_.empty()) {
        writeLayout(*this, salt_, order());
    }
    const Unleavable whole;
    cached("COMMIT")->run();
    layoutChanged_ = false;
}

void SqliteStore::rollback() noexcept {
    layoutChanged_ = false;
    if (!inTransaction()) {
        return;
    }
    const Unleavable whole;
    try {
        cached("ROLLBACK")->run();
    } catch (const std::exception&) {
        // A rollback fails only where the store has already rolled back by itself.
        sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void SqliteStore::savepoint(int level) {
    execute("SAVEPOINT dao_level" + std::to_string(level));
}
void SqliteStore::release(int level) {
    execute("RELEASE dao_level" + std::to_string(level));
}

void SqliteStore::rollbackTo(int level) noexcept {
    if (!inTransaction()) {
        return;
    }
    const Unleavable whole;
    const std::string name = "dao_level" + std::to_string(level);
    sqlite3_exec(db_, ("ROLLBACK TO " + name + ";RELEASE " + name).c_str(), nullptr, nullptr, nullptr);
}

std::int64_t SqliteStore::integerOf(const char* text) {
    std::vector<std::int64_t> numbers;
    cached(text)->readKeys(numbers, 1);
    return numbers.empty() ? 0 : numbers.front();
}

std::int64_t SqliteStore::pageCount() {
    return integerOf("PRAGMA page_count");
}
std::int64_t SqliteStore::dataVersion() {
    return integerOf("PRAGMA data_version");
}
std::int64_t SqliteStore::schemaVersion() {
    return integerOf("PRAGMA schema_version");
}

int SqliteStore::form() {
    return static_cast<int>(integerOf(kForm));
}
void SqliteStore::setForm(int form) {
    execute(assigned(kForm, form));
    layoutChanged_ = true;
}
std::int64_t SqliteStore::order() {
    return integerOf(kOrder);
}

void SqliteStore::keepOrder() {
    const std::int64_t order = this->order();
    if (order > alphabet::kOrderVersion || form() > knownForm()) {
        fail(errNewerForm);
    }
    if (order == alphabet::kOrderVersion || !writable_) {
        return;
    }
    beginWrite();
    try {
        execute("REINDEX DAO_TEXT;" + assigned(kOrder, alphabet::kOrderVersion));
        layoutChanged_ = true;
        commit();
    } catch (...) {
        rollback();
        throw;
    }
}

void SqliteStore::keepLayout() {
    if (!writable_ || salt_.empty()) {
        return;
    }
    bool damaged = false;
    try {
        const QuietErrors quiet;
        if (hasFreshLayout(*this, salt_)) {
            return;
        }
        beginWrite();
        layoutChanged_ = true;
        commit();
    } catch (const Error& error) {
        rollback();
        damaged = error.Number() == errCannotOpen;
    }
    if (damaged) {
        fail(errCannotOpen);
    }
}

const sql::IdSetPtr* SqliteStore::findIdSet(std::int64_t number) const {
    const auto found = idSets_.find(number);
    return found == idSets_.end() ? nullptr : &found->second;
}

void SqliteStore::copyInto(const OpenRequest& target) {
    execute("ATTACH " + quotedText(target.path) + " AS target KEY \"x'" + target.key + "'\"");
    execute(cipherSettings("target"));
    execute("PRAGMA foreign_keys = OFF; PRAGMA target.synchronous = FULL; PRAGMA cache_spill = ON");
    beginWrite();
    try {
        const LongStatements longOnes(db_);
        copyTables();
        execute(assigned("PRAGMA target.application_id", alphabet::kOrderVersion));
        execute(assigned("PRAGMA target.user_version", form()));
        commit();
    } catch (...) {
        rollback();
        throw;
    }
    execute("DETACH target");
}

sqlite3_file* SqliteStore::ownFile() const {
    sqlite3_file* file = nullptr;
    if (sqlite3_file_control(db_, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || file == nullptr ||
        file->pMethods == nullptr) {
        fail(errDiskIo);
    }
    return file;
}

std::int64_t SqliteStore::fileSize() const {
    sqlite3_file* const file = ownFile();
    sqlite3_int64 size = 0;
    if (file->pMethods->xFileSize(file, &size) != SQLITE_OK) {
        fail(errDiskIo);
    }
    return size;
}

std::size_t SqliteStore::readFile(std::int64_t offset, std::span<char> buffer) {
    const std::int64_t size = fileSize();
    if (offset >= size) {
        return 0;
    }
    sqlite3_file* const file = ownFile();
    const std::size_t wanted = std::min<std::size_t>(buffer.size(), static_cast<std::size_t>(size - offset));
    const int code = file->pMethods->xRead(file, buffer.data(), static_cast<int>(wanted), offset);
    if (code != SQLITE_OK && code != SQLITE_CORRUPT) {  // a page of zeroes is read all the same
        fail(errDiskIo);
    }
    return wanted;
}

}  // namespace dao::driver
