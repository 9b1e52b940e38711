#include "platform/dao/snapshot.h"

#include <algorithm>

#include "platform/dao/failure.h"
#include "platform/dao/memory_store.h"
#include "platform/dao/names.h"
#include "platform/dao/read_scope.h"
#include "platform/dao/row_editing.h"
#include "platform/dao/table_definition.h"
#include "platform/dao/translated.h"
#include "platform/sql/parser.h"

namespace dao {
namespace {

constexpr std::string_view kTable = "snapshot";

// One table and nothing else.
class OneTable final : public sql::Catalog {
 public:
    explicit OneTable(sql::TableInfo table) : table_(std::move(table)) {}
    const sql::TableInfo* findTable(std::string_view name) const override {
        return sameName(name, table_.name) ? &table_ : nullptr;
    }
    sql::StatementPtr findQuery(std::string_view) const override { return nullptr; }
    const sql::TableInfo& table() const { return table_; }

 private:
    sql::TableInfo table_;
};

sql::TableInfo tableFor(const std::vector<sql::ResultColumn>& columns) {
    sql::TableInfo table;
    table.name = kTable;
    for (const sql::ResultColumn& column : columns) {
        sql::ColumnInfo info;
        info.name = column.name;
        // Two joined tables may give two fields of one name; a search by that name means the first.
        while (table.indexOf(info.name) >= 0) {
            info.name += '_';
        }
        info.type = column.type == Type::Null ? Type::Text : column.type;
        table.columns.push_back(std::move(info));
    }
    return table;
}

}  // namespace

struct Snapshot::Searchable {
    OneTable catalog;
    sql::StatementPtr all = sql::parse("SELECT * FROM snapshot");
    std::unique_ptr<driver::Store> store = driver::openMemoryStore();
};

Snapshot::Snapshot(std::shared_ptr<DatabaseImpl> database, std::string statement)
    : database_(std::move(database)), statement_(std::move(statement)) {}

Snapshot::~Snapshot() = default;

std::unique_ptr<RowSource> Snapshot::copy() const {
    auto made = std::make_unique<Snapshot>(database_, statement_);
    made->setColumns(columns_.all());
    made->row_.block() = row_.block();
    return made;
}

std::unique_ptr<RowEditing> Snapshot::editing(FetchedRow&) {
    return nullptr;
}

void Snapshot::open() {
    const ReadScope scope(database_->file().store());
    RowBlock rows;
    const CompiledPtr compiled = compileFor(rows);
    prepared(*compiled)->readRows(rows);
    setColumns(compiled->select.columns);
    row_.block() = std::move(rows);
    searchable_.reset();
}

CompiledPtr Snapshot::compileFor(RowBlock& rows) const {
    CompiledPtr compiled = database_->file().compile(statement_);
    rows.reset(typesOf(compiled->select.columns));
    return compiled;
}

std::shared_ptr<driver::Statement> Snapshot::prepared(const Compiled& compiled) const {
    std::shared_ptr<driver::Statement> statement = database_->file().store().cached(compiled.select.rows);
    driver::bindParameters(*statement, compiled.select.parameters);
    return statement;
}

void Snapshot::readBlocks(const std::function<void()>& begin, const std::function<void()>& atBlock) {
    const ReadScope scope(database_->file().store());
    const CompiledPtr compiled = compileFor(row_.block());
    setColumns(compiled->select.columns);
    begin();
    prepared(*compiled)->readBlocks(row_.block(), atBlock);
}

void Snapshot::release() noexcept {
    row_.block().clear();
    searchable_.reset();
    database_.reset();
}

std::optional<std::size_t> Snapshot::rowOf(const dao::Bookmark& place) const {
    if (place.size() != 1 || place.front() < 0 ||
        place.front() >= static_cast<std::int64_t>(row_.block().rows())) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(place.front());
}

std::optional<std::size_t> Snapshot::findNumber(std::size_t column, std::int64_t number) const {
    Value value;
    for (std::size_t row = 0; row < row_.block().rows(); ++row) {
        row_.block().get(row, column, value);
        if (!value.isNull() && value.asLong() == number) {
            return row;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> Snapshot::findRow(std::string_view criterion) {
    const sql::ExpressionPtr tree = translated([&] { return sql::parseCriterion(criterion); });
    sql::KeyCriterion wanted;
    if (sql::isKeyCriterion(*tree, wanted)) {
        const std::vector<sql::ResultColumn>& columns = columns_.all();
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (sameName(columns[i].name, wanted.field) && columns[i].type == Type::Long) {
                return findNumber(i, wanted.number);
            }
        }
    }
    if (searchable_ == nullptr) {
        makeSearchable();
    }
    driver::Store& store = *searchable_->store;
    const sql::WrittenSelect find =
        translated([&] { return store.writer().find(*searchable_->all, *tree, searchable_->catalog, 0); });
    for (std::size_t i = 0; i < find.idSets.size(); ++i) {
        store.setIdSet(static_cast<int>(i), find.idSets[i]);
    }
    std::vector<std::int64_t> keys;
    store.prepare(find.keys)->readKeys(keys, 1);
    if (keys.empty()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(*std::min_element(keys.begin(), keys.end()) - 1);
}

// The file may have changed since; a search in a snapshot must not see that. So its rows become a table in
// memory, and the search is the same statement there.
void Snapshot::makeSearchable() {
    auto made = std::make_unique<Searchable>(Searchable{.catalog = OneTable(tableFor(columns_.all()))});
    const TableDef definition = definitionOf(made->catalog.table());
    made->store->transaction().beginWrite();
    made->store->definitions().createTable(definition);
    std::vector<Value> values(columns_.all().size());
    std::vector<driver::FieldValue> fields;
    for (std::size_t i = 0; i < values.size(); ++i) {
        fields.push_back({made->catalog.table().columns[i].name, &values[i]});
    }
    for (std::size_t row = 0; row < row_.block().rows(); ++row) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            row_.block().get(row, i, values[i]);
        }
        made->store->rows().insertRow(std::string(kTable), fields);
    }
    made->store->transaction().commit();
    searchable_ = std::move(made);
}

}  // namespace dao
