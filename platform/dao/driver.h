#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dao/definitions.h"
#include "platform/dao/key_list.h"
#include "platform/dao/row_block.h"
#include "platform/sql/types.h"
#include "platform/sql/writer.h"

// The narrow gate to a store. Everything one kind of store does in its own way lies behind these two classes;
// the record sets, the locks and the stored queries above them know no other.
namespace dao::driver {

// In a list of row keys: the outer side of a join has no row there.
inline constexpr std::int64_t kNoRow = INT64_MIN;
// Where a statement has a column that nobody asked for: see Statement::readRows.
inline constexpr int kNowhere = -2;

// Rows of a block, for whoever takes a great many of them one block after the other.
inline constexpr std::size_t kRowsAtOnce = 2000;

// A prepared statement. Every call that reads leaves it reset, so that no read lock outlives the call.
class Statement {
 public:
    Statement() = default;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    virtual ~Statement() = default;

    virtual void bind(int index, const Value& value) = 0;  // from 1
    virtual void bindInteger(int index, std::int64_t value) = 0;
    virtual void bindRowKey(int index, std::int64_t key) = 0;  // kNoRow: Null
    // A set of numbers, where the store takes sets as values.
    virtual void bindNumbers(int index, sql::IdSetPtr numbers) = 0;

    // Runs it to the end. The number of rows changed.
    virtual std::int64_t run() = 0;
    // All rows, as numbers, `columns` of each end to end; Null becomes kNoRow.
    virtual void readKeys(std::vector<std::int64_t>& out, int columns) = 0;
    // Appends rows to `block`, at most `limit`, skipping the first `skip` columns of each. The first column
    // of each row goes to `keys` where `skip` is 1. `places` tells where behind the skipped ones a column of
    // the block stands in the statement: -1 is the last of those skipped, and what stands at kNowhere is left
    // unread; without it they stand in order. The number of rows read.
    virtual std::size_t readRows(RowBlock& block, int skip = 0, std::vector<std::int64_t>* keys = nullptr,
                                 std::size_t limit = SIZE_MAX, const std::vector<int>* places = nullptr) = 0;
    // Has a store that is far begin to answer the readRows that comes next, for what is bound now. Not within
    // a transaction. Whatever else is asked of the store before takes it back: then readRows asks anew.
    virtual void askAhead() {}
    // Takes in what has come of that by now, so that the store can go on sending.
    virtual void takeIn() {}
    // All rows, some at a time: `take` is called whenever there are some in the block, which is emptied then.
    // It asks nothing of the store.
    virtual void readBlocks(RowBlock& block, const std::function<void()>& take) = 0;
    // The first column of the first row; nothing where there is no row.
    std::optional<Value> scalar(Type type);
};

// Binds what a written statement asks for before its row keys; the index of the first of these.
int bindParameters(Statement& statement, const std::vector<sql::Parameter>& parameters);

struct FieldValue {
    std::string_view field;
    const Value* value;
};

// A row that is to be changed if it still is as somebody has read it.
struct RowChange {
    std::string_view table;
    std::int64_t key = 0;
    std::vector<FieldValue> was;  // as it was read
    std::vector<FieldValue> fields;
};

// An index that somebody has asked for: those of keys and relations come by themselves.
struct IndexRow {
    std::string table;
    std::string field;
    bool unique = false;
};

struct StoredQueryRow {
    std::string name;
    std::int64_t version;
};

// What a store is made of.
class Part {
 public:
    Part() = default;
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    virtual ~Part() = default;
};

// The one that a store has open at a time.
class Transaction : public Part {
 public:
    // The write lock, waiting no longer than the engine's lock timeout: 3260.
    virtual void beginWrite() = 0;
    virtual void beginRead() = 0;
    virtual void commit() = 0;             // on an error the transaction stands and must be rolled back
    virtual void rollback() noexcept = 0;  // does nothing without a transaction
    virtual bool isOpen() const = 0;
    virtual void savepoint(int level) = 0;
    virtual void release(int level) = 0;
    virtual void rollbackTo(int level) noexcept = 0;
};

class RowLocks : public Part {
 public:
    // Keeps others from editing the row until unlockRow, called as often. Bounded like beginWrite: 3260. May
    // be put off until something is read, which then fails with it.
    virtual void lockRow(const std::string& table, std::int64_t key) = 0;
    virtual void unlockRow(const std::string& table, std::int64_t key) noexcept = 0;
    // Keeps the row as it is, against whoever writes without an Edit too, to the end of the transaction.
    // False where it is gone.
    virtual bool holdRow(const std::string& table, std::int64_t key) = 0;
};

// What the shop is made of: tables, fields, relations, indexes.
class Definitions : public Part {
 public:
    virtual std::int64_t schemaVersion() = 0;  // differs once tables have changed
    virtual int form() = 0;                    // see Database::Form
    virtual void setForm(int form) = 0;
    virtual std::vector<sql::TableInfo> tables() = 0;
    virtual std::vector<Relation> relations() = 0;
    virtual void createTable(const TableDef& table) = 0;
    virtual void dropTable(const std::string& table) = 0;
    virtual void createRelation(const Relation& relation) = 0;
    virtual void createIndex(const std::string& table, const std::string& field, bool unique) = 0;
    virtual std::vector<IndexRow> indexes() = 0;
};

class Counters : public Part {
 public:
    // The next number of a table's counter, raised for all others too; never below `above` + 1.
    virtual std::int64_t raiseCounter(const std::string& table, std::int64_t above) = 0;
    // Whether a counter stands apart from transactions: raised, it stays raised whatever becomes of them.
    // Otherwise raiseCounter is called within one.
    virtual bool countsApart() const = 0;
    // The highest number that it has given; 0: none yet. A table without a counter of its own has a hidden
    // one.
    virtual std::int64_t highestNumber(const std::string& table) = 0;
    virtual void setHighestNumber(const std::string& table, std::int64_t number) = 0;
};

// The rows of tables, by their keys.
class Rows : public Part {
 public:
    virtual std::int64_t dataVersion() = 0;  // differs once another process has written
    // The keys of all rows of a table, ascending, by whatever road is shortest.
    virtual KeyList readAllKeys(const std::string& table) = 0;
    // Those of `numbers`, which ascend, that the table has rows with the keys of, ascending; nothing where
    // asking for each of them is the shortest road.
    virtual std::optional<KeyList> readKeysAmong(const std::string&, const sql::IdSet&) { return {}; }
    virtual std::int64_t insertRow(const std::string& table, std::span<const FieldValue> fields) = 0;
    // All rows of the block, whose columns are `fields`, in its order.
    virtual void insertRows(const std::string& table, std::span<const std::string_view> fields,
                            const RowBlock& rows) = 0;
    virtual bool updateRow(const std::string& table, std::int64_t key,
                           std::span<const FieldValue> fields) = 0;
    virtual bool deleteRow(const std::string& table, std::int64_t key) = 0;
    // All of a change outside of any transaction, where the store can do that at once. False: nothing was
    // written, and why is to be found out step by step.
    virtual bool changeRow(const RowChange&) { return false; }
};

class StoredQueries : public Part {
 public:
    virtual std::vector<StoredQueryRow> queries() = 0;  // in order of name
    // The version of a stored query's text: another one each time the text is written. 0: no such query.
    virtual std::int64_t queryVersion(std::string_view name) = 0;
    virtual std::optional<std::string> queryText(std::string_view name) = 0;
    // New or over the old one. The text's version.
    virtual std::int64_t writeQuery(std::string_view name, std::string_view text) = 0;
    virtual bool dropQuery(std::string_view name) = 0;
};

// A connection to one shop's records. One for a process and shop.
class Store : public Part {
 public:
    virtual bool writable() const = 0;
    virtual const sql::Writer& writer() const = 0;

    virtual std::shared_ptr<Statement> prepare(std::string_view text) = 0;
    // The same, from a small cache of those used last.
    virtual std::shared_ptr<Statement> cached(const std::string& text) = 0;

    virtual Transaction& transaction() = 0;
    // Where an Edit holds its row alone. nullptr: it holds the write lock of the whole, from beginWrite on.
    virtual RowLocks* rowLocks() = 0;
    virtual Definitions& definitions() = 0;
    virtual Counters& counters() = 0;
    virtual Rows& rows() = 0;
    virtual StoredQueries& storedQueries() = 0;

    // Numbers that a statement of this store refers to; a store that binds them has no use for it.
    virtual void setIdSet(int number, sql::IdSetPtr set) = 0;
    virtual void dropIdSet(int number) = 0;

    // Whether every question takes its time on the way: then nothing is asked that can be done without.
    virtual bool isFar() const { return false; }
    // How often it was asked for something over a network and waited for, since it was opened. Each time
    // takes as long as the way there and back.
    virtual std::int64_t roundTrips() const { return 0; }
};

}  // namespace dao::driver
