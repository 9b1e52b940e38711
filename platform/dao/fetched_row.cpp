#include "platform/dao/fetched_row.h"

#include "platform/dao/failure.h"

namespace dao {

std::size_t FetchedRow::number() const {
    if (position_.isGap()) {
        fail(errRecordDeleted);
    }
    if (!isThere()) {
        fail(errNoCurrentRecord);
    }
    return static_cast<std::size_t>(position_.at());
}

std::size_t FetchedRow::fetch() {
    const std::size_t row = number();
    if (row_.isOf(position_.at())) {
        return row_.place();
    }
    row_.forget();
    row_.forgetCells();
    const std::optional<std::size_t> place = rows_.fetch(row);
    if (!place) {
        fail(errRecordDeleted);
    }
    row_.lieAt(*place);
    row_.come(position_.at());
    return *place;
}

const Value& FetchedRow::unread(std::size_t column) {
    const std::size_t row = number();
    row_.forget();
    rows_.fetchUnread(row);
    fetch();
    return row_.take(column);
}

void FetchedRow::distrust() {
    if (rows_.distrust()) {
        row_.forget();
    }
}

}  // namespace dao
