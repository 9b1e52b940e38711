#pragma once

#include <memory>
#include <string>

#include "platform/dao/driver.h"
#include "platform/dao/postgres/server_counters.h"
#include "platform/dao/postgres/server_definitions.h"
#include "platform/dao/postgres/server_queries.h"
#include "platform/dao/postgres/server_row_locks.h"
#include "platform/dao/postgres/server_rows.h"
#include "platform/dao/postgres/server_session.h"

namespace dao::postgres {

// A shop on a server as the record sets see it.
class ServerStore final : public driver::Store {
 public:
    explicit ServerStore(std::shared_ptr<Link> link);  // errUnrecognisedFormat: no shop there; errNewerForm
    // One that is being made.
    struct Unfinished {};
    ServerStore(std::shared_ptr<Link> link, Unfinished);

    bool writable() const override { return true; }
    const sql::Writer& writer() const override { return sql::postgresWriter(); }
    std::shared_ptr<driver::Statement> prepare(std::string_view text) override;
    std::shared_ptr<driver::Statement> cached(const std::string& text) override;

    driver::Transaction& transaction() override { return session_.transaction(); }
    driver::RowLocks* rowLocks() override { return &rowLocks_; }
    driver::Definitions& definitions() override { return definitions_; }
    driver::Counters& counters() override { return counters_; }
    driver::Rows& rows() override { return rows_; }
    driver::StoredQueries& storedQueries() override { return queries_; }

    void setIdSet(int, sql::IdSetPtr) override {}
    void dropIdSet(int) override {}
    bool isFar() const override { return true; }
    std::int64_t roundTrips() const override { return link_->roundTrips(); }

    // What the shop's rows, tables and counters are at this moment, as a text that no other moment of this or
    // another shop has; stored queries do not count. In a transaction that reads: what it sees.
    std::string state();
    // Takes away all tables and stored queries.
    void empty() { definitions_.dropAll(); }

 private:
    const std::shared_ptr<Link> link_;
    ServerSession session_;
    ServerDefinitions definitions_{session_};
    ServerRowLocks rowLocks_{session_, definitions_};
    ServerCounters counters_{session_, definitions_};
    ServerRows rows_{session_, definitions_};
    ServerQueries queries_{session_};
};

}  // namespace dao::postgres
