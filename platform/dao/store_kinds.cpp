#include "platform/dao/store_kinds.h"

#include "platform/dao/sqlite/file_kind.h"

namespace dao {

const StoreKind& kindOf(const std::string&) {
    return fileKind();
}

}  // namespace dao
