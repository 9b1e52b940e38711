#include "platform/dao/keyset.h"

#include <algorithm>

#include "platform/dao/failure.h"
#include "platform/dao/names.h"
#include "platform/sql/ast.h"
#include "platform/sql/parser.h"

namespace dao {
namespace {

constexpr std::size_t kBlockRows = 512;
constexpr std::size_t kFarBlockRows = 8192;  // of a long walk where each block takes its time on the way
constexpr std::size_t kSmallBlock = 32;
constexpr std::size_t kBetweenLooks = 512;  // rows, whether more of the block ahead has come in
constexpr std::size_t kMoreMatches = 64;    // as many times more when a search has to go on
constexpr std::int64_t kBelowKeys = driver::kNoRow + 1;
constexpr std::int64_t kSparse = 4;  // a range with more strangers than this for each row is read row by row

std::vector<Type> typesOf(const std::vector<sql::ResultColumn>& columns) {
    std::vector<Type> types;
    types.reserve(columns.size());
    for (const sql::ResultColumn& column : columns) {
        types.push_back(column.type);
    }
    return types;
}

// A set that stands in the order of its keys: the first match that belongs to it is the one. Others that come
// before it were added since, or deleted from the set; the more of them there are, the more are read at once.
std::vector<std::int64_t> firstAmong(const KeyList& rows, const sql::WrittenSelect& find,
                                     driver::Store& store) {
    const auto statement = store.prepare(find.firstKeys);
    const int firstKey = driver::bindParameters(*statement, find.parameters);
    std::int64_t behind = kBelowKeys;
    for (std::size_t wanted = 1;; wanted *= kMoreMatches) {
        statement->bindInteger(firstKey, behind);
        statement->bindInteger(firstKey + 1, static_cast<std::int64_t>(wanted));
        std::vector<std::int64_t> keys;
        statement->readKeys(keys, 1);
        for (const std::int64_t key : keys) {
            if (rows.find({&key, 1})) {
                return {key};
            }
        }
        if (keys.size() < wanted) {
            return {};
        }
        behind = keys.back();
    }
}

}  // namespace

Keyset::Keyset(std::shared_ptr<DatabaseImpl> database, RecordsetType type, std::string statement)
    : RecordsetImpl(std::move(database), type), statement_(std::move(statement)) {
    open();
    start();
}

Keyset::Keyset(const Keyset& of)
    : RecordsetImpl(of.database_, of.type_),
      statement_(of.statement_),
      compiled_(of.compiled_),
      keys_(of.keys_) {
    generation_ = of.generation_;
    setColumns(of.columns_);
    block_.reset(typesOf(columns_));
    projection_ = {};
    isCounter_ = of.isCounter_;
}

std::shared_ptr<RecordsetImpl> Keyset::copy() const {
    return std::shared_ptr<Keyset>(new Keyset(*this));
}

void Keyset::open() {
    OpenFile& in = file();
    const ReadScope scope(in.store());
    CompiledPtr compiled = in.compile(statement_);
    if (compiled->select.sources.empty()) {
        fail(errCannotUpdate);
    }
    compiled_ = std::move(compiled);
    generation_ = &in.generation();
    keys_ = allKeys();
    setColumns(select().columns);
    block_.reset(typesOf(columns_));
    projection_ = {};
    markCounters();
    ahead_.drop();
    dropBlock();
}

KeyList Keyset::allKeys() const {
    const bool single = select().sources.size() == 1;
    if (const sql::TableInfo* whole = single ? wholeTable(*compiled_->tree, 0) : nullptr) {
        return file().store().readAllKeys(whole->name);
    }
    std::vector<std::int64_t> keys;
    readKeys(select(), keys);
    return KeyList(std::move(keys), static_cast<int>(select().sources.size()), single ? 0 : unique());
}

void Keyset::readKeys(const sql::WrittenSelect& from, std::vector<std::int64_t>& keys) const {
    const auto statement = file().store().cached(from.keys);
    driver::bindParameters(*statement, from.parameters);
    statement->readKeys(keys, static_cast<int>(from.sources.size()));
}

const sql::TableInfo* Keyset::wholeTable(const sql::Statement& tree, int depth) const {
    const bool plain = !tree.distinct && tree.where == nullptr && tree.orderBy.empty() &&
                       tree.groupBy.empty() && tree.having == nullptr && tree.from != nullptr &&
                       tree.from->kind == sql::FromNode::Kind::Table && depth <= sql::kMaxQueryDepth;
    if (!plain) {
        return nullptr;
    }
    const FileCatalog& catalog = file().catalog();
    if (const sql::TableInfo* table = catalog.findTable(tree.from->name)) {
        return table;
    }
    const sql::StatementPtr query = catalog.findQuery(tree.from->name);
    return query == nullptr ? nullptr : wholeTable(*query, depth + 1);
}

void Keyset::release() noexcept {
    ahead_.drop();
    projection_ = {};
    compiled_.reset();
    keys_ = {};
    block_.clear();
    blockRows_.clear();
}

void Keyset::dropBlock() {
    block_.clear();
    blockRows_.clear();
    blockStart_ = 0;
}

void Keyset::distrust() {
    if (!blockRows_.empty() && !blockVersion_) {
        dropBlock();
        forgetRow();
    } else if (!blockRows_.empty() && *blockVersion_ != file().store().dataVersion()) {
        dropBlock();
        file().touch();
    }
}

void Keyset::fetch(std::size_t row) {
    if (blockGeneration_ != file().generation()) {
        dropBlock();
    }
    if (!inBlock(row)) {
        const bool onwards = lastFetched_ != kMissing && row == lastFetched_ + 1;
        const bool backwards = lastFetched_ != kMissing && row + 1 == lastFetched_;
        const std::size_t wanted = onwards || backwards ? nextBlock() : 1;
        const std::size_t first = backwards ? row - std::min(row, wanted - 1) : row;
        const bool undisturbed = onwards && askedUpTo_ == file().store().roundTrips();
        loadBlock(first, std::min(wanted, count() - first));
        if (undisturbed && wanted == kFarBlockRows) {
            askAhead(first + blockRows_.size());
        }
        askedUpTo_ = file().store().roundTrips();
    } else if (row % kBetweenLooks == 0) {
        ahead_.takeIn();
    }
    lastFetched_ = row;
    current_ = blockRows_[row - blockStart_];
    if (current_ == kMissing) {
        fail(errRecordDeleted);
    }
}

// The longer a walk has become, the more rows are fetched ahead of it.
std::size_t Keyset::nextBlock() const {
    if (blockRows_.size() >= kBlockRows && file().store().isFar()) {
        return kFarBlockRows;
    }
    return blockRows_.size() >= kSmallBlock ? kBlockRows : kSmallBlock;
}

// One row is one statement, which sees one state by itself. Where asking takes its time its version is not
// asked for either: whoever distrusts it fetches it again.
void Keyset::loadBlock(std::size_t first, std::size_t rows) {
    OpenFile& from = file();
    dropBlock();
    const bool alone = rows == 1 && from.store().isFar();
    std::optional<ReadScope> scope;
    if (!alone) {
        scope.emplace(from.store());
    }
    blockGeneration_ = from.generation();
    try {
        loadRows(first, rows);
        blockVersion_ = alone ? std::nullopt : std::optional(from.store().dataVersion());
    } catch (...) {
        dropBlock();
        throw;
    }
    blockStart_ = first;
}

bool Keyset::isDense(std::size_t first, std::size_t rows) const {
    return keys_.isAscending() && rows > 1 && !select().fetchRange.empty() &&
           keys_.key(first + rows - 1, 0) - keys_.key(first, 0) < kSparse * static_cast<std::int64_t>(rows);
}

void Keyset::loadRows(std::size_t first, std::size_t rows) {
    if (isDense(first, rows)) {
        loadRange(first, rows);
    } else if (rows > 1 && !select().fetchList.empty()) {
        loadList(first, rows);
    } else {
        loadSingly(first, rows);
    }
}

std::shared_ptr<driver::Statement> Keyset::rangeStatement(std::size_t first, std::size_t rows) {
    const sql::WrittenSelect& from = rows > kSmallBlock ? projection().compiled->select : select();
    std::shared_ptr<driver::Statement> statement = file().store().cached(from.fetchRange);
    const int firstKey = driver::bindParameters(*statement, from.parameters);
    statement->bindInteger(firstKey, keys_.key(first, 0));
    statement->bindInteger(firstKey + 1, keys_.key(first + rows - 1, 0));
    return statement;
}

BlockAhead::Rows Keyset::rowsToRead(std::size_t first, std::size_t rows) const {
    return {first, rows, file().generation(), asked_};
}

// Whoever asked nothing else on the way through a block will hardly do so on the way through the next one.
void Keyset::askAhead(std::size_t first) {
    const std::size_t rows = std::min(kFarBlockRows, count() - first);
    if (rows > kSmallBlock && isDense(first, rows)) {
        ahead_.ask(rowsToRead(first, rows), rangeStatement(first, rows));
    }
}

void Keyset::loadRange(std::size_t first, std::size_t rows) {
    std::shared_ptr<driver::Statement> statement = ahead_.take(rowsToRead(first, rows));
    if (statement == nullptr) {
        statement = rangeStatement(first, rows);
    }
    const Projection* part = rows > kSmallBlock ? &projection() : nullptr;
    std::vector<std::int64_t> found;
    statement->readRows(block_, 1, &found, SIZE_MAX, part != nullptr ? &part->places : nullptr);
    std::size_t at = 0;
    for (std::size_t row = first; row < first + rows; ++row) {
        while (at < found.size() && found[at] < keys_.key(row, 0)) {
            ++at;
        }
        blockRows_.push_back(at < found.size() && found[at] == keys_.key(row, 0) ? at : kMissing);
    }
}

const Keyset::Projection& Keyset::projection() {
    if (projection_.compiled != nullptr && projection_.asked == asked_) {
        return projection_;
    }
    const sql::Statement& tree = *compiled_->tree;
    const bool canCut =
        tree.items.size() == 1 && tree.items.front().star && tree.items.front().qualifier.empty();
    Projection part{asked_, compiled_, {}};
    auto cut = std::make_shared<sql::Statement>(tree);
    cut->items.clear();
    cut->where = nullptr;  // a range of keys asks for no more than its keys
    cut->orderBy.clear();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const int place = static_cast<int>(canCut ? cut->items.size() : i);
        part.places.push_back(asked_[i] != 0 ? place : -1);
        if (asked_[i] == 0) {
            continue;
        }
        auto name = std::make_shared<sql::Expression>();
        name->kind = sql::Expression::Kind::Name;
        name->text = columns_[i].name;
        cut->items.emplace_back().expression = std::move(name);
    }
    if (canCut && !cut->items.empty()) {
        part.compiled = file().compileTree(cut);
    }
    return projection_ = std::move(part);
}

