#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "measure.h"

class PlainShop;
class PlainServer;

// Stored queries of the plain side, in the table that ours are kept in: there from construction to the end.
template <class Of>
class StoredTexts {
 public:
    StoredTexts(Of& shop, std::initializer_list<const char*> names);
    ~StoredTexts();
    StoredTexts(const StoredTexts&) = delete;
    StoredTexts& operator=(const StoredTexts&) = delete;

    // One text for each name, all in one transaction.
    void write(std::initializer_list<const std::string*> texts);
    Lines read() const;

 private:
    Of& shop_;
    std::vector<std::string> names_;
    typename Of::Statement begin_, write_, commit_;
    std::int64_t version_ = 0;
};
