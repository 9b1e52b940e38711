#pragma once

#include <memory>

#include "platform/dao/at_row.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/recordset_impl.h"

namespace dao {

// All rows as they were at the opening. Nobody's changes show, nobody's deletions tear a hole.
class Snapshot final : public RecordsetImpl {
 public:
    Snapshot(std::shared_ptr<DatabaseImpl> database, RecordsetType type, std::string statement);
    ~Snapshot() override;
    // See walkRows. The record set is a snapshot of a few rows, and then of the next ones.
    static void walk(const std::shared_ptr<DatabaseImpl>& database, std::string statement,
                     const BeginWalk& begin);

 protected:
    void open() override;
    std::shared_ptr<RecordsetImpl> copy() const override;
    void release() noexcept override;
    std::size_t count() const override { return row_.block().rows(); }
    void fetch(std::size_t row) override { row_.lieAt(row); }
    std::optional<std::size_t> findRow(std::string_view criterion) override;
    dao::Bookmark bookmarkOf(std::size_t row) const override { return {static_cast<std::int64_t>(row)}; }
    std::optional<std::size_t> rowOf(const dao::Bookmark& place) const override;

 private:
    Snapshot(const Snapshot& of);
    Snapshot(std::shared_ptr<DatabaseImpl> database, std::string statement);  // not opened

    CompiledPtr compileFor(RowBlock& rows) const;  // whose columns are the statement's then
    std::shared_ptr<driver::Statement> prepared(const Compiled& compiled) const;
    struct Searchable;  // the rows as a table of a store in memory
    void makeSearchable();
    std::optional<std::size_t> findNumber(std::size_t column, std::int64_t number) const;

    std::string statement_;
    std::unique_ptr<Searchable> searchable_;
};

}  // namespace dao
