#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/sql/types.h"

// Names in a statement's text. Values never stand there: they are parameters.
namespace dao::postgres {

inline constexpr const char* kHiddenKey = "dao_row";  // the key of a table that has no counter of its own

inline std::string quotedName(std::string_view name) {
    std::string text = "\"";
    for (const char c : name) {
        text += c;
        if (c == '"') {
            text += c;
        }
    }
    return text + '"';
}

inline std::string tableName(std::string_view table) {
    return "shop." + quotedName(table);
}

// The column that tells a table's rows apart.
inline std::string keyColumn(const sql::TableInfo& table) {
    const auto counter = std::find_if(table.columns.begin(), table.columns.end(),
                                      [](const sql::ColumnInfo& column) { return column.counter; });
    return quotedName(counter == table.columns.end() ? std::string_view(kHiddenKey)
                                                     : std::string_view(counter->name));
}

}  // namespace dao::postgres
