#include "platform/dao/keyed_block.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "platform/dao/read_scope.h"

namespace dao {
namespace {

constexpr std::size_t kBetweenLooks = 512;  // rows, whether more of the block ahead has come in

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
    pace_.fetched(row);
    const std::size_t place = places_[row - first_];
    return place == KeyedReader::kMissing ? std::nullopt : std::optional(place);
}

// Whoever asked nothing else on the way through a block will hardly do so on the way through the next one.
// One who takes long over it is a person with a list, who may stop anywhere: a server that cannot get rid of
// what it was asked for ends the connection.
void KeyedBlock::loadOnTheWay(std::size_t row) {
    const driver::Store& store = set_.file().store();
    const bool undisturbed = pace_.isUndisturbed(row, store);
    const RowRun run = pace_.ahead(row, set_.keys.size(), places_.size(), store);
    load(run);
    if (undisturbed && run.rows == WalkPace::kFarBlockRows) {
        const std::size_t next = run.first + run.rows;
        reader_.askAhead({next, std::min(run.rows, set_.keys.size() - next)});
    }
    pace_.noteLoaded(store);
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
