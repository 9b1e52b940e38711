#pragma once

#include <cstdint>
#include <string_view>

#include "platform/dao/fetched_row.h"

namespace dao {

// The moves of a record set among its rows, under the names that everybody knows them by; see Recordset for
// what each of them fails with.
class RowCursor {
 public:
    RowCursor(RowSource& rows, FetchedRow& row) : rows_(rows), row_(row) {}

    void start();  // on the first row of a set that has just been opened
    bool BOF() const { return row_.position().isBefore(rows_.count()); }
    bool EOF() const { return row_.position().isBehind(rows_.count()); }
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    void Move(std::int64_t rows);

    std::int64_t RecordCount() const { return static_cast<std::int64_t>(rows_.count()); }
    std::int64_t AbsolutePosition() const { return row_.isThere() ? row_.position().at() : -1; }
    void setAbsolutePosition(std::int64_t position);
    dao::Bookmark Bookmark() const { return rows_.bookmarkOf(row_.number()); }
    void setBookmark(const dao::Bookmark& place);

    void FindFirst(std::string_view criterion);
    bool NoMatch() const { return noMatch_; }

 private:
    void needRows() const;

    RowSource& rows_;
    FetchedRow& row_;
    bool noMatch_ = false;
};

}  // namespace dao
