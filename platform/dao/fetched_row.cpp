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

void FetchedRow::fetchUnread() {
    const std::size_t row = number();
    row_.forget();
    rows_.fetchUnread(row);
    fetch();
}

void FetchedRow::distrust() {
    if (rows_.distrust()) {
        row_.forget();
    }
}

const Value& FetchedRow::value(std::size_t column) {
    // A list of a thousand services asks here ten thousand times: no more than this for a row that is there.
    if (!row_.isOf(position_.at()) || position_.isGap()) {
        fetch();
    }
    if (const Value* known = row_.known(column)) {
        return *known;
    }
    row_.ask(column);
    if (row_.isUnread(column)) {
        row_.forgetCells();
        fetchUnread();
    }
    return row_.take(column);
}

}  // namespace dao
