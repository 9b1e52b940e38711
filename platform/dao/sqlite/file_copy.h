#pragma once

#include "platform/dao/sqlite/store.h"

namespace dao::driver {

// All that the store holds goes into a new file. The store was opened with `create`, which an attached file
// takes over.
void copyInto(SqliteStore& store, const OpenRequest& target);

}  // namespace dao::driver
