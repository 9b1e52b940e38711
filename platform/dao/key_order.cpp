#include "platform/dao/key_order.h"

#include <algorithm>
#include <numeric>

#include "platform/sql/close_numbers.h"

namespace dao {

void KeyOrder::setColumn(std::size_t column, const std::vector<std::int64_t>& keys) {
    keys_.resize(keys.size() * stride_);
    for (std::size_t row = 0; row < keys.size(); ++row) {
        keys_[row * stride_ + column] = keys[row];
    }
}

void KeyOrder::append(const KeyOrder& other) {
    keys_.insert(keys_.end(), other.keys_.begin(), other.keys_.end());
}

void KeyOrder::takeBack() {
    keys_.resize(keys_.size() - keys_.size() % stride_);
}

// By the last key first, and each time those that are alike stay as they stood.
std::vector<std::uint32_t> KeyOrder::order() const {
    std::vector<std::uint32_t> order(rows());
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t column = stride_; column-- > 0;) {
        sortBy(column, order);
    }
    return order;
}

// Numbers that lie close together, as a counter gives them, are counted; others are compared.
void KeyOrder::sortBy(std::size_t column, std::vector<std::uint32_t>& order) const {
    constexpr std::uint64_t kSparse = 16;  // places for each row
    const auto less = [&](std::uint32_t a, std::uint32_t b) { return key(a, column) < key(b, column); };
    if (std::is_sorted(order.begin(), order.end(), less)) {
        return;
    }
    const auto [lowest, highest] = std::minmax_element(order.begin(), order.end(), less);
    const std::int64_t first = key(*lowest, column);
    const std::int64_t last = key(*highest, column);
    if (sql::areClose(first, last, rows(), kSparse)) {
        countBy(column, first, sql::spanOf(first, last) + 1, order);
    } else {
        std::stable_sort(order.begin(), order.end(), less);
    }
}

void KeyOrder::countBy(std::size_t column, std::int64_t first, std::size_t span,
                       std::vector<std::uint32_t>& order) const {
    std::vector<std::uint32_t> places(span + 1, 0);
    const auto numberOf = [&](std::uint32_t row) {
        return static_cast<std::size_t>(key(row, column) - first);
    };
    for (const std::uint32_t row : order) {
        ++places[numberOf(row) + 1];
    }
    std::partial_sum(places.begin(), places.end(), places.begin());
    std::vector<std::uint32_t> sorted(order.size());
    for (const std::uint32_t row : order) {
        sorted[places[numberOf(row)]++] = row;
    }
    order = std::move(sorted);
}

}  // namespace dao
