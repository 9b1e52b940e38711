#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace dao {

// What a repair found.
struct RepairReport {
    bool damaged = false;  // false: every page was in order and the file was not touched
    std::int64_t rowsKept = 0;
    std::int64_t rowsLost = 0;  // rows known to have been there (by an index or a gap) and not readable
    struct TableCount {
        std::string table;
        std::int64_t kept = 0;
        std::int64_t lost = 0;
    };
    std::vector<TableCount> tables;  // of a damaged file, every table of the shop's
    std::vector<std::string> notes;
};

}  // namespace dao
