#include "platform/dao/postgres/server_queries.h"

#include "platform/text/order.h"

namespace dao::postgres {
namespace {

std::string bytesOf(std::string_view name) {
    return alphabet::orderKey(name);
}

}  // namespace

// Their texts stay with the server until somebody asks for one.
void ServerQueries::refreshQueries() {
    const Versions now = session_.versions();
    if (now.queries == queriesIn_.queries && now.newestQuery == queriesIn_.newestQuery) {
        return;
    }
    const Result found = session_.run("SELECT name, version FROM dao.queries");
    queries_.clear();
    for (int row = 0; row < found.rows(); ++row) {
        const std::string name(found.text(row, 0));
        queries_[bytesOf(name)] = {name, found.integer(row, 1)};
    }
    queriesIn_ = now;
}

std::vector<driver::StoredQueryRow> ServerQueries::queries() {
    refreshQueries();
    std::vector<driver::StoredQueryRow> rows;
    rows.reserve(queries_.size());
    for (const auto& [bytes, query] : queries_) {
        rows.push_back({query.name, query.version});
    }
    return rows;
}

std::int64_t ServerQueries::queryVersion(std::string_view name) {
    refreshQueries();
    const auto found = queries_.find(bytesOf(name));
    return found == queries_.end() ? 0 : found->second.version;
}

std::optional<std::string> ServerQueries::queryText(std::string_view name) {
    const std::string key = bytesOf(name);
    const Result found = session_.run("SELECT sql FROM dao.queries WHERE key = $1", Parameters().bytes(key));
    if (found.rows() == 0) {
        return std::nullopt;
    }
    return std::string(found.text(0, 0));
}

std::int64_t ServerQueries::writeQuery(std::string_view name, std::string_view text) {
    const std::string key = bytesOf(name);
    const Result written = session_.run(
        "INSERT INTO dao.queries (key, name, version, sql) VALUES ($1, $2, nextval('dao.query_texts'), $3)"
        " ON CONFLICT (key) DO UPDATE SET version = EXCLUDED.version, sql = EXCLUDED.sql RETURNING version",
        Parameters().bytes(key).text(name).text(text));
    session_.transaction().noteWritten(Written::kQueries);
    return written.integer(0, 0);
}

bool ServerQueries::dropQuery(std::string_view name) {
    const std::string key = bytesOf(name);
    const Result gone = session_.run("DELETE FROM dao.queries WHERE key = $1", Parameters().bytes(key));
    session_.transaction().noteWritten(Written::kQueries);
    return gone.affected() != 0;
}

}  // namespace dao::postgres
