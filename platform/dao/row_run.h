#pragma once

#include <cstddef>

namespace dao {

// Rows of a set that follow each other.
struct RowRun {
    std::size_t first = 0;
    std::size_t rows = 0;
};

}  // namespace dao
