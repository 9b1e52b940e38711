#pragma once

#include <sqlcipher/sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/dao/driver.h"
#include "platform/dao/sqlite/library.h"
#include "platform/dao/sqlite/recent_statements.h"
#include "platform/sql/sql_text.h"

namespace dao::driver {

// How a file is opened. `key` is the raw cipher key with the file's salt, hexadecimal.
struct OpenRequest {
    std::string path;
    std::string key;
    bool writable = true;
    bool create = false;
};

// Who is asked, as often as a lock is not to be had, whether to go on waiting: see sqlite3_busy_handler.
struct BusyHandler {
    int (*ask)(void* context, int count);
    void* context;
};

// One SQLCipher connection, its statements, and what these refer to. It speaks of every failure in the
// engine's numbers.
class SqliteConnection {
 public:
    // A file that is made gets the engine's own tables `withSystemTables`.
    SqliteConnection(const OpenRequest& request, const BusyHandler& busy, bool withSystemTables);
    ~SqliteConnection() { close(); }
    SqliteConnection(const SqliteConnection&) = delete;
    SqliteConnection& operator=(const SqliteConnection&) = delete;

    sqlite3* handle() const { return library_.get(); }
    bool writable() const { return writable_; }
    std::shared_ptr<Statement> prepare(std::string_view text);
    std::shared_ptr<Statement> cached(const std::string& text);  // from those used last
    void execute(const std::string& text);
    std::int64_t integerOf(const char* text);  // the first column of the first row; 0 without one
    std::int64_t pageCount() { return integerOf("PRAGMA page_count"); }  // that the file says it has
    [[noreturn]] void failWith(int code) const { library_.failWith(code); }

    // Its key, or that of a file attached to it, had no room: closed then, the library gives parts of it back
    // twice. A little that is never given back does no harm. Nothing may be asked of it any more.
    void forsake() noexcept;

    void setIdSet(int number, sql::IdSetPtr set) { library_.setIdSet(number, std::move(set)); }
    void dropIdSet(int number) { library_.dropIdSet(number); }

 private:
    void open(const OpenRequest& request, const BusyHandler& busy);
    void configure(const OpenRequest& request);
    void createSystemTables();
    void endStatements() noexcept;
    void close() noexcept;

    bool writable_;
    LibraryHandle library_;
    RecentStatements recent_;
};

// How the file's cipher is set up, for the database of that name.
std::string cipherSettings(std::string_view schema);

// The version of the order that the indexes of texts are kept in, in the number that the file's head has for
// the programs that use it. 0: a file of before the shop had one alphabet.
inline constexpr const char* kOrderPragma = "PRAGMA application_id";
inline constexpr const char* kFormPragma = "PRAGMA user_version";
std::string assigned(const char* pragma, std::int64_t value);

// For tests of a full disk and of a power failure: files are reached by the operating-system layer registered
// under this name; empty: the usual one.
void setFileLayer(std::string name);

using sql::writing::quotedName;
using sql::writing::quotedText;
bool isSystemTable(std::string_view name);            // not for those who use the file
inline constexpr const char* kHiddenKey = "dao_row";  // the key of a table that has no counter of its own

void installFunctions(sqlite3* db);          // functions.cpp
void installIdSets(LibraryHandle& library);  // idset.cpp
void installLinks(sqlite3* db);              // links.cpp
void installCalculations(sqlite3* db);       // calculations.cpp

}  // namespace dao::driver
