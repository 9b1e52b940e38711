#include "platform/dao/row_cursor.h"

#include "platform/dao/failure.h"

namespace dao {

void RowCursor::start() {
    noMatch_ = false;
    row_.forget();
    row_.position().place(0);
}

void RowCursor::needRows() const {
    if (rows_.count() == 0) {
        fail(errNoCurrentRecord);
    }
}

void RowCursor::MoveFirst() {
    needRows();
    row_.distrust();
    row_.position().place(0);
}

void RowCursor::MoveLast() {
    needRows();
    row_.distrust();
    row_.position().place(RecordCount() - 1);
}

void RowCursor::MoveNext() {
    if (EOF()) {
        fail(errNoCurrentRecord);
    }
    row_.position().next();
}

void RowCursor::MovePrevious() {
    if (BOF()) {
        fail(errNoCurrentRecord);
    }
    row_.position().previous();
}

void RowCursor::Move(std::int64_t rows) {
    const bool isNowhere = !row_.position().isGap() && !row_.isThere();
    if ((rows > 0 && EOF()) || (rows < 0 && BOF()) || (rows == 0 && isNowhere)) {
        fail(errNoCurrentRecord);
    }
    row_.distrust();
    if (rows == 0) {
        row_.forget();
        return;
    }
    row_.position().move(rows, rows_.count());
}

void RowCursor::setAbsolutePosition(std::int64_t position) {
    if (position < 0 || position >= RecordCount()) {
        fail(errNoCurrentRecord);
    }
    if (position != row_.position().at() + 1) {  // the next row is a step of a walk, as with MoveNext
        row_.distrust();
    }
    row_.position().place(position);
}

void RowCursor::setBookmark(const dao::Bookmark& place) {
    const std::optional<std::size_t> row = rows_.rowOf(place);
    if (!row) {
        fail(errRecordDeleted);
    }
    if (!rows_.surelyStands(*row)) {
        row_.distrust();
        row_.forget();
        if (!rows_.fetch(*row)) {
            fail(errRecordDeleted);
        }
    }
    row_.forget();
    row_.position().place(static_cast<std::int64_t>(*row));
}

void RowCursor::FindFirst(std::string_view criterion) {
    const std::optional<std::size_t> row = rows_.findRow(criterion);
    noMatch_ = !row.has_value();
    if (!row) {
        return;
    }
    row_.position().place(static_cast<std::int64_t>(*row));
    row_.forget();
}

}  // namespace dao
