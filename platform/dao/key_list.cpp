#include "platform/dao/key_list.h"

#include <algorithm>
#include <numeric>

namespace dao {
namespace {

// In the mean, at the least: a run takes the room of two rows, and has to be searched for.
constexpr std::size_t kRowsOfARun = 8;

}  // namespace

KeyList::KeyList(std::int64_t first, std::size_t rows) : rows_(rows) {
    if (rows > 0) {
        runs_.push_back({first, 0});
    }
}

KeyList::KeyList(std::vector<std::int64_t> keys, int stride, int unique)
    : keys_(std::move(keys)),
      stride_(static_cast<std::size_t>(std::max(stride, 1))),
      rows_(keys_.size() / stride_),
      unique_(unique),
      ascending_(stride_ == 1 &&
                 std::adjacent_find(keys_.begin(), keys_.end(), std::greater_equal<>()) == keys_.end()) {
    tellByRuns();
}

void KeyList::tellByRuns() {
    if (!ascending_) {
        return;
    }
    std::vector<Run> runs;
    for (std::size_t row = 0; row < rows_; ++row) {
        if (row > 0 && keys_[row] == keys_[row - 1] + 1) {
            continue;
        }
        if (runs.size() > rows_ / kRowsOfARun) {
            return;
        }
        runs.push_back({keys_[row], row});
    }
    runs_ = std::move(runs);
    std::vector<std::int64_t>().swap(keys_);  // and its room
}

void KeyList::tellEach() {
    for (std::size_t run = 0; run < runs_.size(); ++run) {
        keys_.resize(endOf(run));
        std::iota(keys_.begin() + static_cast<std::ptrdiff_t>(runs_[run].row), keys_.end(), runs_[run].first);
    }
    runs_.clear();
}

std::size_t KeyList::runOf(std::size_t row) const {
    const auto behind = std::ranges::upper_bound(runs_, row, {}, &Run::row);
    return static_cast<std::size_t>(behind - runs_.begin()) - 1;
}

std::int64_t KeyList::keyInRuns(std::size_t row) const {
    const Run& run = runs_[runOf(row)];
    return run.first + static_cast<std::int64_t>(row - run.row);
}

std::optional<std::size_t> KeyList::findInRuns(std::int64_t wanted) const {
    const auto behind = std::ranges::upper_bound(runs_, wanted, {}, &Run::first);
    if (behind == runs_.begin()) {
        return std::nullopt;
    }
    const auto run = static_cast<std::size_t>(behind - runs_.begin()) - 1;
    const std::uint64_t place =
        static_cast<std::uint64_t>(wanted) - static_cast<std::uint64_t>(runs_[run].first);
    return place < endOf(run) - runs_[run].row ? std::optional(runs_[run].row + place) : std::nullopt;
}

std::vector<std::int64_t> KeyList::at(std::size_t row) const {
    std::vector<std::int64_t> keys;
    keys.reserve(stride_);
    for (int source = 0; source < stride(); ++source) {
        keys.push_back(key(row, source));
    }
    return keys;
}

bool KeyList::isAt(std::size_t row, std::span<const std::int64_t> keys) const {
    for (int source = 0; source < stride(); ++source) {
        if (key(row, source) != keys[static_cast<std::size_t>(source)]) {
            return false;
        }
    }
    return true;
}

void KeyList::buildPlaces() const {
    places_.clear();
    places_.reserve(size());
    for (std::size_t row = 0; row < size(); ++row) {
        places_.try_emplace(key(row, unique_), row);
    }
    placesKnown_ = true;
}

std::optional<std::size_t> KeyList::findKey(std::int64_t wanted, int source) const {
    if (!runs_.empty()) {
        return findInRuns(wanted);
    }
    if (ascending_) {
        const auto found = std::lower_bound(keys_.begin(), keys_.end(), wanted);
        if (found == keys_.end() || *found != wanted) {
            return std::nullopt;
        }
        return static_cast<std::size_t>(found - keys_.begin());
    }
    if (source == unique_) {
        if (!placesKnown_) {
            buildPlaces();
        }
        const auto found = places_.find(wanted);
        return found == places_.end() ? std::nullopt : std::optional(found->second);
    }
    for (std::size_t row = 0; row < size(); ++row) {
        if (key(row, source) == wanted) {
            return row;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> KeyList::find(std::span<const std::int64_t> wanted) const {
    if (wanted.size() != stride_) {
        return std::nullopt;
    }
    if (unique_ >= 0) {
        const std::optional<std::size_t> row = findKey(wanted[static_cast<std::size_t>(unique_)], unique_);
        return row && isAt(*row, wanted) ? row : std::nullopt;
    }
    for (std::size_t row = 0; row < size(); ++row) {
        if (isAt(row, wanted)) {
            return row;
        }
    }
    return std::nullopt;
}

void KeyList::append(std::span<const std::int64_t> row) {
    if (!runs_.empty() && row.front() > keyInRuns(rows_ - 1)) {
        if (row.front() != keyInRuns(rows_ - 1) + 1) {
            runs_.push_back({row.front(), rows_});
        }
        ++rows_;
        return;
    }
    tellEach();
    ascending_ = ascending_ && (keys_.empty() || keys_.back() < row.front());
    if (placesKnown_ && unique_ >= 0) {
        places_.try_emplace(row[static_cast<std::size_t>(unique_)], size());
    }
    keys_.insert(keys_.end(), row.begin(), row.end());
    ++rows_;
}

void KeyList::replace(std::size_t row, std::span<const std::int64_t> keys) {
    tellEach();
    std::ranges::copy(keys, keys_.begin() + static_cast<std::ptrdiff_t>(row * stride_));
    placesKnown_ = false;
    ascending_ = false;
}

void KeyList::erase(std::size_t row) {
    if (!runs_.empty()) {
        eraseFromRuns(row);
    } else {
        const auto first = keys_.begin() + static_cast<std::ptrdiff_t>(row * stride_);
        keys_.erase(first, first + static_cast<std::ptrdiff_t>(stride_));
        placesKnown_ = false;
    }
    --rows_;
}

// Those before the row and those behind it are a run each, where there are any.
void KeyList::eraseFromRuns(std::size_t row) {
    const std::size_t at = runOf(row);
    const Run before = runs_[at];
    const Run behind = {keyInRuns(row) + 1, row + 1};
    const bool hasBehind = behind.row < endOf(at);
    auto run = runs_.erase(runs_.begin() + static_cast<std::ptrdiff_t>(at));
    if (hasBehind) {
        run = runs_.insert(run, behind);
    }
    if (before.row < row) {
        run = runs_.insert(run, before) + 1;
    }
    std::for_each(run, runs_.end(), [](Run& later) { --later.row; });
}

}  // namespace dao
