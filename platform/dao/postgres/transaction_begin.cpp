#include "platform/dao/postgres/transaction_begin.h"

#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/read_steps.h"

namespace dao::postgres {

bool TransactionBegin::isHere() const {
    return session_ && link_.isConnected() && *session_ == link_.session();
}

// What is left of a lost transaction must not be written alone.
Connection& TransactionBegin::connection() {
    if (session_ && !isHere()) {
        fail(errDiskIo, "The transaction was lost by an earlier error; it can only be rolled back.");
    }
    return link_.connection();
}

void TransactionBegin::putAhead() {
    ahead_ = true;
    noteHere();
}

// The connection that it was asked for on may be gone: nothing had begun there.
std::vector<Step> TransactionBegin::stepsAhead() {
    if (!ahead_) {
        return {};
    }
    session_.reset();
    return beginningOfRead(link_.writer().number(connection()));
}

bool TransactionBegin::noteBegun() {
    const bool isDue = takeBack();
    if (isDue) {
        noteHere();
    }
    return isDue;
}

bool TransactionBegin::takeBack() {
    return std::exchange(ahead_, false);
}

}  // namespace dao::postgres
