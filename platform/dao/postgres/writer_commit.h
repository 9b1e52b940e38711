#pragma once

#include <functional>
#include <vector>

#include "platform/dao/postgres/link.h"

namespace dao::postgres {

// What a transaction has written, and whether the server has it: this workstation's row in dao.writers is
// raised with every commit, and tells of one whose answer was lost.
class WriterCommit {
 public:
    explicit WriterCommit(Link& link) : link_(link) {}

    void forget() { written_ = Written::kNothing; }
    void note(Written what);
    // What goes to the server before the commit; nothing where nothing was written.
    std::vector<Step> raising(Connection& server) const;
    // Runs what commits. It answers whether the row was raised, and so does this. Where the connection is
    // lost in it the server is asked for a minute what came of it: errDiskIo, with a sentence that says so,
    // where nothing of it was written, or it cannot be known.
    bool commit(const std::function<bool()>& commit);

 private:
    void needCommitted() const;
    std::optional<bool> askWhether() const;

    Link& link_;
    Written written_ = Written::kNothing;
};

}  // namespace dao::postgres
