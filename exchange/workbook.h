#pragma once

#include <string>

#include "exchange/table_files.h"

namespace exchange {

// Every table of the shop as a sheet of its name in one new workbook (.xlsx), with cells of their kind:
// numbers, amounts, dates with a format, true and false. The first line, bold, stays in sight. Null and an
// empty text are both an empty cell; a date that was left empty in the program is the day 1 of the calendar,
// as it is in the records. The file appears whole or not at all, for its user alone. Throws where something
// stands at `path`, where the disk refuses, and for a table of more rows than a sheet takes.
//
// The texts that were cut because a cell takes no more than 32,767 letters: how many.
int writeWorkbook(StillShop& shop, const std::string& path, const dao::RowWatch& watch);

}  // namespace exchange
