#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/dao/row_age.h"
#include "platform/dao/row_block.h"

namespace dao {

// The row that a record set stands on: where it lies among those that have been read, and its values as far
// as somebody has looked at them.
class CurrentRow {
 public:
    CurrentRow() = default;
    CurrentRow(const CurrentRow&) = delete;
    CurrentRow& operator=(const CurrentRow&) = delete;

    RowBlock& block() { return block_; }  // the rows that have been read
    const RowBlock& block() const { return block_; }
    // Of each column whether it has been looked at: a long walk reads no others.
    const std::vector<char>& asked() const { return asked_; }
    std::size_t place() const { return place_; }  // in the block

    void setColumns(std::size_t count);
    RowAge& age() { return age_; }
    const RowAge& age() const { return age_; }

    // Whether the row at that position of the record set is here, and not too old.
    bool isOf(std::int64_t position) const { return fetched_ == position && age_.isAsRead(); }
    void forget() { fetched_ = kNowhere; }  // it is fetched again when it is next looked at
    void lieAt(std::size_t place) { place_ = place; }
    void come(std::int64_t position);  // it has been fetched
    void forgetCells() { ++stamp_; }

    // The value; nullptr where the row has been read without it. From now on its column counts as asked for.
    const Value* look(std::size_t column) {
        Cell& cell = cells_[column];
        if (cell.stamp == stamp_) {
            return &cell.value;
        }
        asked_[column] = 1;
        return block_.isUnread(place_, column) ? nullptr : &take(column);
    }
    // Its text; nothing where the value has to be made to know it.
    std::optional<std::string_view> lookAtText(std::size_t column) {
        asked_[column] = 1;
        return block_.text(place_, column);
    }
    const Value& take(std::size_t column) {
        Cell& cell = cells_[column];
        block_.get(place_, column, cell.value);
        cell.stamp = stamp_;
        return cell.value;
    }

 private:
    static constexpr std::int64_t kNowhere = INT64_MIN;  // no position: the one before the first row is -1

    struct Cell {
        Value value;
        std::uint64_t stamp = 0;
    };

    RowBlock block_;
    std::size_t place_ = 0;
    std::vector<char> asked_;
    std::vector<Cell> cells_;
    std::uint64_t stamp_ = 1;
    RowAge age_;
    std::int64_t fetched_ = kNowhere;  // the position whose row is here
};

}  // namespace dao
