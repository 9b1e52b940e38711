#include "platform/dao/sqlite/rows.h"

namespace dao::driver {

std::int64_t SqliteRows::dataVersion() {
    return connection_.integerOf("PRAGMA data_version");
}

void SqliteRows::insertRows(const std::string& table, std::span<const std::string_view> fields,
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

std::int64_t SqliteRows::insertRow(const std::string& table, std::span<const FieldValue> fields) {
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
    const auto statement = connection_.cached(text);
    int index = 0;
    for (const FieldValue& field : fields) {
        statement->bind(++index, *field.value);
    }
    statement->run();
    return sqlite3_last_insert_rowid(connection_.handle());
}

bool SqliteRows::updateRow(const std::string& table, std::int64_t key, std::span<const FieldValue> fields) {
    std::string text = "UPDATE " + quotedName(table) + " SET ";
    for (const FieldValue& field : fields) {
        text += quotedName(field.field) + "=?,";
    }
    text.back() = ' ';
    const auto statement = connection_.cached(text + "WHERE rowid=?");
    int index = 0;
    for (const FieldValue& field : fields) {
        statement->bind(++index, *field.value);
    }
    statement->bindInteger(++index, key);
    return statement->run() != 0;
}

bool SqliteRows::deleteRow(const std::string& table, std::int64_t key) {
    const auto statement = connection_.cached("DELETE FROM " + quotedName(table) + " WHERE rowid=?1");
    statement->bindInteger(1, key);
    return statement->run() != 0;
}

}  // namespace dao::driver
