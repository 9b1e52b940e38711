#include "platform/dao/database.h"

#include <algorithm>

#include "platform/dao/database_impl.h"
#include "platform/dao/failure.h"
#include "platform/dao/keyset.h"
#include "platform/dao/names.h"
#include "platform/dao/snapshot.h"
#include "platform/sql/parser.h"

namespace dao {
namespace {

constexpr std::size_t kLongestName = 64;

std::string_view bareName(std::string_view source) {
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!source.empty() && isSpace(source.front()))
        source.remove_prefix(1);
    while (!source.empty() && (isSpace(source.back()) || source.back() == ';'))
        source.remove_suffix(1);
    if (source.size() > 2 && source.front() == '[' && source.find(']') == source.size() - 1)
        source = source.substr(1, source.size() - 2);
    return source;
}

void checkNewName(OpenFile& file, std::string_view name) {
    if (name.empty() || name.size() > kLongestName ||
        name.find_first_of("[]!.`\"'") != std::string_view::npos || name.front() == ' ' ||
        sameName(name.substr(0, 4), "dao_") || sameName(name.substr(0, 7), "sqlite_"))
        fail(errInvalidOperation, "'" + std::string(name) + "' is not a valid name.");
    if (file.table(name) != nullptr || file.store().queryVersion(name) != 0)
        fail(errObjectExists, "Object '" + std::string(name) + "' already exists.");
}

const sql::TableInfo& neededTable(OpenFile& file, std::string_view name) {
    const sql::TableInfo* table = file.table(name);
    if (table == nullptr)
        fail(errItemNotFound);
    return *table;
}

const sql::ColumnInfo& neededField(const sql::TableInfo& table, std::string_view name) {
    const int index = table.indexOf(name);
    if (index < 0)
        fail(errItemNotFound);
    return table.columns[static_cast<std::size_t>(index)];
}

FieldType fieldTypeOf(const sql::ColumnInfo& column) {
    switch (column.type) {
        case Type::YesNo:
            return dbBoolean;
        case Type::Long:
            return dbLong;
        case Type::Currency:
            return dbCurrency;
        case Type::Single:
        case Type::Double:
            return dbSingle;
        case Type::Date:
            return dbDate;
        default:
            return column.size > 0 ? dbText : dbMemo;
    }
}

}  // namespace

TableDef definitionOf(const sql::TableInfo& table) {
    TableDef definition(table.name);
    for (const sql::ColumnInfo& column : table.columns)
        definition.Append({column.name, fieldTypeOf(column), column.size, column.counter});
    return definition;
}

namespace {}  // namespace

OpenFile& DatabaseImpl::file() const {
    if (file_ == nullptr)
        fail(errObjectClosed);
    return *file_;
}

OpenFile& DatabaseImpl::writableFile() const {
    OpenFile& open = file();
    if (readOnly_ || !open.store().writable())
        fail(errReadOnly);
    return open;
}

void DatabaseImpl::close() noexcept {
    for (const std::weak_ptr<RecordsetImpl>& weak : sets_) {
        if (const std::shared_ptr<RecordsetImpl> set = weak.lock())
            set->Close();
    }
    sets_.clear();
    exclusive_ = ExclusiveUse();
    file_.reset();
}

std::shared_ptr<RecordsetImpl> DatabaseImpl::openRecordset(std::string_view source, RecordsetType type) {
    OpenFile& from = file();
    const std::string_view name = bareName(source);
    const bool isTable = name.size() <= kLongestName && from.table(name) != nullptr;
    const bool isName = isTable || (name.size() <= kLongestName && from.store().queryVersion(name) != 0);
    if (type != dbOpenTable && type != dbOpenDynaset && type != dbOpenSnapshot)
        fail(errInvalidOperation);
    if (type == dbOpenTable && !isTable)
        fail(isName ? errInvalidOperation : errUnknownObject,
             isName ? std::string()
                    : "The engine can't find the input table or query '" + std::string(name) + "'.");
    if (!isName && !name.empty() && name.find_first_of(" \t\r\n(") == std::string_view::npos)
        fail(errUnknownObject, "The engine can't find the input table or query '" + std::string(name) + "'.");
    std::string statement = isName ? "SELECT * FROM [" + std::string(name) + ']' : std::string(source);

    std::shared_ptr<RecordsetImpl> set;
    if (type == dbOpenSnapshot || from.compile(statement)->select.sources.empty())
        set = std::make_shared<Snapshot>(shared_from_this(), type, std::move(statement));
    else
        set = std::make_shared<Keyset>(shared_from_this(), type, std::move(statement));
    keep(set);
    return set;
}

void DatabaseImpl::keep(const std::shared_ptr<RecordsetImpl>& set) {
    std::erase_if(sets_, [](const auto& weak) { return weak.expired(); });
    sets_.push_back(set);
}

namespace {

DatabaseImpl& opened(const std::shared_ptr<DatabaseImpl>& impl) {
    if (impl == nullptr)
        fail(errObjectClosed);
    return *impl;
}

}  // namespace

