#pragma once

#include <cstdint>
#include <optional>

#include "platform/dao/postgres/connection.h"

namespace dao::postgres {

// What a transaction has written: stored queries are a workstation's own and change nothing for the others.
enum class Written { kNothing, kQueries, kRows };

// This workstation's row in the table of writers: its version goes up with the rows that are written here, in
// the same transaction, and its count of commits with everything that is written. So others see at one glance
// that something has changed, and this workstation learns whether a commit whose answer was lost on the way
// has come about.
//
// The number of the row is held by a lock, and nobody else takes it within an hour of the last write: a
// workstation that comes back after a loss finds its row as it left it.
class WriterRow {
 public:
    WriterRow();

    // Nobody else's while the connection lasts. errLocked where thousands are in.
    int number(Connection& server);
    // The connection that held the number is gone.
    void letGo() {
        held_ = false;
        commits_.reset();
    }

    // What raises it in the open transaction, together with its commit. foreseeRaise comes first.
    Step raising(Connection& server, Written written);
    // For a statement that raises it by itself, with what it writes: the number, and the mark that it leaves.
    std::int64_t mark() const { return mark_; }
    // Before the row is raised. Asks for its count of commits where it is not known.
    void foreseeRaise(Connection& server);
    // The transaction that was last raised in has been committed.
    void settle() { commits_ = raisedTo_; }
    // On a new connection: whether the transaction that was last raised in was committed. Nothing: it cannot
    // be told yet, since the old connection still stands on the server, or any more.
    std::optional<bool> wasCommitted(Connection& server);

 private:
    bool tryHold(Connection& server, int number);

    std::int64_t mark_;  // ours alone: tells our writing from that of another who had the number
    std::optional<int> number_;
    bool held_ = false;
    std::int64_t raisedTo_ = 0;
    std::optional<std::int64_t> commits_;  // as they stand on the server
};

}  // namespace dao::postgres
