#pragma once

#include <QString>

namespace platform {

// How a list is sorted, as the settings keep it: a digit (0: not sorted), the field, a digit (0: ascending).
// "0Naziv0" is a list in the order of the table that would sort by name, ascending.
struct SortTag {
    bool sorted = false;
    QString field;
    QString order = QStringLiteral("ASC");  // or "DESC"
    bool operator==(const SortTag&) const = default;
};

// Throws RunError: 5 where the text is shorter than its two digits, 13 where the first character is no digit.
SortTag splitSortTag(const QString& tag);
QString makeSortTag(const SortTag& sort);

}  // namespace platform
