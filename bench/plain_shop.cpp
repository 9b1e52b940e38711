#include "plain_shop.h"

#include <strings.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "data/session.h"

namespace {

[[noreturn]] void die(const std::string& what, const char* why) {
    std::fprintf(stderr, "%s: %s\n", what.c_str(), why);
    std::exit(1);
}

// The file's tables name the order of their texts; a plain program has to bring one along. The generated
// shop's names are plain letters.
int compareTexts(void*, int length, const void* text, int otherLength, const void* other) {
    const int order = strncasecmp(static_cast<const char*>(text), static_cast<const char*>(other),
                                  static_cast<std::size_t>(std::min(length, otherLength)));
    return order != 0 ? order : length - otherLength;
}

void nothing(sqlite3_context*) {}

constexpr const char* kSettings =
    "PRAGMA cipher_page_size=4096;"
    "PRAGMA kdf_iter=64000;"
    "PRAGMA foreign_keys=ON;"
    "PRAGMA journal_mode=PERSIST;"
    "PRAGMA journal_size_limit=1048576;"
    "PRAGMA synchronous=FULL;"
    "PRAGMA temp_store=MEMORY;"
    "PRAGMA cache_size=-131072;"
    "PRAGMA cache_spill=OFF;"
    "SELECT count(*) FROM sqlite_master";

Lines linesOf(const PlainShop& shop, const std::string& sql) {
    Lines lines;
    for (Statement statement(shop, sql); statement.next();) {
        lines.emplace_back(statement.row().text(0));
    }
    return lines;
}

}  // namespace

// --- A statement.

Statement::Statement(const PlainShop& shop, const std::string& sql) {
    if (sqlite3_prepare_v2(shop.handle(), sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK) {
        die(sql, sqlite3_errmsg(shop.handle()));
    }
}

Statement& Statement::bind(int place, sqlite3_int64 value) {
    sqlite3_bind_int64(statement_, place, value);
    return *this;
}

Statement& Statement::bind(int place, std::string_view text) {
    sqlite3_bind_text(statement_, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    return *this;
}

bool Statement::next() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        die(sqlite3_sql(statement_), sqlite3_errmsg(sqlite3_db_handle(statement_)));
    }
    sqlite3_reset(statement_);
    return false;
}

// --- The file.

PlainShop::PlainShop(const std::string& path) {
    if (sqlite3_open_v2(path.c_str(), &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) !=
        SQLITE_OK) {
        die(path, "the plain connection does not open it");
    }
    const std::string password = BuildDatabasePassword().toStdString();
    sqlite3_key(handle_, password.data(), static_cast<int>(password.size()));
    run(kSettings);
    sqlite3_create_collation(handle_, "DAO_TEXT", SQLITE_UTF8, nullptr, compareTexts);
    sqlite3_create_function(handle_, "each_row", -1, SQLITE_UTF8, this, nullptr, &PlainShop::eachRow,
                            nothing);
}

PlainShop::~PlainShop() {
    sqlite3_close(handle_);
}

void PlainShop::run(const std::string& sql) const {
    if (sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        die(sql, sqlite3_errmsg(handle_));
    }
}

sqlite3_int64 PlainShop::number(const std::string& sql) const {
    Statement statement(*this, sql);
    return statement.next() ? statement.row().integer(0) : 0;
}

void PlainShop::scan(Statement& statement, const Visit& visit) {
    visit_ = &visit;
    statement.run();
    visit_ = nullptr;
}

void PlainShop::eachRow(sqlite3_context* context, int, sqlite3_value** values) {
    (*static_cast<PlainShop*>(sqlite3_user_data(context))->visit_)(Row(values));
}

// --- What is in it.

Lines schemaOf(const PlainShop& shop) {
    Lines lines = linesOf(shop, "SELECT type||' '||name||' '||ifnull(sql, '') FROM sqlite_master ORDER BY 1");
    for (const char* more : {"SELECT name||': '||sql FROM dao_queries ORDER BY 1",
                             "SELECT 'temporary '||name FROM sqlite_temp_master"}) {
        const Lines found = linesOf(shop, more);
        lines.insert(lines.end(), found.begin(), found.end());
    }
    return lines;
}

Lines rowsOf(const PlainShop& shop) {
    Lines lines;
    for (const std::string& table :
         linesOf(shop,
                 "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%' AND "
                 "name NOT LIKE 'dao%' ORDER BY 1")) {
        std::size_t sum = 0, rows = 0;
        for (Statement all(shop, "SELECT * FROM \"" + table + "\" ORDER BY rowid"); all.next(); ++rows) {
            for (int column = 0; column < all.columns(); ++column) {
                sum = sum * 31 + std::hash<std::string_view>()(all.row().text(column));
            }
        }
        lines.push_back(table + ": " + std::to_string(rows) + " rows, " + std::to_string(sum));
    }
    return lines;
}
