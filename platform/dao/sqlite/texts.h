#pragma once

#include <vector>

#include "platform/dao/driver.h"

namespace dao::driver {

// The first column of all rows.
std::vector<Value> textsOf(Statement& statement);

}  // namespace dao::driver
