#include "platform/dao/key_list.h"

#include <algorithm>

namespace dao {

KeyList::KeyList(std::int64_t first, std::size_t rows) : runs_(first, rows), rows_(rows) {}

KeyList::KeyList(std::vector<std::int64_t> keys, int stride, int unique)
    : keys_(std::move(keys)),
      stride_(static_cast<std::size_t>(std::max(stride, 1))),
      rows_(keys_.size() / stride_),
      unique_(unique),
      ascending_(stride_ == 1 &&
                 std::adjacent_find(keys_.begin(), keys_.end(), std::greater_equal<>()) == keys_.end()) {
    if (ascending_) {
        runs_ = KeyRuns::of(keys_);
    }
    if (!runs_.isEmpty()) {
        std::vector<std::int64_t>().swap(keys_);  // and its room
    }
}

void KeyList::tellEach() {
    if (!runs_.isEmpty()) {
        keys_ = runs_.each();
        runs_ = {};
    }
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
    if (!runs_.isEmpty()) {
        return runs_.find(wanted);
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
    if (runs_.append(row.front())) {
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
    if (!runs_.isEmpty()) {
        runs_.erase(row);
    } else {
        const auto first = keys_.begin() + static_cast<std::ptrdiff_t>(row * stride_);
        keys_.erase(first, first + static_cast<std::ptrdiff_t>(stride_));
        placesKnown_ = false;
    }
    --rows_;
}

}  // namespace dao