void Keyset::loadSingly(std::size_t first, std::size_t rows) {
    const auto statement = file().store().cached(select().fetch);
    const int firstKey = driver::bindParameters(*statement, select().parameters);
    for (std::size_t row = first; row < first + rows; ++row) {
        for (int source = 0; source < keys_.stride(); ++source) {
            statement->bindRowKey(firstKey + source, keys_.key(row, source));
        }
        const std::size_t at = block_.rows();
        blockRows_.push_back(statement->readRows(block_, 0, nullptr, 1) == 1 ? at : kMissing);
    }
}

void Keyset::loadList(std::size_t first, std::size_t rows) {
    const auto statement = file().store().cached(select().fetchList);
    const int firstList = driver::bindParameters(*statement, select().parameters);
    for (int source = 0; source < keys_.stride(); ++source) {
        auto keys = std::make_shared<sql::IdSet>();
        for (std::size_t row = first; row < first + rows; ++row) {
            keys->push_back(keys_.key(row, source));
        }
        statement->bindNumbers(firstList + source, std::move(keys));
    }
    std::vector<std::int64_t> places;
    statement->readRows(block_, 1, &places);
    blockRows_.assign(rows, kMissing);
    for (std::size_t at = 0; at < places.size(); ++at) {
        blockRows_[static_cast<std::size_t>(places[at] - 1)] = at;
    }
}

