#include <algorithm>
#include <limits>

#include "platform/dao/failure.h"
#include "platform/dao/names.h"
#include "platform/dao/sqlite/store.h"
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

// Where the file counts the texts of stored queries, among the counters of its tables.
constexpr const char* kQueryTexts = "dao_query_texts";

std::vector<Value> textColumn(Statement& statement) {
    RowBlock block;
    block.reset({Type::Text});
    const std::size_t rows = statement.readRows(block);
    std::vector<Value> texts(rows);
    for (std::size_t row = 0; row < rows; ++row) {
        block.get(row, 0, texts[row]);
    }
    return texts;
}

}  // namespace

bool isSystemTable(std::string_view name) {
    return sameName(name.substr(0, 4), "dao_") || sameName(name.substr(0, 7), "sqlite_");
}

std::vector<std::string> SqliteStore::tableNames() {
    std::vector<std::string> names;
    for (const Value& name : textColumn(
             *cached("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name COLLATE DAO_TEXT"))) {
        if (!isSystemTable(name.textRef())) {
            names.push_back(name.textRef());
        }
    }
    return names;
}

sql::TableInfo SqliteStore::describe(const std::string& table) {
    RowBlock block;  // cid, name, type, notnull, default, pk
    block.reset({Type::Long, Type::Text, Type::Text, Type::Long, Type::Null, Type::Long});
    prepare("PRAGMA table_info(" + quotedName(table) + ")")->readRows(block);
    sql::TableInfo info;
    info.name = table;
    Value name;
    Value declared;
    Value primary;
    for (std::size_t row = 0; row < block.rows(); ++row) {
        block.get(row, 1, name);
        block.get(row, 2, declared);
        block.get(row, 5, primary);
        if (name.textRef() == kHiddenKey) {
            continue;
        }
        sql::ColumnInfo column = columnFromDeclaration(name.textRef(), declared.textRef());
        column.counter = primary.asLong() != 0;
        info.columns.push_back(std::move(column));
    }
    return info;
}

std::vector<sql::TableInfo> SqliteStore::tables() {
    std::vector<sql::TableInfo> tables;
    for (const std::string& name : tableNames()) {
        tables.push_back(describe(name));
    }
    return tables;
}

