#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/dao/database_impl.h"
#include "platform/dao/row_source.h"

namespace dao {

// All rows as they were at the opening. Nobody's changes show, nobody's deletions tear a hole.
class Snapshot final : public RowSource {
 public:
    Snapshot(std::shared_ptr<DatabaseImpl> database, std::string statement);
    ~Snapshot() override;

    void open() override;
    // Instead of it: the rows are those of a block, and then of the next one. `begin` is called when the
    // columns are known, `atBlock` at each block.
    void readBlocks(const std::function<void()>& begin, const std::function<void()>& atBlock);
    void release() noexcept override;
    std::unique_ptr<RowSource> copy() const override;
    std::size_t count() const override { return row_.block().rows(); }
    std::optional<std::size_t> fetch(std::size_t row) override { return row; }
    std::optional<std::size_t> findRow(std::string_view criterion) override;
    dao::Bookmark bookmarkOf(std::size_t row) const override { return {static_cast<std::int64_t>(row)}; }
    std::optional<std::size_t> rowOf(const dao::Bookmark& place) const override;
    std::unique_ptr<RowEditing> editing(FetchedRow& row) override;

 private:
    CompiledPtr compileFor(RowBlock& rows) const;  // whose columns are the statement's then
    std::shared_ptr<driver::Statement> prepared(const Compiled& compiled) const;
    struct Searchable;  // the rows as a table of a store in memory
    void makeSearchable();
    std::optional<std::size_t> findNumber(std::size_t column, std::int64_t number) const;

    std::shared_ptr<DatabaseImpl> database_;
    std::string statement_;
    std::unique_ptr<Searchable> searchable_;
};

}  // namespace dao
