#pragma once

#include <string>

#include "exchange/new_shop.h"

namespace exchange {

// A new shop out of the files that writeTableFiles has made, with the same numbers: at `target`, where
// nothing stands yet, or in the empty server database that the signpost there leads to. The counters go on
// behind the highest number that they had given. Throws with the file, the line and the column of what cannot
// be taken, and why; nothing is made then.
void readTableFiles(const std::string& folder, const std::string& target, const dao::RowWatch& watch);

}  // namespace exchange
