#pragma once

#include <sqlcipher/sqlite3.h>

#include <chrono>
#include <list>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "platform/dao/driver.h"
#include "platform/dao/sqlite/key_order.h"
#include "platform/dao/sqlite/row_gatherer.h"
#include "platform/sql/sql_text.h"

namespace dao::driver {

class SqliteStatement;

// How a file is opened. `key` is the raw cipher key with the file's salt, hexadecimal.
struct OpenRequest {
    std::string path;
    std::string key;
    bool writable = true;
    bool create = false;
};

// The salt in such a key, hexadecimal; empty where there is no key.
std::string saltText(const std::string& key);

// One SQLCipher connection. It waits for locks by itself, in short steps that differ from process to process,
// and speaks of every failure in the engine's numbers.
class SqliteStore final : public Store,
                          private Transaction,
                          private Definitions,
                          private Counters,
                          private Rows,
                          private StoredQueries {
 public:
    explicit SqliteStore(const OpenRequest& request,
                         bool withSystemTables = true);  // an empty path: in memory
    ~SqliteStore() override;

    bool writable() const override { return writable_; }
    const sql::Writer& writer() const override { return sql::sqliteWriter(); }

    std::shared_ptr<Statement> prepare(std::string_view text) override;
    std::shared_ptr<Statement> cached(const std::string& text) override;

    Transaction& transaction() override { return *this; }
    RowLocks* rowLocks() override { return nullptr; }
    Definitions& definitions() override { return *this; }
    Counters& counters() override { return *this; }
    Rows& rows() override { return *this; }
    StoredQueries& storedQueries() override { return *this; }

    void beginWrite() override;
    void beginRead() override;
    void commit() override;
    void rollback() noexcept override;
    bool isOpen() const override { return sqlite3_get_autocommit(db_) == 0; }
    void savepoint(int level) override;
    void release(int level) override;
    void rollbackTo(int level) noexcept override;

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
    std::vector<IndexRow> indexes() override;

    KeyList readAllKeys(const std::string& table) override;
    std::optional<KeyList> readKeysAmong(const std::string& table, const sql::IdSet& numbers) override;
    std::int64_t raiseCounter(const std::string& table, std::int64_t above) override;
    bool countsApart() const override { return false; }
    std::int64_t highestNumber(const std::string& table) override;
    void setHighestNumber(const std::string& table, std::int64_t number) override;
    std::int64_t insertRow(const std::string& table, std::span<const FieldValue> fields) override;
    void insertRows(const std::string& table, std::span<const std::string_view> fields,
                    const RowBlock& rows) override;
    bool updateRow(const std::string& table, std::int64_t key, std::span<const FieldValue> fields) override;
    bool deleteRow(const std::string& table, std::int64_t key) override;

    std::vector<StoredQueryRow> queries() override;
    std::int64_t queryVersion(std::string_view name) override;
    std::optional<std::string> queryText(std::string_view name) override;
    std::int64_t writeQuery(std::string_view name, std::string_view text) override;
    bool dropQuery(std::string_view name) override;

    void setIdSet(int number, sql::IdSetPtr set) override { idSets_[number] = std::move(set); }
    void dropIdSet(int number) override { idSets_.erase(number); }
    const sql::IdSetPtr* findIdSet(std::int64_t number) const;

    std::int64_t pageCount();  // that the file says it has
    std::int64_t order();      // the version of the order that its indexes of texts are kept in
    // Puts indexes of texts that stand in the order of an earlier version into the present one. Does nothing
    // to a store that cannot be written. errNewerForm for an order or a form that this program does not know.
    void keepOrder();
    // Puts down what the file holds apart from its first page, where it is not there as it should be. What
    // keeps it from that, but for damage, is no reason not to work: the next opening tries again.
    void keepLayout();
    // Bytes of the file as they lie, read by the connection's own handle: another handle of this process on
    // the same file would, when closed, let go of every lock the process has on it. The number of bytes read.
    std::size_t readFile(std::int64_t offset, std::span<char> buffer);
    std::int64_t fileSize() const;  // bytes, as they lie

    sqlite3* handle() const { return db_; }
    void execute(const std::string& text);
    // The store was opened with `create`, which an attached file takes over.
    void copyInto(const OpenRequest& target);
    // Throws dao::Error for a result code of the library; `preparing`: the statement's text is at fault.
    [[noreturn]] void failWith(int code, bool preparing = false) const;

 private:
    friend class SqliteStatement;
    struct CachedStatement {
        std::string text;
        std::shared_ptr<Statement> statement;
    };

    sqlite3_file* ownFile() const;
    void open(const OpenRequest& request);
    void configure(const OpenRequest& request);
    void createSystemTables();
    void close() noexcept;
    static int onBusy(void* self, int count);
    std::int64_t integerOf(const char* text);
    std::vector<std::string> tableNames();
    void copyTables();
    std::int64_t nextQueryVersion();
    sql::TableInfo describe(const std::string& table);
    std::string columnsDdl(const sql::TableInfo& table, const std::vector<Relation>& relations) const;
    void createForeignIndexes(const std::string& table, const std::vector<Relation>& relations);

    RowGatherer gatherer_;
    sqlite3* db_ = nullptr;
    bool writable_ = true;
    std::string salt_;  // of the file's key, hexadecimal; empty in memory
    bool layoutChanged_ = false;
    std::chrono::steady_clock::time_point busySince_;
    std::unordered_set<SqliteStatement*> live_;
    std::list<CachedStatement> recent_;  // last used first
    std::unordered_map<std::string_view, std::list<CachedStatement>::iterator> recentByText_;
    std::map<std::int64_t, sql::IdSetPtr> idSets_;
};

class SqliteStatement final : public Statement {
 public:
    SqliteStatement(SqliteStore* store, sqlite3_stmt* statement);
    ~SqliteStatement() override;

    void bind(int index, const Value& value) override;
    void bindInteger(int index, std::int64_t value) override;
    void bindRowKey(int index, std::int64_t key) override;
    void bindNumbers(int index, sql::IdSetPtr numbers) override;
    std::int64_t run() override;
    void readKeys(std::vector<std::int64_t>& out, int columns) override;
    void readBlocks(RowBlock& block, const std::function<void()>& take) override;
    std::size_t readRows(RowBlock& block, int skip, std::vector<std::int64_t>* keys, std::size_t limit,
                         const std::vector<int>* places) override;

    void finalize() noexcept;  // the store closes: the statement is dead from here on

 private:
    friend class SqliteStore;
    bool step();
    void check() const;
    bool isSorted() const { return sorted_.keys > 0; }
    void gather(const RowGatherer::Take& take);
    template <typename Take>
    void eachRow(const Take& take);
    KeyOrder gatherSorted(const RowGatherer::Take& take);
    void readSortedKeys(std::vector<std::int64_t>& out, int columns);
    void readSortedRows(RowBlock& block);

    SqliteStore* store_;
    sqlite3_stmt* statement_;
    bool gathers_;  // hands its rows to the store's gatherer
    SortedColumns sorted_;
};

// For tests of a full disk and of a power failure: files are reached by the operating-system layer registered
// under this name; empty: the usual one.
void setFileLayer(std::string name);

using sql::writing::quotedName;
using sql::writing::quotedText;
bool isSystemTable(std::string_view name);            // not for those who use the file
inline constexpr const char* kHiddenKey = "dao_row";  // the key of a table that has no counter of its own

void installFunctions(sqlite3* db);                   // functions.cpp
void installIdSets(sqlite3* db, SqliteStore* store);  // idset.cpp
void installLinks(sqlite3* db);                       // links.cpp

}  // namespace dao::driver
