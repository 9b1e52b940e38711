#include "platform/dao/sqlite/definitions.h"

#include "platform/dao/failure.h"
#include "platform/dao/names.h"
#include "platform/dao/sqlite/table_columns.h"
#include "platform/dao/sqlite/texts.h"
#include "platform/dao/table_definition.h"

namespace dao::driver {
namespace {

// The first word of a column's declared type is the engine's type; what follows it keeps SQLite from making
// numbers of telephone numbers, or whole numbers of prices.
struct TypeRow {
    Type type;
    std::string_view word;
    std::string_view declaration;
};

constexpr TypeRow kTypes[] = {
    {Type::YesNo, "YESNO", "YESNO DEFAULT 0"}, {Type::Long, "LONG", "LONG"},
    {Type::Currency, "CURRENCY", "CURRENCY"},  {Type::Single, "SINGLE", "SINGLE REAL"},
    {Type::Date, "DATETIME", "DATETIME REAL"}, {Type::Text, "TEXT", "TEXT"},
    {Type::Text, "MEMO", "MEMO TEXT"},
};

sql::ColumnInfo columnFromDeclaration(std::string name, std::string_view declared) {
    sql::ColumnInfo column;
    column.name = std::move(name);
    const std::string_view word = declared.substr(0, declared.find_first_of(" ("));
    for (const TypeRow& row : kTypes) {
        if (sameName(row.word, word)) {
            column.type = row.type;
        }
    }
    if (sameName(word, "INTEGER")) {
        column.type = Type::Long;
    }
    const std::size_t open = declared.find('(');
    if (open != std::string_view::npos) {
        column.size = std::atoi(std::string(declared.substr(open + 1)).c_str());
    }
    return column;
}

std::string columnDdl(const sql::ColumnInfo& column) {
    std::string text = quotedName(column.name) + ' ';
    if (column.counter) {
        return text + "INTEGER PRIMARY KEY AUTOINCREMENT";
    }
    for (const TypeRow& row : kTypes) {
        if (row.type != column.type) {
            continue;
        }
        if (row.type != Type::Text) {
            return text + std::string(row.declaration);
        }
        if (column.size > 0) {
            return text + "TEXT(" + std::to_string(column.size) + ") COLLATE DAO_TEXT";
        }
        return text + "MEMO TEXT COLLATE DAO_TEXT";
    }
    fail(errInvalidOperation, "Invalid field data type.");
}

std::string indexName(std::string_view table, std::string_view field) {
    return "ix_" + std::string(table) + '_' + std::string(field);
}

std::string columnsDdl(const sql::TableInfo& table, const std::vector<Relation>& relations) {
    std::string text;
    for (const sql::ColumnInfo& column : table.columns) {
        text += (text.empty() ? "" : ",") + columnDdl(column);
    }
    // A row must never come back as another under the same number: a list on another workstation still knows
    // it by that.
    if (table.counter() == nullptr) {
        text += std::string(text.empty() ? "" : ",") + kHiddenKey + " INTEGER PRIMARY KEY AUTOINCREMENT";
    }
    for (const Relation& relation : relations) {
        if (!sameName(relation.foreignTable, table.name)) {
            continue;
        }
        text += ",FOREIGN KEY(" + quotedName(relation.foreignField) + ") REFERENCES " +
                quotedName(relation.table) + '(' + quotedName(relation.field) + ')' +
                (relation.cascadeDelete ? " ON DELETE CASCADE" : "");
    }
    return text;
}

}  // namespace

bool isSystemTable(std::string_view name) {
    return sameName(name.substr(0, 4), "dao_") || sameName(name.substr(0, 7), "sqlite_");
}

std::int64_t SqliteDefinitions::schemaVersion() {
    return connection_.integerOf("PRAGMA schema_version");
}

int SqliteDefinitions::form() {
    return static_cast<int>(connection_.integerOf(kFormPragma));
}

void SqliteDefinitions::setForm(int form) {
    connection_.execute(assigned(kFormPragma, form));
    changed_ = true;
}

std::vector<std::string> SqliteDefinitions::tableNames() {
    std::vector<std::string> names;
    for (const Value& name : textsOf(*connection_.cached(
             "SELECT name FROM sqlite_master WHERE type='table' ORDER BY name COLLATE DAO_TEXT"))) {
        if (!isSystemTable(name.textRef())) {
            names.push_back(name.textRef());
        }
    }
    return names;
}

sql::TableInfo SqliteDefinitions::describe(const std::string& table) {
    sql::TableInfo info;
    info.name = table;
    for (const DeclaredColumn& declared : columnsOf(connection_, table)) {
        if (declared.name == kHiddenKey) {
            continue;
        }
        sql::ColumnInfo column = columnFromDeclaration(declared.name, declared.type);
        column.counter = declared.isKey;
        info.columns.push_back(std::move(column));
    }
    return info;
}

std::vector<sql::TableInfo> SqliteDefinitions::tables() {
    std::vector<sql::TableInfo> tables;
    for (const std::string& name : tableNames()) {
        tables.push_back(describe(name));
    }
    return tables;
}

std::vector<Relation> SqliteDefinitions::relations() {
    std::vector<Relation> relations;
    for (const std::string& table : tableNames()) {
        RowBlock block;  // id, seq, table, from, to, on_update, on_delete, match
        block.reset(
            {Type::Long, Type::Long, Type::Text, Type::Text, Type::Text, Type::Text, Type::Text, Type::Text});
        connection_.prepare("PRAGMA foreign_key_list(" + quotedName(table) + ")")->readRows(block);
        Value cell;
        for (std::size_t row = block.rows(); row-- > 0;) {
            Relation relation;
            relation.foreignTable = table;
            block.get(row, 2, cell);
            relation.table = cell.textRef();
            block.get(row, 3, cell);
            relation.foreignField = cell.textRef();
            block.get(row, 4, cell);
            relation.field = cell.textRef();
            block.get(row, 6, cell);
            relation.cascadeDelete = cell.textRef() == "CASCADE";
            relations.push_back(std::move(relation));
        }
    }
    return relations;
}

void SqliteDefinitions::createTable(const TableDef& table) {
    changed_ = true;
    connection_.execute("CREATE TABLE " + quotedName(table.Name()) + '(' + columnsDdl(tableInfo(table), {}) +
                        ')');
}

void SqliteDefinitions::dropTable(const std::string& table) {
    changed_ = true;
    connection_.execute("DROP TABLE " + quotedName(table));
}

void SqliteDefinitions::createIndex(const std::string& table, const std::string& field, bool unique) {
    changed_ = true;
    connection_.execute(std::string(unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                        quotedName(indexName(table, field)) + " ON " + quotedName(table) + '(' +
                        quotedName(field) + ')');
}

// Each is on one field and bears its table's and field's name.
std::vector<IndexRow> SqliteDefinitions::indexes() {
    std::vector<IndexRow> found;
    const std::vector<Relation> relations = this->relations();
    for (const std::string& table : tableNames()) {
        RowBlock list;  // seq, name, unique, origin, partial
        list.reset({Type::Long, Type::Text, Type::Long, Type::Text, Type::Long});
        connection_.prepare("PRAGMA index_list(" + quotedName(table) + ")")->readRows(list);
        for (std::size_t row = list.rows(); row-- > 0;) {
            Value name;
            Value unique;
            list.get(row, 1, name);
            list.get(row, 2, unique);
            RowBlock columns;  // seqno, cid, name
            columns.reset({Type::Long, Type::Long, Type::Text});
            connection_.prepare("PRAGMA index_info(" + quotedName(name.textRef()) + ")")->readRows(columns);
            Value field;
            columns.get(0, 2, field);
            if (!belongsToRelation(table, field.textRef(), relations)) {
                found.push_back({table, field.textRef(), unique.asLong() != 0});
            }
        }
    }
    return found;
}

void SqliteDefinitions::createForeignIndexes(const std::string& table,
                                             const std::vector<Relation>& relations) {
    for (const Relation& relation : relations) {
        if (sameName(relation.foreignTable, table)) {
            connection_.execute("CREATE INDEX IF NOT EXISTS " +
                                quotedName(indexName(table, relation.foreignField)) + " ON " +
                                quotedName(table) + '(' + quotedName(relation.foreignField) + ')');
        }
    }
}

void SqliteDefinitions::createRelation(const Relation& relation) {
    changed_ = true;
    const std::string& table = relation.foreignTable;
    const sql::TableInfo info = describe(table);
    if (connection_.cached("SELECT 1 FROM " + quotedName(table) + " LIMIT 1")->scalar(Type::Long)) {
        fail(errInvalidOperation,
             "The relation can't be created; table '" + table + "' already holds records.");
    }
    const sql::TableInfo parent = describe(relation.table);
    const int parentColumn = parent.indexOf(relation.field);
    if (!parent.columns[static_cast<std::size_t>(parentColumn)].counter) {
        connection_.execute("CREATE UNIQUE INDEX IF NOT EXISTS " +
                            quotedName(indexName(relation.table, relation.field)) + " ON " +
                            quotedName(relation.table) + '(' + quotedName(relation.field) + ')');
    }

    std::vector<Relation> all = relations();
    all.push_back(relation);
    std::vector<Value> indexes = textsOf(*connection_.prepare(
        "SELECT sql FROM sqlite_master WHERE type='index' AND sql IS NOT NULL AND tbl_name=" +
        quotedText(table)));
    const std::optional<Value> counter =
        connection_.prepare("SELECT seq FROM sqlite_sequence WHERE name=" + quotedText(table))
            ->scalar(Type::Long);
    dropTable(table);
    connection_.execute("CREATE TABLE " + quotedName(table) + '(' + columnsDdl(info, all) + ')');
    for (const Value& index : indexes) {
        connection_.execute(index.textRef());
    }
    createForeignIndexes(table, all);
    if (counter) {
        connection_.execute("INSERT INTO sqlite_sequence(name,seq) VALUES(" + quotedText(table) + ',' +
                            counter->asText() + ')');
    }
}

}  // namespace dao::driver
