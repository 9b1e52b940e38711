#pragma once

#include <string>
#include <vector>

#include "exchange/sheet_rows.h"

namespace exchange {

// The rows that hold anything, of a CSV file, or of the first sheet of a workbook (.xlsx, .ods). CSV may be
// parted by semicolons, commas or tabs, and be UTF-8, UTF-16 with its mark, or Windows-1250. Throws
// std::runtime_error for what cannot be read.
std::vector<SheetRow> readSheet(const std::string& path);

}  // namespace exchange
