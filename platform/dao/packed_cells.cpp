#include "platform/dao/packed_cells.h"

#include <algorithm>

namespace dao {

// The slots come last: by their number it is seen whether there is room, also after the memory has run out
// between the two.
void PackedCells::makeRoom(std::size_t cell, std::size_t count) {
    constexpr std::size_t kRows = 64;
    kinds_.resize(cell + kRows * count);
    slots_.resize(cell + kRows * count);
}

void PackedCells::expect(std::size_t cells) {
    slots_.reserve(cells);
    kinds_.reserve(cells);
}

void PackedCells::reorder(std::size_t columns, std::size_t first, std::span<const std::uint32_t> order) {
    const auto reordered = [&](auto& cells) {
        const auto rowOf = [&](auto& in, std::size_t row) {
            return in.begin() + static_cast<std::ptrdiff_t>((first + row) * columns);
        };
        auto before = cells;
        for (std::size_t row = 0; row < order.size(); ++row) {
            std::copy_n(rowOf(before, order[row]), columns, rowOf(cells, row));
        }
    };
    reordered(slots_);
    reordered(kinds_);
}

}  // namespace dao
