#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/dao/columns.h"
#include "platform/dao/current_row.h"
#include "platform/dao/recordset_kinds.h"

namespace dao {

class FetchedRow;
class RowEditing;

// The rows of a record set, counted from 0, and those of them that have been read.
class RowSource {
 public:
    RowSource() = default;
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;
    virtual ~RowSource() = default;

    const Columns& columns() const { return columns_; }
    CurrentRow& current() { return row_; }

    virtual void open() = 0;                              // runs the statement, or runs it again
    virtual void release() noexcept = 0;                  // frees the rows; no other call follows
    virtual std::unique_ptr<RowSource> copy() const = 0;  // the same rows, none of them fetched
    virtual std::size_t count() const = 0;

    // Where the row then lies among those that have been read; nothing: somebody has deleted it.
    virtual std::optional<std::size_t> fetch(std::size_t row) = 0;
    // The row has been fetched without some of its fields; the next fetch has them all.
    virtual void fetchUnread(std::size_t) {}
    // The next fetch looks into the file, although it may have the row. True: the current row is to be
    // fetched again.
    virtual bool distrust() { return false; }
    // Whether the row is there without a look into the file.
    virtual bool surelyStands(std::size_t) const { return false; }

    virtual std::optional<std::size_t> findRow(std::string_view criterion) = 0;
    virtual dao::Bookmark bookmarkOf(std::size_t row) const = 0;
    virtual std::optional<std::size_t> rowOf(const dao::Bookmark& place) const = 0;

    // What changes these rows, of which `row` is the current one; nullptr: nothing does.
    virtual std::unique_ptr<RowEditing> editing(FetchedRow& row) = 0;

 protected:
    void setColumns(std::vector<sql::ResultColumn> columns) {
        columns_.assign(std::move(columns));
        row_.setColumns(columns_.all().size());
    }

    Columns columns_;
    CurrentRow row_;
};

}  // namespace dao
