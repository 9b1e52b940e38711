#pragma once

#include <string>

#include "platform/dao/store_kind.h"

namespace dao {

// The kind of what stands at the path; that of a file where nothing does.
const StoreKind& kindOf(const std::string& path);

}  // namespace dao
