#pragma once

#include <string>
#include <vector>

#include "platform/dao/sqlite/connection.h"

namespace dao::driver {

// A column as the statement that made its table declares it.
struct DeclaredColumn {
    std::string name;
    std::string type;
    bool needed = false;  // no Null
    bool isKey = false;
};

// In the table's order, kHiddenKey among them; none where there is no such table.
std::vector<DeclaredColumn> columnsOf(SqliteConnection& file, const std::string& table);

}  // namespace dao::driver
