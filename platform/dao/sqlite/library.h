#pragma once

#include <sqlcipher/sqlite3.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_set>

#include "platform/dao/sqlite/row_gatherer.h"
#include "platform/sql/writer.h"

namespace dao::driver {

class SqliteStatement;

// Another connection to the same file, which only reads and never waits for a lock. It knows none of the sets
// of numbers. Its making throws what opening the file does.
class Beside {
 public:
    Beside() = default;
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;
    virtual ~Beside() = default;
    virtual std::shared_ptr<SqliteStatement> prepare(const std::string& text) = 0;
};

// The library's own connection, with what its statements refer to.
class LibraryHandle {
 public:
    LibraryHandle() = default;
    LibraryHandle(const LibraryHandle&) = delete;
    LibraryHandle& operator=(const LibraryHandle&) = delete;

    sqlite3* get() const { return db_; }
    // Throws dao::Error for a result code of the library; `preparing`: the statement's text is at fault.
    [[noreturn]] void failWith(int code, bool preparing = false) const;

    RowGatherer& gatherer() { return gatherer_; }
    std::unordered_set<SqliteStatement*>& statements() { return statements_; }  // those that live
    void setIdSet(std::int64_t number, sql::IdSetPtr set) { idSets_[number] = std::move(set); }
    void dropIdSet(std::int64_t number) { idSets_.erase(number); }
    const sql::IdSetPtr* findIdSet(std::int64_t number) const;  // nullptr: no set bears it
    // nullptr where there is no file.
    std::unique_ptr<Beside> openBeside() const { return openBeside_ ? openBeside_() : nullptr; }

 private:
    friend class SqliteConnection;

    RowGatherer gatherer_;
    sqlite3* db_ = nullptr;
    std::unordered_set<SqliteStatement*> statements_;
    std::map<std::int64_t, sql::IdSetPtr> idSets_;
    std::function<std::unique_ptr<Beside>()> openBeside_;
};

}  // namespace dao::driver
