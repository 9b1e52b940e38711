#include "platform/dao/sqlite/queries.h"

#include <limits>

#include "platform/dao/failure.h"

namespace dao::driver {
namespace {

// Where the file counts the texts of stored queries, among the counters of its tables.
constexpr const char* kQueryTexts = "dao_query_texts";

}  // namespace

std::vector<StoredQueryRow> SqliteQueries::queries() {
    RowBlock block;
    block.reset({Type::Text});
    std::vector<std::int64_t> versions;
    connection_.cached("SELECT version,name FROM dao_queries ORDER BY name")->readRows(block, 1, &versions);
    std::vector<StoredQueryRow> rows;
    Value name;
    for (std::size_t row = 0; row < block.rows(); ++row) {
        block.get(row, 0, name);
        rows.push_back({name.textRef(), versions[row]});
    }
    return rows;
}

std::int64_t SqliteQueries::queryVersion(std::string_view name) {
    const auto statement = connection_.cached("SELECT version FROM dao_queries WHERE name=?1");
    statement->bind(1, Value(std::string(name)));
    std::vector<std::int64_t> versions;
    statement->readKeys(versions, 1);
    return versions.empty() ? 0 : versions.front();
}

std::optional<std::string> SqliteQueries::queryText(std::string_view name) {
    const auto statement = connection_.cached("SELECT sql FROM dao_queries WHERE name=?1");
    statement->bind(1, Value(std::string(name)));
    std::optional<Value> text = statement->scalar(Type::Text);
    if (!text) {
        return std::nullopt;
    }
    return std::move(std::get<std::string>(text->store()));
}

// Counted in the file: no two texts ever bear one number, also where a query is dropped and made again. A
// file that was not counted in yet goes on from the highest number that stands in it.
std::int64_t SqliteQueries::nextQueryVersion() {
    if (connection_.integerOf("SELECT count(*) FROM sqlite_master WHERE name='sqlite_sequence'") == 0) {
        // The store makes its list of counters with the first table that has one.
        connection_.execute(
            "CREATE TABLE dao_first(id INTEGER PRIMARY KEY AUTOINCREMENT); DROP TABLE dao_first");
    }
    const auto read = connection_.cached("SELECT seq FROM sqlite_sequence WHERE name=?1");
    read->bind(1, Value(kQueryTexts));
    std::vector<std::int64_t> counted;
    read->readKeys(counted, 1);
    const std::int64_t last = counted.empty()
                                  ? connection_.integerOf("SELECT coalesce(max(version),0) FROM dao_queries")
                                  : counted.front();
    if (last == std::numeric_limits<std::int64_t>::max()) {
        fail(errOverflow);
    }
    const auto write =
        connection_.cached(counted.empty() ? "INSERT INTO sqlite_sequence(seq,name) VALUES(?1,?2)"
                                           : "UPDATE sqlite_sequence SET seq=?1 WHERE name=?2");
    write->bindInteger(1, last + 1);
    write->bind(2, Value(kQueryTexts));
    write->run();
    return last + 1;
}

std::int64_t SqliteQueries::writeQuery(std::string_view name, std::string_view text) {
    const std::int64_t version = nextQueryVersion();
    const auto write = [&](const char* statementText) {
        const auto statement = connection_.cached(statementText);
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

bool SqliteQueries::dropQuery(std::string_view name) {
    const auto statement = connection_.cached("DELETE FROM dao_queries WHERE name=?1");
    statement->bind(1, Value(std::string(name)));
    return statement->run() != 0;
}

}  // namespace dao::driver
