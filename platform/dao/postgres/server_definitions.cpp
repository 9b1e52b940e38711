#include "platform/dao/postgres/server_definitions.h"

#include <algorithm>
#include <charconv>

#include "platform/dao/failure.h"
#include "platform/dao/names.h"
#include "platform/dao/postgres/quoting.h"
#include "platform/dao/postgres/server_functions.h"
#include "platform/dao/table_definition.h"
#include "platform/text/order.h"

namespace dao::postgres {
namespace {

// A column's domain tells the engine's type by its name; that of a text with a limit has the number of
// characters behind it.
struct TypeName {
    dao::Type type;
    std::string_view domain;
};

constexpr TypeName kTypes[] = {
    {dao::Type::YesNo, "yesno"},       {dao::Type::Long, "long"}, {dao::Type::Single, "single"},
    {dao::Type::Currency, "currency"}, {dao::Type::Date, "date"}, {dao::Type::Text, "text"},
};
constexpr std::string_view kLimitedText = "text_";

// What the server cuts off a name without a word.
constexpr std::size_t kLongestName = 63;

void readType(std::string_view domain, sql::ColumnInfo& column) {
    if (domain.starts_with(kLimitedText)) {
        const std::string_view size = domain.substr(kLimitedText.size());
        column.type = dao::Type::Text;
        std::from_chars(size.data(), size.data() + size.size(), column.size);
        return;
    }
    for (const TypeName& each : kTypes) {
        if (each.domain == domain) {
            column.type = each.type;
        }
    }
}

std::string domainOf(const sql::ColumnInfo& column) {
    if (column.type == dao::Type::Text && column.size > 0) {
        return textDomain(column.size);
    }
    for (const TypeName& each : kTypes) {
        if (each.type == column.type) {
            return "dao." + std::string(each.domain);
        }
    }
    fail(errInvalidOperation, "Invalid field data type.");
}

void needShortName(std::string_view name) {
    if (name.size() > kLongestName) {
        fail(errInvalidOperation, "The name '" + std::string(name) + "' is too long for the server.");
    }
}

std::string columnText(const sql::ColumnInfo& column, const std::string& counter) {
    std::string text = quotedName(column.name) + ' ' + domainOf(column);
    if (column.counter) {
        return text + " PRIMARY KEY DEFAULT nextval(" + quotedText(counter) + ')';
    }
    return column.type == dao::Type::YesNo ? text + " DEFAULT 0" : text;
}

}  // namespace

std::vector<sql::TableInfo> ServerDefinitions::tables() {
    const Result columns = session_.run(
        "SELECT c.relname, a.attname, t.typname,"
        " coalesce(pg_get_expr(d.adbin, d.adrelid) LIKE 'nextval(%', false)"
        " FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace"
        " JOIN pg_attribute AS a ON a.attrelid = c.oid JOIN pg_type AS t ON t.oid = a.atttypid"
        " LEFT JOIN pg_attrdef AS d ON d.adrelid = c.oid AND d.adnum = a.attnum"
        " WHERE n.nspname = 'shop' AND c.relkind = 'r' AND a.attnum > 0 AND NOT a.attisdropped"
        " ORDER BY c.oid, a.attnum");
    std::vector<sql::TableInfo> tables;
    for (int row = 0; row < columns.rows(); ++row) {
        const std::string_view table = columns.text(row, 0);
        if (tables.empty() || tables.back().name != table) {
            tables.emplace_back().name = table;
        }
        sql::ColumnInfo column;
        column.name = columns.text(row, 1);
        if (column.name == kHiddenKey) {
            continue;
        }
        readType(columns.text(row, 2), column);
        column.counter = columns.boolean(row, 3);
        tables.back().columns.push_back(std::move(column));
    }
    std::sort(tables.begin(), tables.end(), [](const sql::TableInfo& a, const sql::TableInfo& b) {
        return alphabet::compare(a.name, b.name) < 0;
    });
    return tables;
}

// The engine asks for the schema's version before each statement; a look at every row would be too much.
ServerDefinitions::Version ServerDefinitions::describedAt() const {
    return {session_.newestSchema(), changes_};
}

int ServerDefinitions::form() {
    return static_cast<int>(session_.run("SELECT form FROM dao.shop").integer(0, 0));
}

void ServerDefinitions::setForm(int form) {
    session_.run("UPDATE dao.shop SET form = $1", Parameters().integer4(form));
    session_.noteWritten();
}

const sql::TableInfo& ServerDefinitions::described(const std::string& table) {
    const auto known = described_.find(table);
    if (known != described_.end() && describedIn_ == describedAt()) {
        return known->second;
    }
    described_.clear();
    for (sql::TableInfo& info : tables()) {
        std::string name = info.name;
        described_.emplace(std::move(name), std::move(info));
    }
    describedIn_ = describedAt();
    const auto found = described_.find(table);
    if (found == described_.end()) {
        fail(errUnknownObject, "The engine can't find the input table or query '" + table + "'.");
    }
    return found->second;
}

std::vector<Relation> ServerDefinitions::relations() {
    const Result found = session_.run(
        "SELECT one.relname, a1.attname, many.relname, a2.attname, k.confdeltype = 'c'"
        " FROM pg_constraint AS k JOIN pg_class AS one ON one.oid = k.confrelid"
        " JOIN pg_class AS many ON many.oid = k.conrelid"
        " JOIN pg_namespace AS n ON n.oid = many.relnamespace"
        " JOIN pg_attribute AS a1 ON a1.attrelid = one.oid AND a1.attnum = k.confkey[1]"
        " JOIN pg_attribute AS a2 ON a2.attrelid = many.oid AND a2.attnum = k.conkey[1]"
        " WHERE k.contype = 'f' AND n.nspname = 'shop' ORDER BY k.oid");
    std::vector<Relation> relations;
    relations.reserve(static_cast<std::size_t>(found.rows()));
    for (int row = 0; row < found.rows(); ++row) {
        relations.push_back({std::string(found.text(row, 0)), std::string(found.text(row, 1)),
                             std::string(found.text(row, 2)), std::string(found.text(row, 3)),
                             found.boolean(row, 4)});
    }
    std::stable_sort(relations.begin(), relations.end(), [](const Relation& a, const Relation& b) {
        return alphabet::compare(a.foreignTable, b.foreignTable) < 0;
    });
    return relations;
}

void ServerDefinitions::change(const std::string& text) {
    session_.noteWritten();
    session_.transaction().connection().execute(text);
    session_.run("UPDATE dao.shop SET schema_version = schema_version + 1");
    session_.transaction().noteSeen(std::nullopt);
    ++changes_;
}

// Texts with a limit have a domain of their own, made when the first field asks for it.
void ServerDefinitions::needTextDomain(int size) {
    const std::string name = textDomain(size);
    if (!session_.run("SELECT to_regtype($1) IS NOT NULL", Parameters().text(name)).boolean(0, 0)) {
        session_.noteWritten();
        session_.transaction().connection().execute(createTextDomain(size));
    }
}

void ServerDefinitions::createTable(const TableDef& table) {
    const sql::TableInfo info = tableInfo(table);
    needShortName(info.name);
    const std::string counter = tableName("counter_of_" + info.name.substr(0, kLongestName - 20));
    std::string columns;
    std::string before;
    std::string after;
    for (const sql::ColumnInfo& column : info.columns) {
        needShortName(column.name);
        columns += (columns.empty() ? "" : ", ") + columnText(column, counter);
        if (column.counter) {
            before = "CREATE SEQUENCE " + counter + " AS integer;";
            after = ";ALTER SEQUENCE " + counter + " OWNED BY " + tableName(info.name) + '.' +
                    quotedName(column.name);
        }
        if (column.type == dao::Type::Text && column.size > 0) {
            needTextDomain(column.size);
        }
    }
    if (before.empty()) {
        columns += ", " + std::string(kHiddenKey) + " bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY";
    }
    change(before + "CREATE TABLE " + tableName(info.name) + " (" + columns + ')' + after);
}

// What belongs to its rows goes with them, as when they are deleted; then nothing refers to the table any
// more.
void ServerDefinitions::dropTable(const std::string& table) {
    change("DELETE FROM " + tableName(table) + "; DROP TABLE " + tableName(table) + " CASCADE");
}

void ServerDefinitions::dropAll() {
    std::string text;
    for (const sql::TableInfo& table : tables()) {
        text += (text.empty() ? "DROP TABLE " : ", ") + tableName(table.name);
    }
    change(text + (text.empty() ? "" : " CASCADE; ") + "DELETE FROM dao.queries");
}

void ServerDefinitions::createIndex(const std::string& table, const std::string& field, bool unique) {
    const sql::TableInfo& info = described(table);
    const int index = info.indexOf(field);
    const bool text = index >= 0 && info.columns[static_cast<std::size_t>(index)].type == dao::Type::Text;
    change((unique ? "CREATE UNIQUE INDEX ON " : "CREATE INDEX ON ") + tableName(table) +
           (text ? " (dao.key(" + quotedName(field) + ") COLLATE \"C\" NULLS FIRST)"
                 : " (" + quotedName(field) + ')'));
}

std::vector<driver::IndexRow> ServerDefinitions::indexes() {
    const Result rows = session_.run(
        "SELECT c.relname, a.attname, i.indisunique FROM pg_index AS i"
        " JOIN pg_class AS c ON c.oid = i.indrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace"
        " JOIN pg_depend AS d ON d.objid = i.indexrelid AND d.refobjid = i.indrelid AND d.refobjsubid > 0"
        " JOIN pg_attribute AS a ON a.attrelid = i.indrelid AND a.attnum = d.refobjsubid"
        " WHERE n.nspname = 'shop' AND NOT i.indisprimary ORDER BY i.indexrelid");
    const std::vector<Relation> all = relations();
    std::vector<driver::IndexRow> found;
    for (int row = 0; row < rows.rows(); ++row) {
        driver::IndexRow index{std::string(rows.text(row, 0)), std::string(rows.text(row, 1)),
                               rows.boolean(row, 2)};
        if (!belongsToRelation(index.table, index.field, all)) {
            found.push_back(std::move(index));
        }
    }
    return found;
}

void ServerDefinitions::createRelation(const Relation& relation) {
    const std::string& table = relation.foreignTable;
    if (session_.run("SELECT 1 FROM " + tableName(table) + " LIMIT 1").rows() != 0) {
        fail(errInvalidOperation,
             "The relation can't be created; table '" + table + "' already holds records.");
    }
    const sql::TableInfo& one = described(relation.table);
    const std::string field = quotedName(relation.field);
    std::string text;
    if (keyColumn(one) != field) {
        text = "CREATE UNIQUE INDEX ON " + tableName(relation.table) + " (" + field + ");";
    }
    change(text + "ALTER TABLE " + tableName(table) + " ADD FOREIGN KEY (" +
           quotedName(relation.foreignField) + ") REFERENCES " + tableName(relation.table) + " (" + field +
           ')' + (relation.cascadeDelete ? " ON DELETE CASCADE" : "") + ";CREATE INDEX ON " +
           tableName(table) + " (" + quotedName(relation.foreignField) + ')');
}

}  // namespace dao::postgres
