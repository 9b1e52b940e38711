#include "platform/dao/keyed_reader.h"

#include <numeric>

#include "platform/sql/ast.h"

namespace dao {
namespace {

constexpr std::int64_t kSparse = 4;  // a range with more strangers than this for each row is read row by row
constexpr int kKeyPlace = -1;        // the last column that readRows skips

sql::ExpressionPtr named(const std::string& field) {
    auto name = std::make_shared<sql::Expression>();
    name->kind = sql::Expression::Kind::Name;
    name->text = field;
    return name;
}

bool takesAll(const sql::Statement& tree) {
    return tree.items.size() == 1 && tree.items.front().star && tree.items.front().qualifier.empty();
}

}  // namespace

void KeyedReader::read(const RowRun& run, RowBlock& block, std::vector<std::size_t>& places) {
    if (isDense(run)) {
        readRange(run, block, places);
    } else if (run.rows > 1 && !set_.select().fetchList.empty()) {
        readList(run, block, places);
    } else {
        readSingly(run, block, places);
    }
}

bool KeyedReader::isDense(const RowRun& run) const {
    const KeyList& keys = set_.keys;
    return keys.isAscending() && run.rows > 1 && !set_.select().fetchRange.empty() &&
           keys.key(run.first + run.rows - 1, 0) - keys.key(run.first, 0) <
               kSparse * static_cast<std::int64_t>(run.rows);
}

std::shared_ptr<driver::Statement> KeyedReader::rangeStatement(const RowRun& run) {
    const sql::WrittenSelect& from = run.rows > kWholeRows ? projection().compiled->select : set_.select();
    std::shared_ptr<driver::Statement> statement = set_.file().store().cached(from.fetchRange);
    const int firstKey = driver::bindParameters(*statement, from.parameters);
    statement->bindInteger(firstKey, set_.keys.key(run.first, 0));
    statement->bindInteger(firstKey + 1, set_.keys.key(run.first + run.rows - 1, 0));
    return statement;
}

BlockAhead::Rows KeyedReader::rowsToRead(const RowRun& run) const {
    return {run.first, run.rows, set_.file().generation(), asked_};
}

void KeyedReader::askAhead(const RowRun& run) {
    if (readsAskedAlone(run)) {
        ahead_.ask(rowsToRead(run), rangeStatement(run));
    }
}

void KeyedReader::readRange(const RowRun& run, RowBlock& block, std::vector<std::size_t>& places) {
    const KeyList& keys = set_.keys;
    std::shared_ptr<driver::Statement> statement = ahead_.take(rowsToRead(run));
    if (statement == nullptr) {
        statement = rangeStatement(run);
    }
    const Projection* const part = run.rows > kWholeRows ? &projection() : nullptr;
    std::vector<std::int64_t> found;
    statement->readRows(block, 1, &found, SIZE_MAX, part != nullptr ? &part->places : nullptr);
    const std::int64_t span = keys.key(run.first + run.rows - 1, 0) - keys.key(run.first, 0) + 1;
    if (found.size() == run.rows && span == static_cast<std::int64_t>(run.rows)) {
        places.resize(run.rows);  // none is missing, and none stands between them
        std::iota(places.begin(), places.end(), 0);
        return;
    }
    std::size_t at = 0;
    for (std::size_t row = run.first; row < run.first + run.rows; ++row) {
        const std::int64_t key = keys.key(row, 0);
        while (at < found.size() && found[at] < key) {
            ++at;
        }
        places.push_back(at < found.size() && found[at] == key ? at : kMissing);
    }
}

void KeyedReader::readList(const RowRun& run, RowBlock& block, std::vector<std::size_t>& places) const {
    const auto statement = set_.file().store().cached(set_.select().fetchList);
    const int firstList = driver::bindParameters(*statement, set_.select().parameters);
    for (int source = 0; source < set_.keys.stride(); ++source) {
        auto keys = std::make_shared<sql::IdSet>();
        for (std::size_t row = run.first; row < run.first + run.rows; ++row) {
            keys->push_back(set_.keys.key(row, source));
        }
        statement->bindNumbers(firstList + source, std::move(keys));
    }
    std::vector<std::int64_t> found;
    statement->readRows(block, 1, &found);
    places.assign(run.rows, kMissing);
    for (std::size_t at = 0; at < found.size(); ++at) {
        places[static_cast<std::size_t>(found[at] - 1)] = at;
    }
}

void KeyedReader::readSingly(const RowRun& run, RowBlock& block, std::vector<std::size_t>& places) const {
    const auto statement = set_.file().store().cached(set_.select().fetch);
    const int firstKey = driver::bindParameters(*statement, set_.select().parameters);
    for (std::size_t row = run.first; row < run.first + run.rows; ++row) {
        for (int source = 0; source < set_.keys.stride(); ++source) {
            statement->bindRowKey(firstKey + source, set_.keys.key(row, source));
        }
        const std::size_t at = block.rows();
        places.push_back(statement->readRows(block, 0, nullptr, 1) == 1 ? at : kMissing);
    }
}

const KeyedReader::Projection& KeyedReader::projection() {
    if (projection_.compiled == nullptr || projection_.asked != asked_) {
        projection_ = projected();
    }
    return projection_;
}

KeyedReader::Projection KeyedReader::projected() const {
    const sql::Statement& tree = *set_.compiled->tree;
    const bool canCut = takesAll(tree);
    Projection part{asked_, set_.compiled, {}};
    auto cut = std::make_shared<sql::Statement>(tree);
    cut->items.clear();
    cut->where = nullptr;  // a range of keys asks for no more than its keys
    cut->orderBy.clear();
    for (std::size_t i = 0; i < set_.columns.size(); ++i) {
        const int place = static_cast<int>(canCut ? cut->items.size() : i);
        const bool isKey = set_.isCounter[i] != 0;  // which comes in front of each row anyway
        part.places.push_back(asked_[i] == 0 ? driver::kNowhere : isKey ? kKeyPlace : place);
        if (asked_[i] != 0 && !isKey) {
            cut->items.emplace_back().expression = named(set_.columns[i].name);
        }
    }
    if (canCut && !cut->items.empty()) {
        part.compiled = set_.file().translator().compileTree(cut);
    }
    return part;
}

}  // namespace dao
