#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace dao {

// Cells of rows one behind the other, eight bytes each and what these are.
class PackedCells {
 public:
    enum class Kind : std::uint8_t { Null, Unread, Integer, Real, Text };

    Kind kind(std::size_t cell) const { return kinds_[cell]; }
    std::uint64_t slot(std::size_t cell) const { return slots_[cell]; }

    void expect(std::size_t cells);
    // The next `count` cells go there, each over what was there before.
    void startAt(std::size_t cell, std::size_t count) {
        next_ = cell;
        if (cell + count > slots_.size()) {
            makeRoom(cell, count);
        }
    }
    void put(Kind kind, std::uint64_t slot) {
        kinds_[next_] = kind;
        slots_[next_++] = slot;
    }
    // Of rows of `columns` cells from the row `first` on: `order` tells of each the place where it stood,
    // from 0.
    void reorder(std::size_t columns, std::size_t first, std::span<const std::uint32_t> order);

 private:
    void makeRoom(std::size_t cell, std::size_t count);

    // With some room behind what is filled, so that not every row asks for its own.
    std::vector<std::uint64_t> slots_;
    std::vector<Kind> kinds_;
    std::size_t next_ = 0;  // the cell that is filled next
};

}  // namespace dao
