#pragma once

#include <string>

namespace dao::postgres {

// What makes an empty database a shop without tables: the schema "shop" for them, and in the schema "dao"
// what the engine keeps for itself. One script, to be run in a transaction. Until finishShop it counts as
// unfinished.
std::string shopScript();
std::string finishShop();

}  // namespace dao::postgres
