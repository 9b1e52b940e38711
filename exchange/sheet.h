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

// The rows that hold anything, of a CSV file, or of the first sheet of a workbook (.xlsx, .ods). CSV may be
// parted by semicolons, commas or tabs, and be UTF-8, UTF-16 with its mark, or Windows-1250. Throws
// std::runtime_error for what cannot be read.
std::vector<SheetRow> readSheet(const std::string& path);

}  // namespace exchange
