#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/dao/driver.h"
#include "platform/dao/sqlite/connection.h"
#include "platform/dao/sqlite/counters.h"
#include "platform/dao/sqlite/definitions.h"
#include "platform/dao/sqlite/lock_patience.h"
#include "platform/dao/sqlite/queries.h"
#include "platform/dao/sqlite/rows.h"
#include "platform/dao/sqlite/store_layout.h"
#include "platform/dao/sqlite/store_transaction.h"

namespace dao::driver {

// A shop's file, or one in memory.
class SqliteStore final : public Store {
 public:
    explicit SqliteStore(const OpenRequest& request,
                         bool withSystemTables = true);  // an empty path: in memory

    bool writable() const override { return connection_.writable(); }
    const sql::Writer& writer() const override { return sql::sqliteWriter(); }
    std::shared_ptr<Statement> prepare(std::string_view text) override { return connection_.prepare(text); }
    std::shared_ptr<Statement> cached(const std::string& text) override { return connection_.cached(text); }

    Transaction& transaction() override { return transaction_; }
    RowLocks* rowLocks() override { return nullptr; }
    Definitions& definitions() override { return definitions_; }
    Counters& counters() override { return counters_; }
    Rows& rows() override { return rows_; }
    StoredQueries& storedQueries() override { return queries_; }
    void setIdSet(int number, sql::IdSetPtr set) override { connection_.setIdSet(number, std::move(set)); }
    void dropIdSet(int number) override { connection_.dropIdSet(number); }
    SqliteConnection& connection() { return connection_; }

    // Puts indexes of texts that stand in the order of an earlier version into the present one. Does nothing
    // to a store that cannot be written. errNewerForm for an order or a form that this program does not know.
    void keepOrder();
    // Puts down what the file holds apart from its first page, where it is not there as it should be. What
    // keeps it from that, but for damage, is no reason not to work: the next opening tries again.
    void keepLayout();

 private:
    LockPatience patience_;
    SqliteConnection connection_;
    SqliteDefinitions definitions_{connection_};
    SqliteCounters counters_{connection_};
    SqliteRows rows_{connection_};
    SqliteQueries queries_{connection_};
    StoreLayout layout_;
    SqliteTransaction transaction_{connection_, layout_};
};

}  // namespace dao::driver
