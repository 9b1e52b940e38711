#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

struct pg_result;

namespace dao::postgres {

// What the server answered: rows of values in the form in which they travel. Rows and columns count from 0.
// Each reader knows the types that it can read and fails with errTypeMismatch at any other, with
// errInvalidUseOfNull at a Null, so that nothing is ever taken for something it is not. What it hands out as
// a view or a span lies within the answer, and is good as long as this is.
class Result {
 public:
    explicit Result(pg_result* answer);  // its owner from here on
    ~Result();
    Result(Result&&) noexcept;
    Result& operator=(Result&&) noexcept;

    int rows() const;
    int columns() const;
    unsigned type(int column) const;         // the server's number for it
    std::int64_t affected() const;           // rows that were written, or read
    bool isNull(int row, int column) const;  // also where there is no such row or column

    std::int64_t integer(int row, int column) const;  // of any width
    double real(int row, int column) const;           // of either width
    bool boolean(int row, int column) const;
    std::string_view text(int row, int column) const;  // UTF-8
    std::span<const char> bytes(int row, int column) const;
    std::vector<std::int64_t> integers(int row, int column) const;  // an array; a Null within it fails
    // An array of row keys to the end of `out`; a Null within it becomes `none`. The type of a shop's own
    // column is not looked into: of those, ask for whole numbers only.
    void appendKeys(int row, int column, std::int64_t none, std::vector<std::int64_t>& out) const;
    // A row's key, of a row and a column that there are. Like appendKeys it does not look into the column's
    // type; a Null fails.
    std::int64_t key(int row, int column) const;
    // As the server sent it, of a row and a column that there are; without a beginning where it is Null. For
    // those who read hundreds of thousands and have looked at the column's type.
    std::string_view raw(int row, int column) const;

 private:
    struct Clear {
        void operator()(pg_result* answer) const;
    };
    std::string_view value(int row, int column) const;

    std::unique_ptr<pg_result, Clear> answer_;
};

}  // namespace dao::postgres
