#include "platform/dao/current_row.h"

namespace dao {

void CurrentRow::setColumns(std::size_t count) {
    cells_.assign(count, Cell{});
    asked_.assign(count, 0);
}

void CurrentRow::come(std::int64_t position) {
    fetched_ = position;
    age_.noteRead();
}

}  // namespace dao
