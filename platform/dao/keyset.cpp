#include "platform/dao/keyset.h"

#include "platform/dao/failure.h"
#include "platform/dao/read_scope.h"
#include "platform/sql/ast.h"
#include "platform/sql/parser.h"

namespace dao {

Keyset::Keyset(std::shared_ptr<DatabaseImpl> database, RecordsetType type, std::string statement)
    : RecordsetImpl(std::move(database), type), statement_(std::move(statement)) {
    open();
    start();
}

Keyset::Keyset(const Keyset& of)
    : RecordsetImpl(of.database_, of.type_),
      statement_(of.statement_),
      compiled_(of.compiled_),
      keys_(of.keys_),
      isCounter_(of.isCounter_) {
    row_.ageWith(of.row_.age());
    setColumns(of.columns_);
    rows_.restart(of.rows_.small());
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
    row_.ageWith(in.generation());
    const std::shared_ptr<const SmallSet> small = SmallSet::read(view_);
    keys_ = small != nullptr ? small->keys() : allKeys();
    setColumns(select().columns);
    markCounters();
    rows_.restart(small);
}

KeyList Keyset::allKeys() const {
    const bool single = select().sources.size() == 1;
    if (const sql::TableInfo* whole = single ? wholeTable(*compiled_->tree, 0) : nullptr) {
        return file().store().rows().readAllKeys(whole->name);
    }
    if (select().keySet != nullptr) {
        if (auto keys =
                file().store().rows().readKeysAmong(select().sources.front().table, *select().keySet)) {
            return std::move(*keys);
        }
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
    rows_.release();
    compiled_.reset();
    keys_ = {};
}

void Keyset::distrust() {
    if (rows_.distrust()) {
        row_.forget();
    }
}

void Keyset::fetch(std::size_t row) {
    const std::optional<std::size_t> place = rows_.fetch(row);
    if (!place) {
        fail(errRecordDeleted);
    }
    row_.lieAt(*place);
}

void Keyset::fetchUnread() {
    const std::size_t row = currentRow();
    row_.forget();
    rows_.fetchAlone(row);
    needRow();
}

void Keyset::markCounters() {
    isCounter_.assign(columns_.size(), 0);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        isCounter_[i] = view_.isCounterOf(columns_[i]) ? 1 : 0;
    }
}

}  // namespace dao
