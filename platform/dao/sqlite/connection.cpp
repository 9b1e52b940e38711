#include "platform/dao/sqlite/connection.h"

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/long_statements.h"
#include "platform/dao/sqlite/page_guard.h"
#include "platform/dao/sqlite/statement.h"
#include "platform/text/order.h"

namespace dao::driver {
namespace {

std::string& fileLayerSetting() {
    static std::string name;
    return name;
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
    // Nothing of a transaction reaches the file before its commit, so a copy taken meanwhile is whole.
    "PRAGMA cache_spill = OFF;";

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

int neverWait(void*, int) {
    return 0;
}

class ConnectionBeside final : public Beside {
 public:
    explicit ConnectionBeside(const OpenRequest& request)
        : connection_({request.path, request.key, false, false}, {&neverWait, nullptr}, false) {
        connection_.execute("PRAGMA cache_size = -2048");  // whoever reads a table once needs no page twice
    }
    std::shared_ptr<SqliteStatement> prepare(const std::string& text) override {
        return std::static_pointer_cast<SqliteStatement>(connection_.prepare(text));
    }

 private:
    SqliteConnection connection_;
};

}  // namespace

std::string assigned(const char* pragma, std::int64_t value) {
    return std::string(pragma) + " = " + std::to_string(value);
}

std::string cipherSettings(std::string_view schema) {
    std::string text;
    for (const std::string_view setting : kCipherSettings) {
        text += "PRAGMA " + std::string(schema) + '.' + std::string(setting) + ';';
    }
    return text;
}

void setFileLayer(std::string name) {
    fileLayerSetting() = std::move(name);
}

SqliteConnection::SqliteConnection(const OpenRequest& request, const BusyHandler& busy, bool withSystemTables)
    : writable_(request.writable) {
    try {
        open(request, busy);
        configure(request);
        if (request.create && withSystemTables) {
            createSystemTables();
        }
    } catch (const std::bad_alloc&) {
        forsake();
        throw;
    } catch (...) {
        close();
        throw;
    }
}

void SqliteConnection::open(const OpenRequest& request, const BusyHandler& busy) {
    const bool memory = request.path.empty();
    const int flags = (request.writable ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY) |
                      (request.create || memory ? SQLITE_OPEN_CREATE : 0) | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(memory ? ":memory:" : request.path.c_str(), &library_.db_, flags,
                                     memory ? nullptr : guardedLayer(fileLayerSetting()));
    if (library_.db_ == nullptr) {
        throw std::bad_alloc();
    }
    sqlite3_extended_result_codes(library_.db_, 1);
    if (code != SQLITE_OK) {
        library_.failWith(code);
    }
    sqlite3_busy_handler(library_.db_, busy.ask, busy.context);
}

void SqliteConnection::configure(const OpenRequest& request) {
    installFunctions(library_.db_);
    library_.gatherer_.install(library_.db_);
    installIdSets(library_);
    installLinks(library_);
    installCalculations(library_.db_);
    letLeave(library_.db_);
    if (!request.path.empty()) {
        keepCiphersReady();
        execute("PRAGMA key = \"x'" + request.key + "'\"");
        execute(cipherSettings("main"));
        library_.openBeside_ = [request] { return std::make_unique<ConnectionBeside>(request); };
    }
    execute(kSessionSettings);
    execute(assigned("PRAGMA cache_size", -kPageCache / 1024));  // a number below zero counts in KiB
}

void SqliteConnection::createSystemTables() {
    execute(
        "BEGIN IMMEDIATE;"
        "CREATE TABLE dao_queries(name TEXT NOT NULL PRIMARY KEY COLLATE DAO_TEXT,"
        " version INTEGER NOT NULL, sql TEXT NOT NULL);" +
        assigned(kOrderPragma, alphabet::kOrderVersion) + ";COMMIT");
}

void SqliteConnection::forsake() noexcept {
    endStatements();
    library_.db_ = nullptr;
}

void SqliteConnection::endStatements() noexcept {
    recent_.clear();
    for (SqliteStatement* statement : library_.statements_) {
        statement->finalize();
    }
    library_.statements_.clear();
}

void SqliteConnection::close() noexcept {
    endStatements();
    sqlite3_close_v2(library_.db_);
    library_.db_ = nullptr;
}

void SqliteConnection::execute(const std::string& text) {
    const int code = sqlite3_exec(library_.db_, text.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        library_.failWith(code);
    }
}

std::shared_ptr<Statement> SqliteConnection::prepare(std::string_view text) {
    sqlite3_stmt* raw = nullptr;
    const int code =
        sqlite3_prepare_v2(library_.db_, text.data(), static_cast<int>(text.size()), &raw, nullptr);
    if (code != SQLITE_OK) {
        library_.failWith(code, true);
    }
    return std::make_shared<SqliteStatement>(library_, raw);
}

std::shared_ptr<Statement> SqliteConnection::cached(const std::string& text) {
    if (std::shared_ptr<Statement> known = recent_.find(text)) {
        return known;
    }
    std::shared_ptr<Statement> statement = prepare(text);
    recent_.keep(text, statement);
    return statement;
}

std::int64_t SqliteConnection::integerOf(const char* text) {
    std::vector<std::int64_t> numbers;
    cached(text)->readKeys(numbers, 1);
    return numbers.empty() ? 0 : numbers.front();
}

}  // namespace dao::driver