std::vector<Relation> SqliteStore::relations() {
    std::vector<Relation> relations;
    for (const std::string& table : tableNames()) {
        RowBlock block;  // id, seq, table, from, to, on_update, on_delete, match
        block.reset(
            {Type::Long, Type::Long, Type::Text, Type::Text, Type::Text, Type::Text, Type::Text, Type::Text});
        prepare("PRAGMA foreign_key_list(" + quotedName(table) + ")")->readRows(block);
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

std::string SqliteStore::columnsDdl(const sql::TableInfo& table,
                                    const std::vector<Relation>& relations) const {
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

void SqliteStore::createTable(const TableDef& table) {
    layoutChanged_ = true;
    execute("CREATE TABLE " + quotedName(table.Name()) + '(' + columnsDdl(tableInfo(table), {}) + ')');
}

void SqliteStore::dropTable(const std::string& table) {
    layoutChanged_ = true;
    execute("DROP TABLE " + quotedName(table));
}

void SqliteStore::createIndex(const std::string& table, const std::string& field, bool unique) {
    layoutChanged_ = true;
    execute(std::string(unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
            quotedName(indexName(table, field)) + " ON " + quotedName(table) + '(' + quotedName(field) + ')');
}

// Each is on one field and bears its table's and field's name.
std::vector<IndexRow> SqliteStore::indexes() {
    std::vector<IndexRow> found;
    const std::vector<Relation> relations = this->relations();
    for (const std::string& table : tableNames()) {
        RowBlock list;  // seq, name, unique, origin, partial
        list.reset({Type::Long, Type::Text, Type::Long, Type::Text, Type::Long});
        prepare("PRAGMA index_list(" + quotedName(table) + ")")->readRows(list);
        for (std::size_t row = list.rows(); row-- > 0;) {
            Value name;
            Value unique;
            list.get(row, 1, name);
            list.get(row, 2, unique);
            RowBlock columns;  // seqno, cid, name
            columns.reset({Type::Long, Type::Long, Type::Text});
            prepare("PRAGMA index_info(" + quotedName(name.textRef()) + ")")->readRows(columns);
            Value field;
            columns.get(0, 2, field);
            if (!belongsToRelation(table, field.textRef(), relations)) {
                found.push_back({table, field.textRef(), unique.asLong() != 0});
            }
        }
    }
    return found;
}

void SqliteStore::createForeignIndexes(const std::string& table, const std::vector<Relation>& relations) {
    for (const Relation& relation : relations) {
        if (sameName(relation.foreignTable, table)) {
            execute("CREATE INDEX IF NOT EXISTS " + quotedName(indexName(table, relation.foreignField)) +
                    " ON " + quotedName(table) + '(' + quotedName(relation.foreignField) + ')');
        }
    }
}

void SqliteStore::createRelation(const Relation& relation) {
    layoutChanged_ = true;
    const std::string& table = relation.foreignTable;
    const sql::TableInfo info = describe(table);
    if (cached("SELECT 1 FROM " + quotedName(table) + " LIMIT 1")->scalar(Type::Long)) {
        fail(errInvalidOperation,
             "The relation can't be created; table '" + table + "' already holds records.");
    }
    const sql::TableInfo parent = describe(relation.table);
    const int parentColumn = parent.indexOf(relation.field);
    if (!parent.columns[static_cast<std::size_t>(parentColumn)].counter) {
        execute("CREATE UNIQUE INDEX IF NOT EXISTS " + quotedName(indexName(relation.table, relation.field)) +
                " ON " + quotedName(relation.table) + '(' + quotedName(relation.field) + ')');
    }

    std::vector<Relation> all = relations();
    all.push_back(relation);
    std::vector<Value> indexes = textColumn(
        *prepare("SELECT sql FROM sqlite_master WHERE type='index' AND sql IS NOT NULL AND tbl_name=" +
                 quotedText(table)));
    const std::optional<Value> counter =
        prepare("SELECT seq FROM sqlite_sequence WHERE name=" + quotedText(table))->scalar(Type::Long);
    dropTable(table);
    execute("CREATE TABLE " + quotedName(table) + '(' + columnsDdl(info, all) + ')');
    for (const Value& index : indexes) {
        execute(index.textRef());
    }
    createForeignIndexes(table, all);
    if (counter) {
        execute("INSERT INTO sqlite_sequence(name,seq) VALUES(" + quotedText(table) + ',' +
                counter->asText() + ')');
    }
}

// Tables before their rows, rows before their indexes: each is then written once, from front to end.
void SqliteStore::copyTables() {
    const auto textsOf = [this](const std::string& what) {
        return textColumn(
            *prepare("SELECT " + what + " AND name NOT LIKE 'sqlite!_%' ESCAPE '!' ORDER BY rowid"));
    };
    // The file keeps these statements from their first word on as it wrote them itself.
    const auto createIn = [this](const std::string& text, std::string_view verb) {
        if (text.compare(0, verb.size(), verb) != 0) {
            fail(errCannotOpen);
        }
        execute(std::string(verb) + "target." + text.substr(verb.size()));
    };
    // Where its tables begin in the copy, the copy puts down for itself.
    const std::string tables =
        "FROM main.sqlite_master WHERE type='table' AND name NOT LIKE 'dao!_layout!_%' ESCAPE '!'";
    for (const Value& table : textsOf("sql " + tables)) {
        createIn(table.textRef(), "CREATE TABLE ");
    }
    for (const Value& table : textsOf("name " + tables)) {
        execute("INSERT INTO target." + quotedName(table.textRef()) + " SELECT * FROM main." +
                quotedName(table.textRef()));
    }
    for (const Value& index : textsOf("sql FROM main.sqlite_master WHERE type='index'")) {
        const bool unique = index.textRef().rfind("CREATE UNIQUE", 0) == 0;
        createIn(index.textRef(), unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ");
    }
    const auto countsIn = [this](const char* schema) {
        return prepare("SELECT 1 FROM " + std::string(schema) + ".sqlite_master WHERE name='sqlite_sequence'")
            ->scalar(Type::Long)
            .has_value();
    };
    if (countsIn("main") && countsIn("target")) {
        execute(
            "DELETE FROM target.sqlite_sequence;"
            "INSERT INTO target.sqlite_sequence(name,seq) SELECT name,seq FROM main.sqlite_sequence");
    }
}

std::int64_t SqliteStore::raiseCounter(const std::string& table, std::int64_t above) {
    const std::int64_t next = std::max({above, highestNumber(table), std::int64_t{0}}) + 1;
    if (next > INT32_MAX) {
        fail(errOverflow);
    }
    setHighestNumber(table, next);
    return next;
}

void SqliteStore::setHighestNumber(const std::string& table, std::int64_t number) {
    const auto update = cached("UPDATE sqlite_sequence SET seq=?1 WHERE name=?2");
    const auto insert = cached("INSERT INTO sqlite_sequence(seq,name) VALUES(?1,?2)");
    for (const auto& write : {update, insert}) {
        write->bindInteger(1, number);
        write->bind(2, Value(table));
        if (write->run() != 0) {
            return;
        }
    }
}

std::int64_t SqliteStore::highestNumber(const std::string& table) {
    const auto read = cached("SELECT seq FROM sqlite_sequence WHERE name=?1");
    read->bind(1, Value(table));
    std::vector<std::int64_t> found;
    read->readKeys(found, 1);
    return found.empty() ? 0 : found.front();
}

void SqliteStore::insertRows(const std::string& table, std::span<const std::string_view> fields,
                             const RowBlock& rows) {
    std::vector<Value> values(fields.size());
    std::vector<FieldValue> row;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        row.push_back({fields[i], &values[i]});
    }
    for (std::size_t at = 0; at < rows.rows(); ++at) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            rows.get(at, i, values[i]);
        }
        insertRow(table, row);
    }
}

std::int64_t SqliteStore::insertRow(const std::string& table, std::span<const FieldValue> fields) {
    std::string text = "INSERT INTO " + quotedName(table);
    if (fields.empty()) {
        text += " DEFAULT VALUES";
    }
    std::string places;
    for (const FieldValue& field : fields) {
        text += (places.empty() ? '(' : ',') + quotedName(field.field);
        places += places.empty() ? "?" : ",?";
    }
    if (!fields.empty()) {
        text += ") VALUES(" + places + ')';
    }
    const auto statement = cached(text);
    int index = 0;
    for (const FieldValue& field : fields) {
        statement->bind(++index, *field.value);
    }
    statement->run();
    return sqlite3_last_insert_rowid(db_);
}

bool SqliteStore::updateRow(const std::string& table, std::int64_t key, std::span<const FieldValue> fields) {
    std::string text = "UPDATE " + quotedName(table) + " SET ";
    for (const FieldValue& field : fields) {
        text += quotedName(field.field) + "=?,";
    }
    text.back() = ' ';
    const auto statement = cached(text + "WHERE rowid=?");
    int index = 0;
    for (const FieldValue& field : fields) {
        statement->bind(++index, *field.value);
    }
    statement->bindInteger(++index, key);
    return statement->run() != 0;
}

bool SqliteStore::deleteRow(const std::string& table, std::int64_t key) {
    const auto statement = cached("DELETE FROM " + quotedName(table) + " WHERE rowid=?1");
    statement->bindInteger(1, key);
    return statement->run() != 0;
}

std::vector<StoredQueryRow> SqliteStore::queries() {
    RowBlock block;
    block.reset({Type::Text});
    std::vector<std::int64_t> versions;
    cached("SELECT version,name FROM dao_queries ORDER BY name")->readRows(block, 1, &versions);
    std::vector<StoredQueryRow> rows;
    Value name;
    for (std::size_t row = 0; row < block.rows(); ++row) {
        block.get(row, 0, name);
        rows.push_back({name.textRef(), versions[row]});
    }
    return rows;
}

std::int64_t SqliteStore::queryVersion(std::string_view name) {
    const auto statement = cached("SELECT version FROM dao_queries WHERE name=?1");
    statement->bind(1, Value(std::string(name)));
    std::vector<std::int64_t> versions;
    statement->readKeys(versions, 1);
    return versions.empty() ? 0 : versions.front();
}

std::optional<std::string> SqliteStore::queryText(std::string_view name) {
    const auto statement = cached("SELECT sql FROM dao_queries WHERE name=?1");
    statement->bind(1, Value(std::string(name)));
    std::optional<Value> text = statement->scalar(Type::Text);
    if (!text) {
        return std::nullopt;
    }
    return std::move(std::get<std::string>(text->store()));
}

// Counted in the file: no two texts ever bear one number, also where a query is dropped and made again. A
// file that was not counted in yet goes on from the highest number that stands in it.
std::int64_t SqliteStore::nextQueryVersion() {
    if (integerOf("SELECT count(*) FROM sqlite_master WHERE name='sqlite_sequence'") == 0) {
        // The store makes its list of counters with the first table that has one.
        execute("CREATE TABLE dao_first(id INTEGER PRIMARY KEY AUTOINCREMENT); DROP TABLE dao_first");
    }
    const auto read = cached("SELECT seq FROM sqlite_sequence WHERE name=?1");
    read->bind(1, Value(kQueryTexts));
    std::vector<std::int64_t> counted;
    read->readKeys(counted, 1);
    const std::int64_t last =
        counted.empty() ? integerOf("SELECT coalesce(max(version),0) FROM dao_queries") : counted.front();
    if (last == std::numeric_limits<std::int64_t>::max()) {
        fail(errOverflow);
    }
    const auto write = cached(counted.empty() ? "INSERT INTO sqlite_sequence(seq,name) VALUES(?1,?2)"
                                              : "UPDATE sqlite_sequence SET seq=?1 WHERE name=?2");
    write->bindInteger(1, last + 1);
    write->bind(2, Value(kQueryTexts));
    write->run();
    return last + 1;
}

std::int64_t SqliteStore::writeQuery(std::string_view name, std::string_view text) {
    const std::int64_t version = nextQueryVersion();
    const auto write = [&](const char* statementText) {
        const auto statement = cached(statementText);
        statement->bindInteger(1, version);
        statement->bind(2, Value(std::string(text)));
        statement->bind(3, Value(std::string(name)));
        const std::int64_t changed = statement->run();
        statement->bind(2, Value());  // a megabyte of text need not wait here for the next one
        return changed;
    };
    if (write("UPDATE dao_queries SET version=?1, sql=?2 WHERE name=?3") == 0) {
        write("INSERT INTO dao_queries(version,sql,name) VALUES(?1,?2,?3)");
    }
    return version;
}

bool SqliteStore::dropQuery(std::string_view name) {
    const auto statement = cached("DELETE FROM dao_queries WHERE name=?1");
    statement->bind(1, Value(std::string(name)));
    return statement->run() != 0;
}

}  // namespace dao::driver
