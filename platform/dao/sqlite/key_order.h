#pragma once

#include <sqlcipher/sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dao::driver {

// A statement for rows in the order of their keys reads "SELECT dao_sorted(N, 'P P ...', 'T', A, B, ...) FROM
// ...": its first N columns are the keys, those at the places P, from 0, are what is asked for. It goes
// through the rows of the table T whose row keys are between ?1 and ?2, and hands them to the gatherer,
// behind N, the places and T. The store would sort whole records, each made up and read again.
struct SortedColumns {
    static constexpr std::string_view kHead = "SELECT dao_sorted(";
    static constexpr int kBefore = 3;  // N, the places, the table

    // Nothing is asked for where the statement reads otherwise.
    static SortedColumns of(std::string_view statement);

    std::size_t keys = 0;
    std::vector<int> shown;
    std::string table;  // as a statement names it
};

// The keys of rows, and the order that these put the rows in.
class KeyOrder {
 public:
    explicit KeyOrder(std::size_t keys) : stride_(keys) {}

    // False, and nothing taken, where one of them is Null.
    bool add(sqlite3_value** keys);
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

}  // namespace dao::driver
