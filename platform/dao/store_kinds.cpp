#include "platform/dao/store_kinds.h"

#include "platform/dao/postgres/server_kind.h"
#include "platform/dao/sqlite/file_kind.h"

namespace dao {

const StoreKind& kindOf(const std::string& path) {
    return serverKind().owns(path) ? serverKind() : fileKind();
}

}  // namespace dao
