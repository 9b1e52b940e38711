#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "common/list_columns.h"
#include "platform/controls/list_view.h"

// Cells of a list's rows by the names of its columns: an enumeration in the order of the list's table,
// beginning with the first column, which is the row's text.

// The column's number for the list view, from 1.
template <typename Column>
requires std::is_enum_v<Column>
constexpr int columnNumber(Column column) {
    return static_cast<int>(column) + 1;
}

// Empty where the row has no such cell.
template <typename Column>
requires std::is_enum_v<Column> QString cellOf(const platform::ListItem& row, Column column) {
    const int subItem = static_cast<int>(column);
    return subItem == 0 ? row.Text : row.subItems.value(subItem - 1);
}

template <typename Column>
requires std::is_enum_v<Column>
void setCell(platform::ListItem& row, Column column, QString text) {
    const int subItem = static_cast<int>(column);
    if (subItem == 0) {
        row.Text = std::move(text);
    } else {
        row.setSubItems(subItem, std::move(text));
    }
}

// A list's table of columns is an array of rows, each with its column's `name` and, as `list`, what the list
// shows of it.

// Whether the rows stand in the order of the names, one for each: who names a column must not get the one
// beside it. The table says so as the program is built.
template <typename Row, std::size_t count>
constexpr bool eachStandsAtItsName(const std::array<Row, count>& rows) {
    using Column = decltype(Row::name);
    for (std::size_t i = 0; i < count; ++i) {
        if (rows[i].name != static_cast<Column>(i)) {
            return false;
        }
    }
    return count == static_cast<std::size_t>(Column::Count);
}

// What the list itself wants of the table.
template <typename Row, std::size_t count>
constexpr std::array<ListColumn, count> columnsOf(const std::array<Row, count>& rows) {
    std::array<ListColumn, count> columns{};
    for (std::size_t i = 0; i < count; ++i) {
        columns[i] = rows[i].list;
    }
    return columns;
}
