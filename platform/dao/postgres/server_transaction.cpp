#include "platform/dao/postgres/server_transaction.h"

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/postgres/loss.h"

namespace dao::postgres {
namespace {

// Where a transaction goes back to when a statement in it is refused.
constexpr const char* kSound = "SAVEPOINT dao_sound";

std::string levelName(int level) {
    return "dao_level" + std::to_string(level);
}

}  // namespace

// The server takes nothing more in a transaction in which it has refused a statement. What had been written
// before is given up only by whoever wrote it.
void ServerTransaction::restore() noexcept {
    if (!sound_ || !beginning_.isHere() || connection().transactionState() != TransactionState::kFailed) {
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
    writes_.note(what);
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
    beginning_.end();
    if (!withoutLoss(start)) {
        start();
    }
    beginning_.noteHere();
    seen_.reset();
    writes_.forget();
}

void ServerTransaction::beginWrite() {
    begin("BEGIN;" + std::string(kSound));
    reading_ = false;
    sound_ = true;
}

// Its first statement begins it.
void ServerTransaction::beginRead() {
    beginning_.putAhead();
    reading_ = true;
    sound_ = false;
    writes_.forget();
    seen_.reset();
}

void ServerTransaction::commit() {
    if (!isOpen() || connection().transactionState() == TransactionState::kFailed) {
        fail(errDiskIo, "The transaction was lost by an earlier error; nothing of it was written.");
    }
    std::vector<Step> steps = writes_.raising(connection());
    steps.push_back({"COMMIT", {}, false});
    const Unleavable whole;
    writes_.commit([&] {
        std::size_t done = 0;
        connection().runAll(steps, done);
        return true;
    });
    beginning_.end();
}

bool ServerTransaction::writeAlone(const std::function<bool()>& change) {
    writes_.note(Written::kRows);
    return writes_.commit(change);
}

void ServerTransaction::rollback() noexcept {
    const Unleavable whole;
    const bool open = !beginning_.takeBack() && isOpen();
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
    beginning_.end();
    writes_.forget();
    seen_.reset();
}

bool ServerTransaction::isOpen() const {
    if (beginning_.isAhead()) {
        return true;
    }
    if (!beginning_.isHere()) {
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
