#pragma once

#include <sqlcipher/sqlite3.h>

#include <functional>
#include <string>
#include <string_view>

#include "measure.h"

// A row as a running statement gives it: columns from 0, Null as nothing.
class Row {
 public:
    explicit Row(sqlite3_stmt* statement) : statement_(statement) {}
    explicit Row(sqlite3_value** values) : values_(values) {}

    sqlite3_int64 integer(int column) const {
        return values_ != nullptr ? sqlite3_value_int64(values_[column])
                                  : sqlite3_column_int64(statement_, column);
    }
    double number(int column) const {
        return values_ != nullptr ? sqlite3_value_double(values_[column])
                                  : sqlite3_column_double(statement_, column);
    }
    // Stays where it is until the next row.
    std::string_view text(int column) const {
        const unsigned char* text = values_ != nullptr ? sqlite3_value_text(values_[column])
                                                       : sqlite3_column_text(statement_, column);
        const int size = values_ != nullptr ? sqlite3_value_bytes(values_[column])
                                            : sqlite3_column_bytes(statement_, column);
        return {reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)};
    }

 private:
    sqlite3_stmt* statement_ = nullptr;
    sqlite3_value** values_ = nullptr;
};

class PlainShop;

// A prepared statement, made once and run as often as wanted. Whatever fails ends the program.
class Statement {
 public:
    Statement(const PlainShop& shop, const std::string& sql);
    ~Statement() { sqlite3_finalize(statement_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& bind(int place, sqlite3_int64 value);
    Statement& bind(int place, std::string_view text);  // which stays where it is until the statement has run
    bool next();  // false behind the last row; the statement can be run again then
    void run() {
        while (next()) {
        }
    }
    Row row() const { return Row(statement_); }
    int columns() const { return sqlite3_column_count(statement_); }

 private:
    sqlite3_stmt* statement_ = nullptr;
};

// The shop's file as a program opens it that knows nothing of ours: through the C API of the library. Every
// setting that bears on speed is the same as ours: cipher, journal, safety of a commit, page cache.
class PlainShop {
 public:
    using Row = ::Row;
    using Statement = ::Statement;

    explicit PlainShop(const std::string& path);
    ~PlainShop();
    PlainShop(const PlainShop&) = delete;
    PlainShop& operator=(const PlainShop&) = delete;

    sqlite3* handle() const { return handle_; }
    void run(const std::string& sql) const;
    sqlite3_int64 number(const std::string& sql) const;  // the first column of the first row

    using Visit = std::function<void(const Row&)>;
    // The quickest way through a whole table. The statement is "SELECT each_row(A, B, ...) FROM TABLE ...":
    // the library calls the program for each row, in the order in which it comes upon them, and need not be
    // left and entered again.
    void scan(Statement& statement, const Visit& visit);
    // The columns as such a statement asks for them.
    static std::string each(const std::string& columns) { return "each_row(" + columns + ')'; }
    static std::string inOrder(const std::string&) { return {}; }  // as they lie in the file

 private:
    static void eachRow(sqlite3_context* context, int count, sqlite3_value** values);

    sqlite3* handle_ = nullptr;
    const Visit* visit_ = nullptr;
};

// Tables, indexes, stored queries and whatever is there for this connection only: nothing of it may have
// come or gone when all has been measured.
Lines schemaOf(const PlainShop& shop);
// The rows of all tables, a line a table.
Lines rowsOf(const PlainShop& shop);
