#include "platform/dao/walk_pace.h"

#include <algorithm>

#include "platform/dao/keyed_reader.h"

namespace dao {
namespace {

constexpr std::size_t kBlockRows = 512;
constexpr std::size_t kSmallBlock = KeyedReader::kWholeRows;
constexpr std::chrono::seconds kLongForABlock{3};

// The longer a walk has become, the more rows are fetched ahead of it.
std::size_t nextBlock(std::size_t held, const driver::Store& store) {
    if (held >= kBlockRows && store.isFar()) {
        return WalkPace::kFarBlockRows;
    }
    return held >= kSmallBlock ? kBlockRows : kSmallBlock;
}

}  // namespace

RowRun WalkPace::ahead(std::size_t row, std::size_t all, std::size_t held, const driver::Store& store) const {
    const bool backwards = isBackwards(row);
    const std::size_t wanted = isOnwards(row) || backwards ? nextBlock(held, store) : 1;
    const std::size_t first = backwards ? row - std::min(row, wanted - 1) : row;
    return {first, std::min(wanted, all - first)};
}

void WalkPace::noteLoaded(const driver::Store& store) {
    asked_ = store.roundTrips();
    loaded_ = std::chrono::steady_clock::now();
}

bool WalkPace::isUndisturbed(std::size_t row, const driver::Store& store) const {
    return isOnwards(row) && asked_ == store.roundTrips() &&
           std::chrono::steady_clock::now() - loaded_ < kLongForABlock;
}

}  // namespace dao
