#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace dao {

// How far something that goes through many rows has come.
struct RowState {
    std::string table;       // the one whose rows it is at
    std::int64_t done = 0;   // of `all` rows
    std::int64_t all = 0;    // 0: nobody knows
    bool comparing = false;  // the second time, to hold what was written against what was to be
};
using RowWatch = std::function<void(const RowState&)>;

}  // namespace dao
