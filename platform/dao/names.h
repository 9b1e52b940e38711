#pragma once

#include <cstddef>

#include "platform/sql/types.h"

namespace dao {

inline constexpr std::size_t kLongestName = 64;  // of a table or query, bytes

using sql::sameName;

}  // namespace dao
