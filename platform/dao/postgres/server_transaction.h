#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/dao/driver.h"
#include "platform/dao/postgres/link.h"
#include "platform/dao/postgres/read_steps.h"
#include "platform/dao/postgres/transaction_begin.h"
#include "platform/dao/postgres/writer_commit.h"

namespace dao::postgres {

// The transaction that a store has open on its server. One that only reads begins with its first statement
// and sees one state of the shop throughout; one that writes raises this workstation's row in dao.writers
// when it is committed.
//
// A statement that the server refuses fails alone: what the transaction has written before it stands. A
// connection that was lost takes its transaction with it, and nothing more is written or read in that one.
class ServerTransaction final : public driver::Transaction {
 public:
    explicit ServerTransaction(Link& link) : link_(link), beginning_(link), writes_(link) {}

    void beginWrite() override;
    void beginRead() override;
    void commit() override;
    void rollback() noexcept override;
    bool isOpen() const override;
    void savepoint(int level) override;
    void release(int level) override;
    void rollbackTo(int level) noexcept override;

    // errDiskIo where the open transaction went with an earlier one.
    Connection& connection() { return beginning_.connection(); }
    TransactionBegin& beginning() { return beginning_; }

    void noteWritten(Written what);
    void noteHeld() { sound_ = false; }  // a row: going back would let it go
    // A change that is a transaction by itself. Answers what `change` does, whether it has written.
    bool writeAlone(const std::function<bool()>& change);
    // After a refused statement, which nothing more would be taken behind.
    void restore() noexcept;

    // What the transaction that reads sees; nothing where it has not looked, or the open one does not read.
    std::optional<Versions> seen() const;
    bool isReading() const { return reading_ && isOpen(); }
    void noteSeen(const std::optional<Versions>& versions) { seen_ = versions; }

 private:
    void begin(const std::string& text);

    Link& link_;
    TransactionBegin beginning_;
    WriterCommit writes_;
    bool reading_ = false;
    bool sound_ = false;  // nothing was written since its last savepoint
    std::optional<Versions> seen_;
};

}  // namespace dao::postgres
