#pragma once

#include <cstdint>
#include <vector>

#include "platform/dao/keyset_view.h"

// The keys that the rows of a keyset are looked up by, as the file has them now.
namespace dao {

// Of all rows of the statement, in its order.
KeyList statementKeys(const KeysetView& set);

// Of the row that the unique source's row with that key stands in; none: it stands in no row of the set.
std::vector<std::int64_t> joinedKeys(const KeysetView& set, std::int64_t key);

}  // namespace dao
