#include "platform/dao/sole_use.h"

#include "platform/dao/store_kinds.h"

namespace dao {

SoleUse::SoleUse(const std::string& path) : use_(kindOf(path).enterAt(path)) {}

}  // namespace dao
