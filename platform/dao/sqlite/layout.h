#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/dao/sqlite/pages.h"

namespace dao::driver {

class Definitions;
class SqliteConnection;

// One line of what a file holds: a table or an index as its first page tells it, or a number of the file's
// own (kForm, kOrder), which has nothing but a name and the number.
struct LayoutEntry {
    std::string type, name, table, sql;
    std::int64_t number = 0;  // of a table or index: the page it begins with
    static constexpr const char* kTable = "table";
    static constexpr const char* kIndex = "index";
    static constexpr const char* kForm = "form";
    static constexpr const char* kOrder = "order";
};

// The file tells twice more, in two tables of its own far from its first page, what that page says: a repair
// finds them by a mark in each row even where nothing leads to them any more. `salt`: of the file's key,
// hexadecimal; rows of another file, as a copy by an earlier release carries along, are not taken for its
// own.
bool hasFreshLayout(SqliteConnection& file, Definitions& definitions, const std::string& salt);
// Within a transaction. `order`: of the indexes of texts.
void writeLayout(SqliteConnection& file, Definitions& definitions, const std::string& salt,
                 std::int64_t order);
bool isLayoutTable(std::string_view name);

// What the marked rows of all whole pages tell, each entry once; where there are none, what is left of the
// first page's own list.
std::vector<LayoutEntry> findLayout(PageFile& pages, const std::string& salt);
// A row of the first page's list. False where it is none.
bool readSchemaRow(const struct StoredRow& row, LayoutEntry& entry);

}  // namespace dao::driver
