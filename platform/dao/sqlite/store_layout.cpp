#include "platform/dao/sqlite/store_layout.h"

#include <algorithm>

#include "platform/dao/sqlite/layout.h"

namespace dao::driver {
namespace {

constexpr std::size_t kKeyDigits = 64;  // the salt stands behind them

}  // namespace

std::string saltText(const std::string& key) {
    return key.substr(std::min(kKeyDigits, key.size()));
}

bool StoreLayout::isFresh() {
    return hasFreshLayout(connection_, definitions_, salt_);
}

std::int64_t StoreLayout::order() {
    return connection_.integerOf(kOrderPragma);
}

void StoreLayout::tellChange() {
    if (definitions_.haveChanged() && isTold()) {
        writeLayout(connection_, definitions_, salt_, order());
    }
}

}  // namespace dao::driver
