#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace dao {

inline constexpr std::size_t kLongestName = 64;  // of a table or query, bytes

// Names of tables, fields and queries are compared without regard to case, in the letters that names are made
// of.
inline char lowerLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

inline bool sameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return lowerLetter(x) == lowerLetter(y);
           });
}

}  // namespace dao
