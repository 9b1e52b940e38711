#pragma once

#include <memory>

#include "platform/dao/sqlite/pages.h"
#include "platform/dao/sqlite/store.h"

namespace dao::driver {

// The pages of an open file as they lie, through the connection's own handle.
std::unique_ptr<PageSource> pagesOf(SqliteStore& store);

}  // namespace dao::driver
