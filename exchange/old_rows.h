#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dao/row_block.h"

namespace exchange {

struct OldColumn {
    std::string name;
    dao::Type type = dao::Type::Null;  // Null: of a kind that no shop has, pictures and the like; not read
};

// A table of a file of the old format with its living rows, in the order in which they lie there.
struct OldTable {
    std::string name;
    std::vector<OldColumn> columns;
    // A column for each of them. What cannot be read is marked: a cell as isUnread, a whole row below.
    dao::RowBlock rows;
    std::map<std::size_t, std::string> badRows;  // place in `rows`: where it lies in the file
    std::set<std::pair<std::size_t, std::size_t>>
        unsoundTexts;           // row and column: letters stand in for others
    std::int64_t toldRows = 0;  // what the table says of itself

    int indexOf(std::string_view column) const;  // without regard to case; -1: no such column
};

struct OldShop {
    std::vector<OldTable> tables;     // of those asked for
    std::vector<std::string> others;  // "the table X", "the stored query Y": what else the file holds

    const OldTable* table(std::string_view name) const;  // without regard to case; nullptr: none
};

// `done` of `all` rows, as the tables tell of themselves; also called while nothing comes.
using ReadingWatch = std::function<void(const std::string& table, std::int64_t done, std::int64_t all)>;

// Reads these tables whole. The file is only read, by a process of its own: whatever a damaged file does to
// the library, this program lives on. Throws OldFileError where the file is damaged, or encoded in a way that
// cannot be read, or nothing comes of it for `patience` seconds.
OldShop readOldShop(const std::string& path, const std::vector<std::string>& tables,
                    const ReadingWatch& watch = {}, int patience = 30);

}  // namespace exchange
