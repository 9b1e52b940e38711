#pragma once

#include "platform/dao/store_kind.h"

namespace dao {

// Shops on a server, found by signposts. Copies between a server and a file are not its own: see moving.h.
const StoreKind& serverKind();

}  // namespace dao
