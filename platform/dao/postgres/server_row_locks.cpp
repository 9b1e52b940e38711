#include "platform/dao/postgres/server_row_locks.h"

#include "platform/dao/failure.h"
#include "platform/dao/postgres/quoting.h"

namespace dao::postgres {
namespace {

// One number for a row of a table, for the locks that sessions keep: two rows that share it merely wait for
// each other now and then.
std::int64_t lockNumber(const std::string& table, std::int64_t key) {
    constexpr std::uint32_t kPrime = 16777619;
    std::uint32_t hash = 2166136261U;
    for (const char c : table) {
        hash = (hash ^ static_cast<unsigned char>(c)) * kPrime;
    }
    return static_cast<std::int64_t>(std::uint64_t{hash} << 32 |
                                     (static_cast<std::uint64_t>(key) & 0xFFFFFFFFU));
}

}  // namespace

void ServerRowLocks::lockRow(const std::string& table, std::int64_t key) {
    session_.locks().want(lockNumber(table, key));
}

void ServerRowLocks::unlockRow(const std::string& table, std::int64_t key) noexcept {
    const std::int64_t number = lockNumber(table, key);
    LockQueue& locks = session_.locks();
    const Link& link = session_.link();
    if (locks.takeBack(number) || !locks.letGo(number, link.session()) || !link.isConnected()) {
        return;
    }
    const QuietErrors quiet;
    try {
        unlock(number);
    } catch (const Error&) {
        // Then the connection is gone, and the lock with it.
    }
}

// Nobody waits for it; where a transaction has failed the server would not take it without being set right.
void ServerRowLocks::unlock(std::int64_t number) {
    Connection& server = session_.transaction().connection();
    const Step unlock{"SELECT pg_advisory_unlock($1)", Parameters().integer8(number)};
    if (const TransactionState state = server.transactionState(); state != TransactionState::kFailed) {
        server.tell(unlock, state);
    } else {
        session_.run(unlock.text, unlock.parameters);
    }
}

bool ServerRowLocks::holdRow(const std::string& table, std::int64_t key) {
    const Result found =
        session_.run("SELECT 1 FROM " + tableName(table) + " WHERE " +
                         keyColumn(definitions_.described(table)) + " = $1 FOR NO KEY UPDATE",
                     Parameters().integer8(key));
    session_.transaction().noteHeld();
    return found.rows() == 1;
}

}  // namespace dao::postgres
