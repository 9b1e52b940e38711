#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

#include "platform/dao/driver.h"
#include "platform/dao/row_run.h"

namespace dao {

// How somebody goes through the rows of a keyset: step by step or here and there, and how fast. From that it
// is told how many rows are fetched ahead.
class WalkPace {
 public:
    void end() { last_ = kNowhere; }  // the row that is fetched next is no step of a walk
    void fetched(std::size_t row) { last_ = row; }
    // Of a set of `all` rows, of which `held` are in hand: those to be read along with that one.
    RowRun ahead(std::size_t row, std::size_t all, std::size_t held, const driver::Store& store) const;

    void noteLoaded(const driver::Store& store);
    // Whether that row is the next step, nothing else has been asked since the last block was there, and that
    // was not long ago.
    bool isUndisturbed(std::size_t row, const driver::Store& store) const;

    static constexpr std::size_t kFarBlockRows = 8192;  // where each block takes its time on the way

 private:
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    bool isOnwards(std::size_t row) const { return last_ != kNowhere && row == last_ + 1; }
    bool isBackwards(std::size_t row) const { return last_ != kNowhere && row + 1 == last_; }

    std::size_t last_ = kNowhere;
    std::int64_t asked_ = -1;  // how often the store had been asked when the block was there
    std::chrono::steady_clock::time_point loaded_;
};

}  // namespace dao
