#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "plain_shop.h"

// Stored queries of the plain side, in the table that ours are kept in: there from construction to the end.
class StoredTexts {
 public:
    StoredTexts(PlainShop& shop, std::initializer_list<const char*> names);
    ~StoredTexts();
    StoredTexts(const StoredTexts&) = delete;
    StoredTexts& operator=(const StoredTexts&) = delete;

    // One text for each name, all in one transaction.
    void write(std::initializer_list<const std::string*> texts);
    Lines read() const;

 private:
    PlainShop& shop_;
    std::vector<std::string> names_;
    Statement begin_, write_, commit_;
    sqlite3_int64 version_ = 0;
};
