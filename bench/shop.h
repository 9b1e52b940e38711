#pragma once

#include <sqlcipher/sqlite3.h>

#include <string>

#include "platform/dao/dao.h"

// The generated shop of the measures, open through the engine and, beside it, through the plain C API.
class Shop {
 public:
    explicit Shop(const std::string& path);
    ~Shop();
    Shop(const Shop&) = delete;
    Shop& operator=(const Shop&) = delete;

    const std::string& path() const { return path_; }
    dao::Database& database() { return database_; }
    sqlite3* plain() const { return plain_; }
    // Runs a statement through the plain C API; ends the program where it fails.
    void run(const char* sql) const;
    sqlite3_stmt* prepare(const char* sql) const;

    static constexpr int kServices = 300000;

 private:
    std::string path_;
    dao::Database database_;
    sqlite3* plain_ = nullptr;
};
