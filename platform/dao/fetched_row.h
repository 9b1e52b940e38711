#pragma once

#include "platform/dao/row_position.h"
#include "platform/dao/row_source.h"

namespace dao {

// The row that a record set stands on: it is fetched when somebody looks at it.
class FetchedRow {
 public:
    explicit FetchedRow(RowSource& rows) : rows_(rows), row_(rows.current()) {}

    RowPosition& position() { return position_; }
    const RowPosition& position() const { return position_; }
    bool isThere() const { return position_.isOnRow(rows_.count()); }
    std::size_t number() const;  // from 0 on; 3021, 3167

    std::size_t fetch();  // where it lies among those that have been read; 3021, 3167
    void forget() { row_.forget(); }
    void distrust();  // see RowSource
    // The reference lives until the next fetch. 3021, 3167.
    const Value& value(std::size_t column);

 private:
    void fetchUnread();

    RowSource& rows_;
    CurrentRow& row_;
    RowPosition position_;
};

}  // namespace dao
