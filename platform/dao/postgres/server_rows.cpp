#include "platform/dao/postgres/server_rows.h"

#include <algorithm>

#include "platform/dao/postgres/quoting.h"
#include "platform/dao/postgres/server_statement.h"

namespace dao::postgres {
namespace {

void bindFields(Parameters& parameters, const sql::TableInfo& table,
                std::span<const driver::FieldValue> fields) {
    for (const driver::FieldValue& field : fields) {
        const int index = table.indexOf(field.field);
        bindValue(parameters, *field.value,
                  index < 0 ? dao::Type::Text : table.columns[static_cast<std::size_t>(index)].type);
    }
}

// The fields by name, each with its value's number from `number` on.
std::string numbered(std::span<const driver::FieldValue> fields, const char* is, const char* between,
                     std::size_t number) {
    std::string text;
    for (const driver::FieldValue& field : fields) {
        text += (text.empty() ? "" : between) + quotedName(field.field) + is + std::to_string(number++);
    }
    return text;
}

std::string updateText(const sql::TableInfo& table, std::span<const driver::FieldValue> fields) {
    return "UPDATE " + tableName(table.name) + " SET " + numbered(fields, " = $", ", ", 1) + " WHERE ";
}

// Its values: the fields as they are to be and as they were, the key, this workstation's number and mark.
std::string changeText(const sql::TableInfo& table, const driver::RowChange& change) {
    const std::size_t key = change.fields.size() + change.was.size() + 1;
    const std::string was =
        numbered(change.was, " IS NOT DISTINCT FROM $", " AND ", change.fields.size() + 1);
    return "WITH changed AS (" + updateText(table, change.fields) + was + (was.empty() ? "" : " AND ") +
           keyColumn(table) + " = $" + std::to_string(key) +
           " RETURNING 1) INSERT INTO dao.writers AS w (number, version, changed, commits, mark, written) "
           "SELECT $" +
           std::to_string(key + 1) + ", 1, clock_timestamp(), 1, $" + std::to_string(key + 2) +
           ", clock_timestamp() FROM changed ON CONFLICT (number) DO UPDATE SET version = w.version + 1,"
           " changed = EXCLUDED.changed, commits = w.commits + 1, mark = EXCLUDED.mark,"
           " written = EXCLUDED.written RETURNING commits";
}

}  // namespace

std::int64_t ServerRows::dataVersion() {
    return session_.versions().data;
}

// The server counts millions in a moment, and sends them only where a number is missing among them.
KeyList ServerRows::readAllKeys(const std::string& table) {
    const std::string key = keyColumn(definitions_.described(table));
    const std::string from = " FROM " + tableName(table);
    const Result told = session_.run(
        "SELECT found, first, CASE WHEN last::numeric - first = found - 1 THEN NULL ELSE ARRAY(SELECT " +
        key + from + " ORDER BY " + key + ") END FROM (SELECT count(*) AS found, min(" + key +
        ") AS first, max(" + key + ") AS last" + from + ") AS told");
    if (told.isNull(0, 2)) {
        return {told.integer(0, 1), static_cast<std::size_t>(told.integer(0, 0))};
    }
    std::vector<std::int64_t> keys;
    told.appendKeys(0, 2, driver::kNoRow, keys);
    return KeyList(std::move(keys));
}

std::int64_t ServerRows::insertRow(const std::string& table, std::span<const driver::FieldValue> fields) {
    const sql::TableInfo& info = definitions_.described(table);
    std::string names;
    std::string places;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        names += (i == 0 ? "" : ", ") + quotedName(fields[i].field);
        places += (i == 0 ? "$" : ", $") + std::to_string(i + 1);
    }
    Parameters parameters;
    bindFields(parameters, info, fields);
    const Result made =
        session_.run("INSERT INTO " + tableName(table) +
                         (fields.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + places + ")") +
                         " RETURNING " + keyColumn(info),
                     parameters);
    session_.noteWritten();
    return made.integer(0, 0);
}

// As many at once as a statement takes values.
void ServerRows::insertRows(const std::string& table, std::span<const std::string_view> fields,
                            const RowBlock& rows) {
    constexpr std::size_t kMostValues = 8000;
    const sql::TableInfo& info = definitions_.described(table);
    const std::size_t most = std::max<std::size_t>(1, kMostValues / std::max<std::size_t>(1, fields.size()));
    for (std::size_t first = 0; first < rows.rows(); first += most) {
        insertSome(info, fields, rows, first, std::min(most, rows.rows() - first));
    }
    session_.noteWritten();
}

void ServerRows::insertSome(const sql::TableInfo& table, std::span<const std::string_view> fields,
                            const RowBlock& rows, std::size_t first, std::size_t count) {
    std::string text = "INSERT INTO " + tableName(table.name) + " (";
    for (std::size_t i = 0; i < fields.size(); ++i) {
        text += (i == 0 ? "" : ", ") + quotedName(fields[i]);
    }
    Parameters parameters;
    Value value;
    int number = 0;
    for (std::size_t row = first; row < first + count; ++row) {
        text += row == first ? ") VALUES (" : "), (";
        for (std::size_t i = 0; i < fields.size(); ++i) {
            text += (i == 0 ? "$" : ", $") + std::to_string(++number);
            rows.get(row, i, value);
            bindValue(parameters, value, rows.types()[i]);
        }
    }
    session_.run(text + ')', parameters);
}

bool ServerRows::updateRow(const std::string& table, std::int64_t key,
                           std::span<const driver::FieldValue> fields) {
    const sql::TableInfo& info = definitions_.described(table);
    Parameters parameters;
    bindFields(parameters, info, fields);
    parameters.integer8(key);
    const Result changed = session_.run(
        updateText(info, fields) + keyColumn(info) + " = $" + std::to_string(fields.size() + 1), parameters);
    session_.noteWritten();
    return changed.affected() != 0;
}

bool ServerRows::deleteRow(const std::string& table, std::int64_t key) {
    const Result gone = session_.run(
        "DELETE FROM " + tableName(table) + " WHERE " + keyColumn(definitions_.described(table)) + " = $1",
        Parameters().integer8(key));
    session_.noteWritten();
    return gone.affected() != 0;
}

// One statement, which is a transaction by itself: compares, writes, and raises the version of this
// workstation where it has written. Whoever waits for the row's last writer compares with what that one left.
bool ServerRows::changeRow(const driver::RowChange& change) {
    const sql::TableInfo& info = definitions_.described(std::string(change.table));
    Parameters parameters;
    bindFields(parameters, info, change.fields);
    bindFields(parameters, info, change.was);
    Link& link = session_.link();
    WriterRow& writer = link.writer();
    writer.foreseeRaise(link.soundConnection());
    const int number = writer.number(session_.transaction().connection());
    parameters.integer8(change.key).integer4(number).integer8(writer.mark());
    const std::string text = changeText(info, change);
    return session_.transaction().writeAlone([&] { return session_.run(text, parameters).rows() != 0; });
}

}  // namespace dao::postgres
