#pragma once

#include <cstdint>
#include <string>

#include "platform/sql/close_numbers.h"
#include "platform/sql/sql_text.h"

namespace dao::driver {

// What a table's keys are where no number is missing: counting goes from page to page and not from row to
// row. One statement, so that the three are of one state of the file.
struct KeyRange {
    // Its columns are the first key, the last one and the number of rows.
    static std::string question(const std::string& table) {
        const std::string name = sql::writing::quotedName(table);
        return ends(name) + ",(SELECT count(*) FROM " + name + ')';
    }
    // The first two alone; `table` as it stands in a statement.
    static std::string ends(const std::string& table) {
        return "SELECT (SELECT min(rowid) FROM " + table + "),(SELECT max(rowid) FROM " + table + ')';
    }

    std::int64_t first, last;  // without rows it does not matter which
    std::uint64_t rows;
    bool hasAll() const { return rows == 0 || sql::spanOf(first, last) == rows - 1; }
};

}  // namespace dao::driver
