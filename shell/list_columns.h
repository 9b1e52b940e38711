#pragma once

#include <QString>

namespace platform {
class ListView;
class Trap;
}  // namespace platform

// The columns of a list as the settings keep them: one figure a column with semicolons between, in the order
// of the columns, widths in twips and places counted from 1.

// Each figure by itself, under `step`: one that cannot be used leaves the others standing. An empty figure is
// no width at all. A figure for a column that is not there fails with RunError 35600.
void placeColumns(platform::ListView& list, const QString& widths, const QString& positions,
                  platform::Trap& step);
QString columnWidths(const platform::ListView& list);
QString columnPositions(const platform::ListView& list);
