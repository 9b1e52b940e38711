#pragma once

#include <sqlcipher/sqlite3.h>

#include <vector>

#include "platform/dao/driver.h"
#include "platform/dao/key_order.h"
#include "platform/dao/sqlite/library.h"
#include "platform/dao/sqlite/sorted_columns.h"
#include "platform/dao/sqlite/table_halves.h"

namespace dao::driver {

class SqliteStatement final : public Statement {
 public:
    SqliteStatement(LibraryHandle& library, sqlite3_stmt* statement);
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

    // Of a statement with SortedColumns: its rows from key to key as they come, and what puts them in order.
    KeyOrder gatherRows(const KeySpan& span, RowBlock& block);

    void finalize() noexcept;  // the connection closes: the statement is dead from here on

 private:
    bool step();
    void check() const;
    bool isSorted() const { return sorted_.keys > 0; }
    void gather(const RowGatherer::Take& take);
    template <typename Take>
    void eachRow(const Take& take);
    KeyOrder gatherSorted(const KeySpan& span, const RowGatherer::Take& take);
    KeyOrder gatherByTwo(const TableHalves& halves, RowBlock& block);
    void readSortedKeys(std::vector<std::int64_t>& out, int columns);
    void readSortedRows(RowBlock& block);

    LibraryHandle* library_;
    sqlite3_stmt* statement_;
    bool gathers_;  // hands its rows to the library's gatherer
    SortedColumns sorted_;
};

}  // namespace dao::driver
