#pragma once

#include <QString>
#include <span>

#include "platform/controls/list_view.h"

namespace platform {
class Trap;
}  // namespace platform

// One column of a list: a row of the list's own table, in the order of the columns. The window that owns the
// list names its columns by an enumeration beside that table and never counts them.
struct ListColumn {
    const char* field;   // the column's key, and the field by which the list is sorted
    const char* header;  // nullptr: the text headerId of the string table
    int headerId;        // 0 where `header` stands
    platform::HeaderAlignment alignment;
    int width = 1440;      // twips, until a person has dragged it
    bool isMoney = false;  // the unit on screen stands behind the header
};

// What the menu of columns is called in the windows that speak Serbian.
constexpr const char* kSerbianColumnMenu = "Prikazi kolone";

QString unitSuffix();  // " [DIN]" or " [EUR]", as prices are shown at present
QString headerOf(const ListColumn& column);
void addColumns(platform::ListView& list, std::span<const ListColumn> columns);
// The unit has changed: the headers of the money columns tell it. Throws as ListView where `list` has fewer
// columns.
void showUnit(platform::ListView& list, std::span<const ListColumn> columns);
// What the settings hold until a person has moved or sized a column.
QString defaultWidths(std::span<const ListColumn> columns);
QString defaultPositions(std::span<const ListColumn> columns);

// The columns of a list as the settings keep them: one figure a column with semicolons between, in the order
// of the columns, widths in twips and places counted from 1.

// Each figure by itself, under `step`: one that cannot be used leaves the others standing. An empty figure is
// no width at all. A figure for a column that is not there fails with RunError 35600.
void placeColumns(platform::ListView& list, const QString& widths, const QString& positions,
                  platform::Trap& step);
// Adds the columns and gives them the widths and places that the settings keep. A figure that cannot be used
// leaves the others standing; the last failure is told in `errorText`, and the result is false.
bool createListView(platform::ListView& list, std::span<const ListColumn> columns, const QString& widths,
                    const QString& positions, QString& errorText);
QString columnWidths(const platform::ListView& list);
QString columnPositions(const platform::ListView& list);
