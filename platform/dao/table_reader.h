#pragma once

#include <cstdint>

#include "platform/dao/driver.h"
#include "platform/dao/file_catalog.h"
#include "platform/dao/key_list.h"
#include "platform/dao/row_block.h"

namespace dao {

// The rows of one table, some at a time, in the order of their keys; where a table has no key of its own, in
// the order in which they were added. Within a transaction of the caller's, so that they are of one moment.
class TableReader {
 public:
    // `table` is one of the catalog's; both outlive the reader.
    TableReader(driver::Store& store, const FileCatalog& catalog, const sql::TableInfo& table);

    std::size_t size() const { return keys_.size(); }  // of the whole table, in rows
    const RowBlock& block() const { return block_; }   // a column for each of the table's, in their order
    // Of a row of the block.
    std::int64_t key(std::size_t row) const { return keys_.key(at_ - block_.rows() + row, 0); }

    // The next rows are in the block; false where there are none. errCannotOpen where a row is not there that
    // the table's own list of keys names.
    bool next();

 private:
    driver::Store& store_;
    sql::WrittenSelect select_;
    KeyList keys_;
    std::size_t at_ = 0;
    RowBlock block_;
};

}  // namespace dao
