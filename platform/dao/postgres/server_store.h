#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/dao/driver.h"
#include "platform/dao/postgres/link.h"
#include "platform/dao/postgres/statement_runner.h"

namespace dao::postgres {

// A shop on a server as the record sets see it. Tables stand in the schema "shop", what the engine keeps for
// itself in the schema "dao".
//
// A transaction that only reads sees one state of the shop throughout; one that writes holds the rows that it
// writes, and nobody else's. What was written raises the number of this workstation's row in dao.writers, in
// the same transaction: so others see with the rows that something has changed. Stored queries have versions
// of their own, and nobody reads his rows anew for somebody else's.
//
// A statement that the server refuses fails alone: what the transaction has written before it stands. A
// connection that was lost takes its transaction with it, and nothing more is written or read in that one;
// outside of transactions a new connection is made without a word.
class ServerStore final : public driver::Store, public StatementRunner {
 public:
    explicit ServerStore(std::shared_ptr<Link> link);  // errUnrecognisedFormat: no shop there; errNewerForm
    // One that is being made.
    struct Unfinished {};
    ServerStore(std::shared_ptr<Link> link, Unfinished);
    ~ServerStore() override;

    bool writable() const override { return true; }
    const sql::Writer& writer() const override;

    std::shared_ptr<driver::Statement> prepare(std::string_view text) override;
    std::shared_ptr<driver::Statement> cached(const std::string& text) override;

    void beginWrite() override;
    void beginRead() override;
    void commit() override;
    void rollback() noexcept override;
    bool inTransaction() const override;
    void savepoint(int level) override;
    void release(int level) override;
    void rollbackTo(int level) noexcept override;

    bool locksRows() const override { return true; }
    void lockRow(const std::string& table, std::int64_t key) override;
    void unlockRow(const std::string& table, std::int64_t key) noexcept override;
    bool holdRow(const std::string& table, std::int64_t key) override;

    std::int64_t dataVersion() override;
    std::int64_t schemaVersion() override;
    int form() override;
    void setForm(int form) override;
    std::vector<sql::TableInfo> tables() override;
    std::vector<Relation> relations() override;
    void createTable(const TableDef& table) override;
    void dropTable(const std::string& table) override;
    void createRelation(const Relation& relation) override;
    void createIndex(const std::string& table, const std::string& field, bool unique) override;
    std::vector<driver::IndexRow> indexes() override;

    KeyList readAllKeys(const std::string& table) override;
    std::optional<KeyList> readKeysAmong(const std::string&, const sql::IdSet&) override { return {}; }
    std::int64_t raiseCounter(const std::string& table, std::int64_t above) override;
    bool countsApart() const override { return true; }
    std::int64_t highestNumber(const std::string& table) override;
    void setHighestNumber(const std::string& table, std::int64_t number) override;
    std::int64_t insertRow(const std::string& table, std::span<const driver::FieldValue> fields) override;
    void insertRows(const std::string& table, std::span<const std::string_view> fields,
                    const RowBlock& rows) override;
    bool updateRow(const std::string& table, std::int64_t key,
                   std::span<const driver::FieldValue> fields) override;
    bool deleteRow(const std::string& table, std::int64_t key) override;
    bool changeRow(const driver::RowChange& change) override;

    std::vector<driver::StoredQueryRow> queries() override;
    std::int64_t queryVersion(std::string_view name) override;
    std::optional<std::string> queryText(std::string_view name) override;
    std::int64_t writeQuery(std::string_view name, std::string_view text) override;
    bool dropQuery(std::string_view name) override;

    void setIdSet(int, sql::IdSetPtr) override {}  // sets go to the server with the statements that use them
    void dropIdSet(int) override {}
    bool isFar() const override { return true; }
    std::int64_t roundTrips() const override { return link_->roundTrips(); }

    // What the shop's rows, tables and counters are at this moment, as a text that no other moment of this or
    // another shop has; stored queries do not count. In a transaction that reads: what it sees.
    std::string state();
    // Takes away all tables and stored queries.
    void empty();
    // A statement of this store's own.
    Result run(const std::string& text, const Parameters& parameters = {}) override;
    void noteWritten() override;

 private:
    // What tells at one glance whether anything has changed.
    struct Versions {
        std::int64_t schema = 0;
        std::int64_t data = 0;  // of the other workstations
        std::int64_t queries = 0;
        std::int64_t newestQuery = 0;
    };
    struct KnownQuery {
        std::string name;
        std::int64_t version = 0;
    };

    void begin(const std::string& text);
    std::vector<Step> takeAhead();
    Result runAll(const std::vector<Step>& steps);
    void noteDone(std::size_t done);
    Versions keepVersions(const Result& answer);
    Connection& connection();  // errDiskIo where the open transaction went with an earlier one
    bool isSame() const;       // the connection that the open transaction was begun on
    void needCommitted();
    void noteQueryWritten();
    void restore() noexcept;
    Versions versions();
    void changeSchema(const std::string& text);
    void needTextDomain(int size);
    // The table as it is now; good until the schema changes. errUnknownObject.
    const sql::TableInfo& described(const std::string& table);
    std::pair<std::int64_t, std::int64_t> describedAt();
    void bindFields(Parameters& parameters, const sql::TableInfo& table,
                    std::span<const driver::FieldValue> fields) const;
    void insertSome(const sql::TableInfo& table, std::span<const std::string_view> fields,
                    const RowBlock& rows, std::size_t first, std::size_t count);
    Parameters counterOf(const std::string& table);
    void refreshQueries();

    // Row locks of this session, by their numbers: asked for ahead of the next statement, and held.
    struct RowLocks {
        std::vector<std::int64_t> wanted;
        std::multiset<std::int64_t> held;
        std::int64_t session = -1;  // of the link, that they are held in
    };

    std::shared_ptr<StatementRunner*> self_;  // for its statements: holds nullptr once the store is gone
    std::shared_ptr<Link> link_;
    std::optional<std::int64_t> begunIn_;  // the link's session that the open transaction was begun in
    bool beginAhead_ = false;              // the reading transaction begins with its first statement
    RowLocks locks_;
    bool reading_ = false;                 // the open transaction sees one state throughout
    Written written_ = Written::kNothing;  // in the open transaction
    bool sound_ = false;                   // nothing was written since its last savepoint
    std::optional<Versions> seen_;         // by the reading transaction that is open
    std::int64_t schemaChanges_ = 0;       // of our own
    std::int64_t newestSchema_ = -1;       // that anybody asked for
    std::pair<std::int64_t, std::int64_t> describedIn_{-1,
                                                       -1};  // both, as they were when described_ was read
    std::map<std::string, sql::TableInfo> described_;
    Versions queriesIn_{0, 0, -1, -1};
    std::map<std::string, KnownQuery> queries_;  // by the bytes that their names compare by
};

}  // namespace dao::postgres
