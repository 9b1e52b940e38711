#include "shop.h"

#include <strings.h>

#include <algorithm>

#include <cstdio>
#include <cstdlib>

#include "data/session.h"

namespace {

int compareTexts(void*, int length, const void* text, int otherLength, const void* other) {
    const int order = strncasecmp(static_cast<const char*>(text), static_cast<const char*>(other),
                                  static_cast<std::size_t>(std::min(length, otherLength)));
    return order != 0 ? order : length - otherLength;
}

}  // namespace

Shop::Shop(const std::string& path) : path_(path) {
    database_ = dao::DBEngine::OpenDatabase(path, false, false, connectText().toStdString());
    if (sqlite3_open(path.c_str(), &plain_) != SQLITE_OK) {
        std::fprintf(stderr, "the plain connection does not open %s\n", path.c_str());
        std::exit(1);
    }
    const std::string password = BuildDatabasePassword().toStdString();
    sqlite3_key(plain_, password.data(), static_cast<int>(password.size()));
    run("PRAGMA cipher_page_size=4096");
    run("PRAGMA kdf_iter=64000");
    run("PRAGMA journal_mode=PERSIST");  // as we have it; the usual one makes and deletes a file for each
                                         // change
    run("PRAGMA synchronous=FULL");
    run("PRAGMA temp_store=MEMORY");
    run("PRAGMA cache_size=-200000");
    // The file's tables name the order of their texts; a plain program has to bring one along.
    sqlite3_create_collation(plain_, "DAO_TEXT", SQLITE_UTF8, nullptr, compareTexts);
    sqlite3_busy_timeout(plain_, 10000);
    run("SELECT count(*) FROM sqlite_master");
}

Shop::~Shop() {
    sqlite3_close(plain_);
}

void Shop::run(const char* sql) const {
    char* message = nullptr;
    if (sqlite3_exec(plain_, sql, nullptr, nullptr, &message) != SQLITE_OK) {
        std::fprintf(stderr, "%s: %s\n", sql, message);
        std::exit(1);
    }
}

sqlite3_stmt* Shop::prepare(const char* sql) const {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(plain_, sql, -1, &statement, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "%s: %s\n", sql, sqlite3_errmsg(plain_));
        std::exit(1);
    }
    return statement;
}
