#pragma once

#include "platform/dao/store_kind.h"

namespace dao {

// Shops in encrypted files.
const StoreKind& fileKind();

}  // namespace dao
