#pragma once

#include <string>

#include "platform/dao/row_state.h"

namespace exchange {

class StillShop;

// The file beside those of the tables: which number each counter has come to, also with rows that are gone.
inline constexpr char kCountersFile[] = "Counters.csv";

// Every table of the shop as a file of its name in a new folder, TABLE.csv: UTF-8, a line of the fields'
// names, then a row a line (exchange/csv.h, exchange/plain_values.h). A field that is Null is empty, an empty
// text stands between quotes. The folder appears whole or not at all, for its user alone. Throws where
// something stands at `folder`, where the disk refuses, and for a text that is no UTF-8, with its place.
void writeTableFiles(StillShop& shop, const std::string& folder, const dao::RowWatch& watch);

}  // namespace exchange
