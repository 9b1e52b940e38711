#include "platform/dao/database.h"

#include <algorithm>

#include "platform/dao/database_impl.h"
#include "platform/dao/failure.h"
#include "platform/dao/names.h"
#include "platform/dao/read_scope.h"
#include "platform/dao/record_source.h"
#include "platform/dao/recordset.h"
#include "platform/dao/table_definition.h"
#include "platform/dao/translated.h"
#include "platform/sql/parser.h"

namespace dao {
namespace {

void checkNewName(OpenFile& file, std::string_view name) {
    if (name.empty() || name.size() > kLongestName ||
        name.find_first_of("[]!.`\"'") != std::string_view::npos || name.front() == ' ' ||
        sameName(name.substr(0, 4), "dao_") || sameName(name.substr(0, 7), "sqlite_")) {
        fail(errInvalidOperation, "'" + std::string(name) + "' is not a valid name.");
    }
    if (file.table(name) != nullptr || file.store().storedQueries().queryVersion(name) != 0) {
        fail(errObjectExists, "Object '" + std::string(name) + "' already exists.");
    }
}

const sql::TableInfo& neededTable(OpenFile& file, std::string_view name) {
    const sql::TableInfo* table = file.table(name);
    if (table == nullptr) {
        fail(errItemNotFound);
    }
    return *table;
}

const sql::ColumnInfo& neededField(const sql::TableInfo& table, std::string_view name) {
    const int index = table.indexOf(name);
    if (index < 0) {
        fail(errItemNotFound);
    }
    return table.columns[static_cast<std::size_t>(index)];
}

DatabaseImpl& opened(const std::shared_ptr<DatabaseImpl>& impl) {
    if (impl == nullptr) {
        fail(errObjectClosed);
    }
    return *impl;
}

}  // namespace

const std::string& Database::Name() const {
    return opened(impl_).name();
}

Recordset Database::OpenRecordset(std::string_view source, RecordsetType type) {
    opened(impl_);
    return Recordset(openRecords(impl_, source, type));
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
    if (impl_ != nullptr) {
        impl_->close();
    }
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
    file.transaction().write([&] {
        checkNewName(file, name);
        file.translator().writeQuery(name, text, tree);
    });
    return QueryDef(impl_, std::string(name));
}

void Database::CreateRelation(const Relation& relation) {
    OpenFile& file = opened(impl_).writableFile();
    file.transaction().write([&] {
        const sql::TableInfo& one = neededTable(file, relation.table);
        const sql::TableInfo& many = neededTable(file, relation.foreignTable);
        Relation exact{one.name, neededField(one, relation.field).name, many.name,
                       neededField(many, relation.foreignField).name, relation.cascadeDelete};
        file.store().definitions().createRelation(exact);
    });
}

std::vector<Relation> Database::Relations() const {
    return opened(impl_).file().store().definitions().relations();
}

void Database::CreateIndex(std::string_view table, std::string_view field, bool unique) {
    OpenFile& file = opened(impl_).writableFile();
    file.transaction().write([&] {
        const sql::TableInfo& info = neededTable(file, table);
        file.store().definitions().createIndex(info.name, neededField(info, field).name, unique);
    });
}

int Database::Form() const {
    return opened(impl_).file().store().definitions().form();
}

void Database::setForm(int form) {
    OpenFile& file = opened(impl_).writableFile();
    file.transaction().write([&] { file.store().definitions().setForm(form); });
}

std::string QueryDef::SQL() const {
    std::optional<std::string> text = opened(db_).file().store().storedQueries().queryText(name_);
    if (!text) {
        fail(errItemNotFound);
    }
    return std::move(*text);
}

void QueryDef::setSQL(const std::string& text) {
    OpenFile& file = opened(db_).writableFile();
    const sql::StatementPtr tree = translated([&] { return sql::parse(text); });
    file.transaction().write([&] {
        if (file.store().storedQueries().queryVersion(name_) == 0) {
            fail(errItemNotFound);
        }
        file.translator().writeQuery(name_, text, tree);
    });
}

int QueryDefsCollection::Count() const {
    return static_cast<int>(opened(db_).file().store().storedQueries().queries().size());
}

QueryDef QueryDefsCollection::operator[](int index) const {
    const auto queries = opened(db_).file().store().storedQueries().queries();
    if (index < 0 || index >= static_cast<int>(queries.size())) {
        fail(errItemNotFound);
    }
    return QueryDef(db_, queries[static_cast<std::size_t>(index)].name);
}

QueryDef QueryDefsCollection::operator[](std::string_view name) const {
    driver::Store& store = opened(db_).file().store();
    const ReadScope scope(store);
    const std::int64_t version = store.storedQueries().queryVersion(name);
    for (const driver::StoredQueryRow& query : store.storedQueries().queries()) {
        if (version != 0 && query.version == version) {
            return QueryDef(db_, query.name);
        }
    }
    fail(errItemNotFound);
}

void QueryDefsCollection::Delete(std::string_view name) {
    OpenFile& file = opened(db_).writableFile();
    file.transaction().write([&] {
        if (!file.store().storedQueries().dropQuery(name)) {
            fail(errItemNotFound);
        }
    });
}

int TableDefsCollection::Count() const {
    return static_cast<int>(opened(db_).file().catalog().tables().size());
}

TableDef TableDefsCollection::operator[](int index) const {
    const std::vector<sql::TableInfo>& tables = opened(db_).file().catalog().tables();
    if (index < 0 || index >= static_cast<int>(tables.size())) {
        fail(errItemNotFound);
    }
    return definitionOf(tables[static_cast<std::size_t>(index)]);
}

TableDef TableDefsCollection::operator[](std::string_view name) const {
    return definitionOf(neededTable(opened(db_).file(), name));
}

void TableDefsCollection::Append(const TableDef& table) {
    OpenFile& file = opened(db_).writableFile();
    if (table.Fields().empty()) {
        fail(errInvalidOperation, "No field defined; a table needs one at least.");
    }
    file.transaction().write([&] {
        checkNewName(file, table.Name());
        file.store().definitions().createTable(table);
    });
}

void TableDefsCollection::Delete(std::string_view name) {
    OpenFile& file = opened(db_).writableFile();
    file.transaction().write([&] { file.store().definitions().dropTable(neededTable(file, name).name); });
}

}  // namespace dao
