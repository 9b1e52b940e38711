#pragma once

#include "platform/dao/driver.h"
#include "platform/dao/sqlite/store_layout.h"

namespace dao::driver {

// The transaction that a store has open on its file: the library's own. Whoever writes holds the file's write
// lock from its beginning; one that only reads sees one state of the shop from its first statement on.
class SqliteTransaction final : public Transaction {
 public:
    // Both outlive it.
    SqliteTransaction(SqliteConnection& connection, StoreLayout& layout)
        : connection_(connection), layout_(layout) {}

    void beginWrite() override;  // errReadOnly where the store cannot be written
    void beginRead() override;
    void commit() override;
    void rollback() noexcept override;
    bool isOpen() const override;
    void savepoint(int level) override;
    void release(int level) override;
    void rollbackTo(int level) noexcept override;

 private:
    SqliteConnection& connection_;
    StoreLayout& layout_;
};

}  // namespace dao::driver
