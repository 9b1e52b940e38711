#pragma once

#include <optional>
#include <string_view>

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
    const Value& value(std::size_t column) {
        // A list of a thousand services asks here ten thousand times: no more than this for a row that is
        // there.
        need();
        const Value* const known = row_.look(column);
        return known != nullptr ? *known : unread(column);
    }
    // Of the same value the text, as it lies among the rows that have been read.
    std::string_view text(std::size_t column) {
        need();
        const std::optional<std::string_view> packed = row_.lookAtText(column);
        return packed ? *packed : value(column).textRef();
    }

 private:
    void need() {
        if (!row_.isOf(position_.at())) {
            fetch();
        }
    }
    const Value& unread(std::size_t column);

    RowSource& rows_;
    CurrentRow& row_;
    RowPosition position_;
};

}  // namespace dao
