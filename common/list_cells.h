#pragma once

#include <QString>
#include <type_traits>

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
void setCell(platform::ListItem& row, Column column, const QString& text) {
    const int subItem = static_cast<int>(column);
    if (subItem == 0) {
        row.Text = text;
    } else {
        row.setSubItems(subItem, text);
    }
}
