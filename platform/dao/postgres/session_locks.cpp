#include "platform/dao/postgres/session_locks.h"

#include <chrono>
#include <thread>

#include "platform/dao/failure.h"

namespace dao::postgres {
namespace {

// What the first of a lock's two numbers stands for.
constexpr int kPresence = 76001;
constexpr int kNumbers = 76002;

// Whoever comes in the middle of a compaction waits for it.
constexpr std::chrono::milliseconds kPatience{1000};
constexpr std::chrono::milliseconds kNap{10};

}  // namespace

bool SessionLocks::tryLock(int space, int number, bool shared) {
    const Result answer = server_.anyConnection().run(
        shared ? "SELECT pg_try_advisory_lock_shared($1, $2)" : "SELECT pg_try_advisory_lock($1, $2)",
        Parameters().integer4(space).integer4(number));
    return answer.boolean(0, 0);
}

void SessionLocks::unlock(int space, int number, bool shared) noexcept {
    if (!server_.isConnected()) {
        return;  // the server has let go by itself
    }
    const QuietErrors quiet;
    try {
        server_.anyConnection().run(
            shared ? "SELECT pg_advisory_unlock_shared($1, $2)" : "SELECT pg_advisory_unlock($1, $2)",
            Parameters().integer4(space).integer4(number));
    } catch (const Error&) {
        return;  // then the connection is gone, and the lock with it
    }
}

void SessionLocks::takeAgain() {
    if (shared_ > 0 && !tryLock(kPresence, 0, true)) {
        fail(errExclusiveByOther);
    }
    if (exclusive_ > 0 && !tryLock(kPresence, 0)) {
        fail(errFileInUse);
    }
    for (const int number : numbers_) {
        if (!lost_.contains(number) && !tryLock(kNumbers, number)) {
            lost_.insert(number);
        }
    }
}

void SessionLocks::enterShared() {
    server_.anyConnection();
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (shared_ == 0 && !tryLock(kPresence, 0, true)) {
        if (std::chrono::steady_clock::now() >= deadline) {
            fail(errExclusiveByOther);
        }
        std::this_thread::sleep_for(kNap);
    }
    ++shared_;
}

void SessionLocks::leaveShared() noexcept {
    if (--shared_ == 0) {
        unlock(kPresence, 0, true);
    }
}

bool SessionLocks::enterExclusive() {
    if (exclusive_ == 0 && !tryLock(kPresence, 0)) {
        return false;
    }
    ++exclusive_;
    return true;
}

void SessionLocks::leaveExclusive() noexcept {
    if (exclusive_ > 0 && --exclusive_ == 0) {
        unlock(kPresence, 0);
    }
}

// The server would grant one session the same number twice.
bool SessionLocks::holdNumber(int number) {
    if (numbers_.contains(number) || !tryLock(kNumbers, number)) {
        return false;
    }
    numbers_.insert(number);
    return true;
}

void SessionLocks::leaveNumber(int number) noexcept {
    numbers_.erase(number);
    if (lost_.erase(number) == 0) {
        unlock(kNumbers, number);
    }
}

}  // namespace dao::postgres
