#include "platform/dao/postgres/server_transaction.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/postgres/loss.h"

namespace dao::postgres {
namespace {

// How long a commit whose answer was lost is asked after: within a minute a server notices that a connection
// is dead.
constexpr std::chrono::seconds kToLearn{60};
constexpr std::chrono::milliseconds kNap{100};

// Where a transaction goes back to when a statement in it is refused.
constexpr const char* kSound = "SAVEPOINT dao_sound";

std::string levelName(int level) {
    return "dao_level" + std::to_string(level);
}

}  // namespace

// What is left of a lost transaction must not be written alone.
Connection& ServerTransaction::connection() {
    if (begunIn_ && !isSame()) {
        fail(errDiskIo, "The transaction was lost by an earlier error; it can only be rolled back.");
    }
    return link_.connection();
}

bool ServerTransaction::isSame() const {
    return begunIn_ && link_.isConnected() && *begunIn_ == link_.session();
}

std::vector<Step> ServerTransaction::stepsAhead() {
    if (!beginAhead_) {
        return {};
    }
    begunIn_.reset();
    return beginningOfRead(link_.writer().number(connection()));
}

bool ServerTransaction::noteBegun() {
    if (!std::exchange(beginAhead_, false)) {
        return false;
    }
    begunIn_ = link_.session();
    return true;
}

// The server takes nothing more in a transaction in which it has refused a statement. What had been written
// before is given up only by whoever wrote it.
void ServerTransaction::restore() noexcept {
    if (!sound_ || !isSame() || connection().transactionState() != TransactionState::kFailed) {
        return;
    }
    const QuietErrors quiet;
    try {
        connection().execute("ROLLBACK TO " + std::string(kSound));
    } catch (const Error&) {
        rollback();
    }
}

void ServerTransaction::noteWritten(Written what) {
    written_ = std::max(written_, what);
    sound_ = false;
}

std::optional<Versions> ServerTransaction::seen() const {
    return isReading() ? seen_ : std::nullopt;
}

// Where the connection was lost while nobody used it, nothing had begun yet.
void ServerTransaction::begin(const std::string& text) {
    const auto start = [&] {
        Connection& server = link_.connection();
        link_.writer().number(server);
        server.execute(text);
    };
    begunIn_.reset();
    if (!withoutLoss(start)) {
        start();
    }
    begunIn_ = link_.session();
    seen_.reset();
    written_ = Written::kNothing;
}

void ServerTransaction::beginWrite() {
    begin("BEGIN;" + std::string(kSound));
    reading_ = false;
    sound_ = true;
}

// Its first statement begins it.
void ServerTransaction::beginRead() {
    beginAhead_ = true;
    begunIn_ = link_.session();
    reading_ = true;
    sound_ = false;
    written_ = Written::kNothing;
    seen_.reset();
}

void ServerTransaction::commit() {
    if (!isOpen() || connection().transactionState() == TransactionState::kFailed) {
        fail(errDiskIo, "The transaction was lost by an earlier error; nothing of it was written.");
    }
    std::vector<Step> steps;
    if (written_ != Written::kNothing) {
        link_.writer().foreseeRaise(connection());
        steps.push_back(link_.writer().raising(connection(), written_));
    }
    steps.push_back({"COMMIT", {}, false});
    std::size_t done = 0;
    const Unleavable whole;
    if (!withoutLoss([&] { connection().runAll(steps, done); })) {
        needCommitted();
    } else if (written_ != Written::kNothing) {
        link_.writer().settle();
    }
    begunIn_.reset();
    written_ = Written::kNothing;
}

bool ServerTransaction::writeAlone(const std::function<bool()>& change) {
    written_ = Written::kRows;
    bool changed = true;
    if (!withoutLoss([&] { changed = change(); })) {
        needCommitted();
    } else if (changed) {
        link_.writer().settle();
    }
    written_ = Written::kNothing;
    return changed;
}

// The server may have written all of it and could not say so any more.
void ServerTransaction::needCommitted() {
    const std::string where =
        "The server of " + placeText(link_.address()) + " was lost in the middle of a change; ";
    std::optional<bool> committed;
    const auto until = Clock::now() + kToLearn;
    while (written_ != Written::kNothing && !committed && Clock::now() < until) {
        const QuietErrors quiet;
        try {
            committed = link_.writer().wasCommitted(link_.anyConnection());
        } catch (const Error&) {
            // It is not there yet.
        }
        if (!committed) {
            std::this_thread::sleep_for(kNap);
        }
    }
    if (written_ == Written::kNothing || committed == false) {
        fail(errDiskIo, where + "nothing of it was written.");
    }
    if (!committed) {
        fail(errDiskIo, where + "whether it was written is not known: look before doing it again.");
    }
}

void ServerTransaction::rollback() noexcept {
    const Unleavable whole;
    const bool open = !std::exchange(beginAhead_, false) && isOpen();
    if (open) {
        const QuietErrors quiet;
        try {
            if (reading_) {
                connection().tell({"ROLLBACK", {}}, TransactionState::kNone);
            } else {
                connection().execute("ROLLBACK");
            }
        } catch (const Error&) {
            // The connection is gone; so is the transaction.
        }
    }
    begunIn_.reset();
    written_ = Written::kNothing;
    seen_.reset();
}

bool ServerTransaction::isOpen() const {
    if (beginAhead_) {
        return true;
    }
    if (!isSame()) {
        return false;
    }
    const TransactionState state = link_.connection().transactionState();
    return state == TransactionState::kOpen || state == TransactionState::kFailed;
}

void ServerTransaction::savepoint(int level) {
    connection().execute("RELEASE " + std::string(kSound) + ";SAVEPOINT " + levelName(level) + ';' + kSound);
    sound_ = true;
}

void ServerTransaction::release(int level) {
    connection().execute("RELEASE SAVEPOINT " + levelName(level) + ';' + kSound);
    sound_ = true;
}

void ServerTransaction::rollbackTo(int level) noexcept {
    if (!isOpen()) {
        return;
    }
    const Unleavable whole;
    const QuietErrors quiet;
    try {
        const std::string name = levelName(level);
        connection().execute("ROLLBACK TO SAVEPOINT " + name + ";RELEASE SAVEPOINT " + name + ';' + kSound);
        sound_ = true;
    } catch (const Error&) {
        rollback();
    }
}

}  // namespace dao::postgres