const std::string& Database::Name() const {
    return opened(impl_).name();
}

Recordset Database::OpenRecordset(std::string_view source, RecordsetType type) {
    return Recordset(opened(impl_).openRecordset(source, type));
}

void Database::Execute(std::string_view statement, int) {
    DatabaseImpl& impl = opened(impl_);
    impl.recordsAffected = 0;
    impl.recordsAffected = impl.writableFile().execute(statement);
}

std::int64_t Database::RecordsAffected() const {
    return opened(impl_).recordsAffected;
}

void Database::Close() {
    if (impl_ != nullptr)
        impl_->close();
    impl_.reset();
}

QueryDefsCollection Database::QueryDefs() const {
    opened(impl_).file();
    return QueryDefsCollection(impl_);
}

TableDefsCollection Database::TableDefs() const {
    opened(impl_).file();
    return TableDefsCollection(impl_);
}

QueryDef Database::CreateQueryDef(std::string_view name, const std::string& text) {
    OpenFile& file = opened(impl_).writableFile();
    const sql::StatementPtr tree = translated([&] { return sql::parse(text); });
    file.write([&] {
        checkNewName(file, name);
        file.writeQuery(name, text, tree);
    });
    return QueryDef(impl_, std::string(name));
}

void Database::CreateRelation(const Relation& relation) {
    OpenFile& file = opened(impl_).writableFile();
    file.write([&] {
        const sql::TableInfo& one = neededTable(file, relation.table);
        const sql::TableInfo& many = neededTable(file, relation.foreignTable);
        Relation exact{one.name, neededField(one, relation.field).name, many.name,
                       neededField(many, relation.foreignField).name, relation.cascadeDelete};
        file.store().createRelation(exact);
    });
}

std::vector<Relation> Database::Relations() const {
    return opened(impl_).file().store().relations();
}

void Database::CreateIndex(std::string_view table, std::string_view field, bool unique) {
    OpenFile& file = opened(impl_).writableFile();
    file.write([&] {
        const sql::TableInfo& info = neededTable(file, table);
        file.store().createIndex(info.name, neededField(info, field).name, unique);
    });
}

int Database::Form() const {
    return opened(impl_).file().store().form();
}

void Database::setForm(int form) {
    OpenFile& file = opened(impl_).writableFile();
    file.write([&] { file.store().setForm(form); });
}

std::string QueryDef::SQL() const {
    std::optional<std::string> text = opened(db_).file().store().queryText(name_);
    if (!text)
        fail(errItemNotFound);
    return std::move(*text);
}

void QueryDef::setSQL(const std::string& text) {
    OpenFile& file = opened(db_).writableFile();
    const sql::StatementPtr tree = translated([&] { return sql::parse(text); });
    file.write([&] {
        if (file.store().queryVersion(name_) == 0)
            fail(errItemNotFound);
        file.writeQuery(name_, text, tree);
    });
}

int QueryDefsCollection::Count() const {
    return static_cast<int>(opened(db_).file().store().queries().size());
}

QueryDef QueryDefsCollection::operator[](int index) const {
    const auto queries = opened(db_).file().store().queries();
    if (index < 0 || index >= static_cast<int>(queries.size()))
        fail(errItemNotFound);
    return QueryDef(db_, queries[static_cast<std::size_t>(index)].name);
}

QueryDef QueryDefsCollection::operator[](std::string_view name) const {
    driver::Store& store = opened(db_).file().store();
    const ReadScope scope(store);
    const std::int64_t version = store.queryVersion(name);
    for (const driver::StoredQueryRow& query : store.queries()) {
        if (version != 0 && query.version == version)
            return QueryDef(db_, query.name);
    }
    fail(errItemNotFound);
}

void QueryDefsCollection::Delete(std::string_view name) {
    OpenFile& file = opened(db_).writableFile();
    file.write([&] {
        if (!file.store().dropQuery(name))
            fail(errItemNotFound);
    });
}

int TableDefsCollection::Count() const {
    return static_cast<int>(opened(db_).file().catalog().tables().size());
}

TableDef TableDefsCollection::operator[](int index) const {
    const std::vector<sql::TableInfo>& tables = opened(db_).file().catalog().tables();
    if (index < 0 || index >= static_cast<int>(tables.size()))
        fail(errItemNotFound);
    return definitionOf(tables[static_cast<std::size_t>(index)]);
}

TableDef TableDefsCollection::operator[](std::string_view name) const {
    return definitionOf(neededTable(opened(db_).file(), name));
}

void TableDefsCollection::Append(const TableDef& table) {
    OpenFile& file = opened(db_).writableFile();
    if (table.Fields().empty())
        fail(errInvalidOperation, "No field defined; a table needs one at least.");
    file.write([&] {
        checkNewName(file, table.Name());
        file.store().createTable(table);
    });
}

void TableDefsCollection::Delete(std::string_view name) {
    OpenFile& file = opened(db_).writableFile();
    file.write([&] { file.store().dropTable(neededTable(file, name).name); });
}

}  // namespace dao