void Keyset::fetchUnread() {
    const std::size_t row = lastFetched_;
    loadBlock(row, 1);
    fetch(row);
}

dao::Bookmark Keyset::bookmarkOf(std::size_t row) const {
    return keys_.at(row);
}

std::optional<std::size_t> Keyset::findRow(std::string_view criterion) {
    const sql::ExpressionPtr tree = translated([&] { return sql::parseCriterion(criterion); });
    bool isKey = false;
    const std::optional<std::size_t> row = findByKey(*tree, isKey);
    return isKey ? row : findByStatement(*tree);
}

// Searches for one row's own number are what the windows do all day: the list knows where it is, and one look
// into the file tells whether it is still there.
std::optional<std::size_t> Keyset::findByKey(const sql::Expression& criterion, bool& isKey) {
    sql::KeyCriterion wanted;
    if (!sql::isKeyCriterion(criterion, wanted)) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const sql::ResultColumn& column = columns_[i];
        if (!sameName(column.name, wanted.field)) {
            continue;
        }
        if (isCounter_[i] == 0) {
            return std::nullopt;
        }
        isKey = true;
        const std::optional<std::size_t> row = keys_.findKey(wanted.number, column.source);
        if (!row) {
            return std::nullopt;
        }
        loadBlock(*row, 1);
        return blockRows_.front() == kMissing ? std::nullopt : row;
    }
    return std::nullopt;
}

