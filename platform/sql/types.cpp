#include "platform/sql/types.h"

#include "platform/text/ascii.h"

namespace sql {

bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (alphabet::lowerAscii(a[i]) != alphabet::lowerAscii(b[i])) {
            return false;
        }
    }
    return true;
}

int TableInfo::indexOf(std::string_view column) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (sameName(columns[i].name, column)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

const ColumnInfo* TableInfo::counter() const {
    for (const ColumnInfo& column : columns) {
        if (column.counter) {
            return &column;
        }
    }
    return nullptr;
}

}  // namespace sql
