#pragma once

#include <optional>
#include <string>
#include <vector>

// A table as suppliers send it.
namespace exchange {

struct SheetCell {
    std::string text;              // UTF-8, without blanks around it; a number's with a point
    std::optional<double> number;  // of a cell that is one, not a text that reads like one
};

struct SheetRow {
    int line = 0;  // from 1, as the program that made the table counts
    std::vector<SheetCell> cells;
};

}  // namespace exchange
