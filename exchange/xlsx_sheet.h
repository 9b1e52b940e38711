#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exchange/sheet_rows.h"

namespace exchange {

bool isXlsx(std::string_view bytes);

// The rows of the first sheet of a workbook (.xlsx), those without a cell left out. The texts of its cells
// may stand in the workbook's table of texts or within the cells, as programs differ there. Throws
// std::exception for what is no such workbook.
std::vector<SheetRow> xlsxRows(std::string_view bytes);

}  // namespace exchange
