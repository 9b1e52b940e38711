#include "platform/dao/keyed_block.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "platform/dao/read_scope.h"

namespace dao {
namespace {

constexpr std::size_t kBlockRows = 512;
constexpr std::size_t kFarBlockRows = 8192;  // of a long walk where each block takes its time on the way
constexpr std::chrono::seconds kLongForABlock{3};
constexpr std::size_t kBetweenLooks = 512;  // rows, whether more of the block ahead has come in
constexpr std::size_t kSmallBlock = KeyedReader::kWholeRows;

}  // namespace

void KeyedBlock::restart(std::shared_ptr<const SmallSet> small) {
    rows_.reset(typesOf(set_.columns));
    reader_.forget();
    small_ = std::move(small);
    drop();
}

void KeyedBlock::release() noexcept {
    reader_.forget();
    small_.reset();
    drop();
}

void KeyedBlock::drop() noexcept {
    rows_.clear();
    places_.clear();
    first_ = 0;
}

bool KeyedBlock::distrust() {
    if (places_.empty()) {
        return false;
    }
    if (!version_) {
        drop();
        return true;
    }
    if (version_ != set_.file().store().rows().dataVersion()) {
        drop();
        set_.file().touch();
    }
    return false;
}

std::optional<std::size_t> KeyedBlock::fetch(std::size_t row) {
    if (generation_ != set_.file().generation()) {
        drop();
    }
    if (!holds(row)) {
        loadOnTheWay(row);
    } else if (row % kBetweenLooks == 0) {
        reader_.takeIn();
    }
    lastFetched_ = row;
    const std::size_t place = places_[row - first_];
    return place == KeyedReader::kMissing ? std::nullopt : std::optional(place);
}

// Whoever asked nothing else on the way through a block will hardly do so on the way through the next one.
// One who takes long over it is a person with a list, who may stop anywhere: a server that cannot get rid of
// what it was asked for ends the connection.
void KeyedBlock::loadOnTheWay(std::size_t row) {
    const driver::Store& store = set_.file().store();
    const bool onwards = lastFetched_ != kNowhere && row == lastFetched_ + 1;
    const bool undisturbed = onwards && askedUpTo_ == store.roundTrips() &&
                             std::chrono::steady_clock::now() - loadedAt_ < kLongForABlock;
    const RowRun run = ahead(row);
    load(run);
    if (undisturbed && run.rows == kFarBlockRows) {
        const std::size_t next = run.first + run.rows;
        reader_.askAhead({next, std::min(kFarBlockRows, set_.keys.size() - next)});
    }
    askedUpTo_ = store.roundTrips();
    loadedAt_ = std::chrono::steady_clock::now();
}

bool KeyedBlock::fetchAlone(std::size_t row) {
    load({row, 1});
    return places_.front() != KeyedReader::kMissing;
}

void KeyedBlock::keep(std::size_t row, RowBlock&& read) {
    drop();
    rows_ = std::move(read);
    places_.push_back(0);
    first_ = row;
    generation_ = set_.file().generation();
    version_.reset();
}

void KeyedBlock::noteWritten(std::size_t row) {
    written_ = {row, set_.file().generation(), set_.file().store().roundTrips()};
}

bool KeyedBlock::wasJustWritten(std::size_t row) const {
    const driver::Store& store = set_.file().store();
    return store.isFar() && row == written_.row && set_.file().generation() == written_.generation &&
           store.roundTrips() == written_.asked;
}

RowRun KeyedBlock::ahead(std::size_t row) const {
    const bool onwards = lastFetched_ != kNowhere && row == lastFetched_ + 1;
    const bool backwards = lastFetched_ != kNowhere && row + 1 == lastFetched_;
    const std::size_t wanted = onwards || backwards ? nextBlock() : 1;
    const std::size_t first = backwards ? row - std::min(row, wanted - 1) : row;
    return {first, std::min(wanted, set_.keys.size() - first)};
}

// The longer a walk has become, the more rows are fetched ahead of it.
std::size_t KeyedBlock::nextBlock() const {
    if (places_.size() >= kBlockRows && set_.file().store().isFar()) {
        return kFarBlockRows;
    }
    return places_.size() >= kSmallBlock ? kBlockRows : kSmallBlock;
}

// One row is one statement, which sees one state by itself. Where asking takes its time its version is not
// asked for either: whoever distrusts it fetches it again.
void KeyedBlock::load(const RowRun& run) {
    OpenFile& from = set_.file();
    drop();
    const bool alone = run.rows == 1 && from.store().isFar();
    std::optional<ReadScope> scope;
    if (!alone) {
        scope.emplace(from.store());
    }
    generation_ = from.generation();
    try {
        if (!readSmall(run)) {
            reader_.read(run, rows_, places_);
            version_ = alone ? std::nullopt : std::optional(from.store().rows().dataVersion());
        }
    } catch (...) {
        drop();
        throw;
    }
    first_ = run.first;
}

// False where the set is no small one, or somebody has written since it was opened.
bool KeyedBlock::readSmall(const RowRun& run) {
    if (small_ == nullptr) {
        return false;
    }
    const std::int64_t version = set_.file().store().rows().dataVersion();
    if (!small_->stand(generation_, version)) {
        small_.reset();
        return false;
    }
    version_ = version;
    rows_.append(small_->rows(), run.first, run.rows, reader_.readsAskedAlone(run) ? &asked_ : nullptr);
    places_.resize(run.rows);
    std::iota(places_.begin(), places_.end(), 0);
    return true;
}

}  // namespace dao
