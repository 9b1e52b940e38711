#pragma once

#include <cstdint>
#include <vector>

namespace dao {

// The keys of rows, and the order that these put the rows in.
class KeyOrder {
 public:
    explicit KeyOrder(std::size_t keys) : stride_(keys) {}

    // The keys of a row, from the one that decides first to the last.
    void put(std::int64_t key) { keys_.push_back(key); }
    // The keys of all rows in one column. Those of the other columns are 0 until they are set too.
    void setColumn(std::size_t column, const std::vector<std::int64_t>& keys);
    void takeBack();                     // what has been put of a row that has not got all of them
    void append(const KeyOrder& other);  // as if its rows had been added behind

    std::size_t rows() const { return keys_.size() / stride_; }
    std::int64_t key(std::size_t row, std::size_t column) const { return keys_[row * stride_ + column]; }
    // The rows, by the places they were added at.
    std::vector<std::uint32_t> order() const;

 private:
    void sortBy(std::size_t column, std::vector<std::uint32_t>& order) const;
    void countBy(std::size_t column, std::int64_t first, std::size_t span,
                 std::vector<std::uint32_t>& order) const;

    std::size_t stride_;
    std::vector<std::int64_t> keys_;
};

}  // namespace dao