// Where asking takes its time the tables are taken to be as they were when they were last looked at: whether
// they are comes with the answer. Where they are not, or anything fails, it is done again after a look at
// them.
std::optional<std::size_t> Keyset::findByStatement(const sql::Expression& criterion) {
    driver::Store& store = file().store();
    if (store.isFar() && !store.inTransaction()) {
        const ReadScope scope(store);
        if (std::optional<Met> met = metAsTablesStood(criterion)) {
            return loadFirstOf(std::move(*met));
        }
    }
    const ReadScope scope(store);
    file().catalog();
    return loadFirstOf(rowsThatMeet(criterion));
}

std::optional<Keyset::Met> Keyset::metAsTablesStood(const sql::Expression& criterion) {
    std::optional<Error> waited;
    {
        const QuietErrors quiet;
        try {
            Met met = rowsThatMeet(criterion);
            return file().standsAsRead() ? std::optional(std::move(met)) : std::nullopt;
        } catch (const Error& error) {
            if (error.Number() != errLocked) {
                return std::nullopt;  // told by the second try
            }
            waited = error;
        }
    }
    fail(waited->Number(), waited->Description());  // nobody waits for it twice
}

// All of them, or as many as it takes to know the first in the order of the set.
Keyset::Met Keyset::rowsThatMeet(const sql::Expression& criterion) {
    const CompiledPtr find = file().compileFind(*compiled_, criterion);
    Met met;
    if (keys_.isAscending() && !find->select.firstKeys.empty()) {
        if (!file().store().isFar() || !readFirst(find->select, met)) {
            met.keys = firstAmong(keys_, find->select, file().store());
        }
        return met;
    }
    const auto statement = file().store().prepare(find->select.keys);
    driver::bindParameters(*statement, find->select.parameters);
    statement->readKeys(met.keys, keys_.stride());
    return met;
}

// Whether that tells it: the first row that meets the criterion, with its key, is one of the set, or there is
// none.
bool Keyset::readFirst(const sql::WrittenSelect& find, Met& met) const {
    const auto statement = file().store().prepare(find.firstRow);
    statement->bindInteger(driver::bindParameters(*statement, find.parameters), kBelowKeys);
    met.row.reset(typesOf(columns_));
    statement->readRows(met.row, 1, &met.keys, 1);
    if (met.keys.empty() || keys_.find(met.keys)) {
        return true;
    }
    met = {};
    return false;
}

// The first of them in the order of the set.
std::optional<std::size_t> Keyset::loadFirstOf(Met&& met) {
    std::optional<std::size_t> first;
    const auto stride = static_cast<std::size_t>(keys_.stride());
    for (std::size_t at = 0; at + stride <= met.keys.size(); at += stride) {
        const std::optional<std::size_t> row = keys_.find({met.keys.data() + at, stride});
        if (row && (!first || *row < *first)) {
            first = row;
        }
    }
    if (first && met.row.rows() == 1) {
        keepRow(*first, std::move(met.row));
    } else if (first) {
        loadBlock(*first, 1);
    }
    return first;
}

// As loadBlock reads one row alone.
void Keyset::keepRow(std::size_t row, RowBlock&& read) {
    dropBlock();
    block_ = std::move(read);
    blockRows_.push_back(0);
    blockStart_ = row;
    blockGeneration_ = file().generation();
    blockVersion_.reset();
}

void Keyset::markCounters() {
    isCounter_.assign(columns_.size(), 0);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const sql::ColumnInfo* counter = columns_[i].source < 0 ? nullptr : counterOf(columns_[i].source);
        isCounter_[i] = counter != nullptr && sameName(counter->name, columns_[i].field) ? 1 : 0;
    }
}

const sql::ColumnInfo* Keyset::counterOf(int source) const {
    const sql::TableInfo* table = file().table(select().sources[static_cast<std::size_t>(source)].table);
    return table == nullptr ? nullptr : table->counter();
}

}  // namespace dao
