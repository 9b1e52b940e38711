#pragma once

#include <string>
#include <string_view>

#include "platform/sql/sql_text.h"

// Names in a statement's text. Values never stand there: they are parameters.
namespace dao::postgres {

inline constexpr const char* kHiddenKey = "dao_row";  // the key of a table that has no counter of its own

using sql::writing::quotedName;
using sql::writing::quotedText;

inline std::string tableName(std::string_view table) {
    return "shop." + quotedName(table);
}

// The column that tells a table's rows apart.
inline std::string keyName(const sql::TableInfo& table) {
    const sql::ColumnInfo* counter = table.counter();
    return counter == nullptr ? kHiddenKey : counter->name;
}
inline std::string keyColumn(const sql::TableInfo& table) {
    return quotedName(keyName(table));
}

}  // namespace dao::postgres
