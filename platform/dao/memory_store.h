#pragma once

#include <memory>

#include "platform/dao/driver.h"

namespace dao::driver {

// A store in memory, for searching among rows that are no longer those of a shop.
std::unique_ptr<Store> openMemoryStore();

}  // namespace dao::driver
