#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/dao/packed_cells.h"
#include "platform/dao/packed_texts.h"
#include "platform/dao/value.h"

namespace dao {

// Rows as they came from the store, packed: eight bytes a cell and the texts end to end, so that a snapshot
// of a few hundred thousand rows fits beside everything else a workstation of the shop runs.
class RowBlock {
 public:
    // `types` says what each column holds; Type::Null takes each cell as it comes.
    void reset(std::vector<Type> types);
    void clear();  // drops the rows, keeps the columns and the memory

    std::size_t rows() const { return rows_; }
    std::size_t columns() const { return types_.size(); }
    std::span<const Type> types() const { return types_; }

    // Makes room for as many rows behind those that are there.
    void expect(std::size_t rows);

    // Cells of one row, from left to right, between startRow() and endRow().
    void startRow() { cells_.startAt(rows_ * types_.size(), types_.size()); }
    void addNull() { cells_.put(Kind::Null, 0); }
    void addUnread() { cells_.put(Kind::Unread, 0); }  // left out: nobody had asked for that column
    void addInteger(std::int64_t v) { cells_.put(Kind::Integer, static_cast<std::uint64_t>(v)); }
    void addReal(double v) { cells_.put(Kind::Real, std::bit_cast<std::uint64_t>(v)); }
    void addText(std::string_view v) { cells_.put(Kind::Text, texts_.add(v)); }
    void add(const Value& value);
    void endRow() { ++rows_; }

    // Puts the rows from `first` on into another order: `order` tells of each the place where it stood, from
    // 0.
    void reorder(std::size_t first, std::span<const std::uint32_t> order);

    // Puts so many rows of another block with the same columns behind those that are there. `wanted`: of each
    // column, whether it is not left unread.
    void append(const RowBlock& from, std::size_t first, std::size_t rows,
                const std::vector<char>* wanted = nullptr);

    bool isInteger(std::size_t row, std::size_t column) const {
        return cells_.kind(at(row, column)) == Kind::Integer;
    }
    // Of a cell that is one, as the store has it.
    std::int64_t integer(std::size_t row, std::size_t column) const {
        return static_cast<std::int64_t>(cells_.slot(at(row, column)));
    }
    // The column's cells as numbers that stand in the order in which the store puts the cells, Null first.
    // Nothing where one is a text or was left unread, or whole numbers stand among others.
    std::optional<std::vector<std::int64_t>> orderOf(std::size_t column) const;
    bool isUnread(std::size_t row, std::size_t column) const {
        return cells_.kind(at(row, column)) == Kind::Unread;
    }
    // Of a text in a column of texts, as it lies here; the empty text for Null; nothing where get() gives
    // anything else.
    std::optional<std::string_view> text(std::size_t row, std::size_t column) const;
    // Reuses the memory of `out`. Throws Error 6 for a number that the column's type cannot hold.
    void get(std::size_t row, std::size_t column, Value& out) const;

 private:
    using Kind = PackedCells::Kind;

    std::size_t at(std::size_t row, std::size_t column) const { return row * types_.size() + column; }
    void putLike(const RowBlock& from, std::size_t cell);

    std::vector<Type> types_;
    PackedCells cells_;
    PackedTexts texts_;
    std::size_t rows_ = 0;
};

// What each of them holds, as RowBlock::reset takes it: columns of a result, of a table, of whatever else.
template <typename Column>
std::vector<Type> typesOf(const std::vector<Column>& columns) {
    std::vector<Type> types;
    types.reserve(columns.size());
    for (const Column& column : columns) {
        types.push_back(column.type);
    }
    return types;
}

}  // namespace dao
