#pragma once

#include <cstddef>
#include <cstdint>

namespace dao {

// A place among rows that are counted from 0: on one of them, before all, behind all, or in the gap that a
// deleted one has left. `rows`: how many there are now.
class RowPosition {
 public:
    std::int64_t at() const { return at_; }  // in a gap: the row behind it
    bool isGap() const { return gap_; }
    bool isBefore(std::size_t rows) const { return !gap_ && (at_ < 0 || rows == 0); }
    bool isBehind(std::size_t rows) const { return !gap_ && at_ >= static_cast<std::int64_t>(rows); }
    bool isOnRow(std::size_t rows) const {
        return !gap_ && at_ >= 0 && at_ < static_cast<std::int64_t>(rows);
    }

    void place(std::int64_t at) {
        at_ = at;
        gap_ = false;
    }
    void leaveGap() { gap_ = true; }
    void next() { place(gap_ ? at_ : at_ + 1); }
    void previous() { place(at_ - 1); }
    // By as many rows, negative: backwards; no further than behind the last or before the first.
    void move(std::int64_t by, std::size_t rows) {
        const auto size = static_cast<std::int64_t>(rows);
        const std::int64_t from = gap_ && by > 0 ? at_ - 1 : at_;
        if (by > 0) {
            place(by >= size - from ? size : from + by);
        } else {
            place(by <= -1 - from ? -1 : from + by);
        }
    }
    // There is one more row, the last of them: whoever stood behind all still does.
    void rowAppended(std::size_t rows) {
        if (!gap_ && at_ == static_cast<std::int64_t>(rows) - 1) {
            ++at_;
        }
    }

 private:
    std::int64_t at_ = 0;
    bool gap_ = false;
};

}  // namespace dao
