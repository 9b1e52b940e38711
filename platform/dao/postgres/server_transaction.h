#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/dao/driver.h"
#include "platform/dao/postgres/link.h"
#include "platform/dao/postgres/read_steps.h"

namespace dao::postgres {

// The transaction that a store has open on its server. One that only reads begins with its first statement
// and sees one state of the shop throughout; one that writes raises this workstation's row in dao.writers
// when it is committed.
//
// A statement that the server refuses fails alone: what the transaction has written before it stands. A
// connection that was lost takes its transaction with it, and nothing more is written or read in that one.
class ServerTransaction final : public driver::Transaction {
 public:
    explicit ServerTransaction(Link& link) : link_(link) {}

    void beginWrite() override;
    void beginRead() override;
    void commit() override;
    void rollback() noexcept override;
    bool isOpen() const override;
    void savepoint(int level) override;
    void release(int level) override;
    void rollbackTo(int level) noexcept override;

    // errDiskIo where the open transaction went with an earlier one.
    Connection& connection();
    // It has been asked for, and the next statement begins it with stepsAhead().
    bool beginsWithNext() const { return beginAhead_; }
    std::vector<Step> stepsAhead();
    // The first of these is done. False where there were none.
    bool noteBegun();
    // False: a question stands for itself, and may be asked twice.
    bool isBegun() const { return begunIn_.has_value(); }

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
    bool isSame() const;  // the connection that the open transaction was begun on
    void needCommitted();

    Link& link_;
    std::optional<std::int64_t> begunIn_;  // the link's session
    bool beginAhead_ = false;
    bool reading_ = false;
    Written written_ = Written::kNothing;
    bool sound_ = false;  // nothing was written since its last savepoint
    std::optional<Versions> seen_;
};

}  // namespace dao::postgres
