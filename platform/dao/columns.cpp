#include "platform/dao/columns.h"

#include "platform/dao/failure.h"

namespace dao {

void Columns::assign(std::vector<sql::ResultColumn> columns) {
    columns_ = std::move(columns);
    names_.assign(columns_);
}

void Columns::check(int index) const {
    if (!has(index)) {
        fail(errItemNotFound);
    }
}

const sql::ResultColumn& Columns::at(int index) const {
    check(index);
    return columns_[static_cast<std::size_t>(index)];
}

int Columns::indexOf(std::string_view name) const {
    const int index = names_.find(name, columns_);
    if (index < 0) {
        fail(errItemNotFound);
    }
    return index;
}

}  // namespace dao
