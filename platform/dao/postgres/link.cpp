#include "platform/dao/postgres/link.h"

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

std::map<std::string, std::weak_ptr<Link>>& links() {
    static auto* const kAll = new std::map<std::string, std::weak_ptr<Link>>;  // outlives every static window
    return *kAll;
}

}  // namespace

std::string identityOf(const Address& address) {
    return "server " + placeText(address) + ' ' + address.user;
}

std::shared_ptr<Link> Link::to(const Address& address) {
    std::weak_ptr<Link>& known = links()[identityOf(address)];
    if (std::shared_ptr<Link> link = known.lock()) {
        return link;
    }
    std::shared_ptr<Link> link = apart(address);
    known = link;
    return link;
}

std::shared_ptr<Link> Link::apart(const Address& address) {
    std::shared_ptr<Link> link(new Link(address));
    link->connect();
    return link;
}

void Link::connect() {
    writer_.letGo();
    roundTripsBefore_ = roundTrips();
    connection_.reset();
    connection_ = std::make_unique<Connection>(address_);
    workAsOwner();
    ++session_;
}

// One role that nobody logs in as owns everything of a shop, and all who work there are members of it: what
// one makes the others can change.
void Link::workAsOwner() {
    const Result owner = connection_->run(
        "SELECT quote_ident(pg_get_userbyid(o.owner)) FROM ("
        "SELECT coalesce((SELECT nspowner FROM pg_namespace WHERE nspname = 'dao'),"
        " (SELECT datdba FROM pg_database WHERE datname = current_database())) AS owner) AS o"
        " WHERE pg_get_userbyid(o.owner) <> current_user AND pg_has_role(o.owner, 'MEMBER')");
    if (owner.rows() == 1) {
        connection_->execute("SET ROLE " + std::string(owner.text(0, 0)));
    }
}

// What is kept under a number of ours is somebody else's from now on: nothing may be read or written by it.
Connection& Link::connection() {
    Connection& server = anyConnection();
    if (!lost_.empty()) {
        fail(
            errLocked,
            "While the server was away another copy of the program has taken this one's number; the database "
            "has to be opened anew.");
    }
    return server;
}

Connection& Link::anyConnection() {
    if (!isConnected()) {
        connect();
        try {
            takeLocksAgain();
        } catch (...) {
            roundTripsBefore_ = roundTrips();
            connection_.reset();
            throw;
        }
    }
    return *connection_;
}

Connection& Link::soundConnection() {
    if (isConnected()) {
        connection_->noticeLoss();
    }
    return connection();
}

void Link::takeLocksAgain() {
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

bool Link::tryLock(int space, int number, bool shared) {
    const Result answer = anyConnection().run(
        shared ? "SELECT pg_try_advisory_lock_shared($1, $2)" : "SELECT pg_try_advisory_lock($1, $2)",
        Parameters().integer4(space).integer4(number));
    return answer.boolean(0, 0);
}

void Link::unlock(int space, int number, bool shared) noexcept {
    if (!isConnected()) {
        return;  // the server has let go by itself
    }
    const QuietErrors quiet;
    try {
        connection_->run(
            shared ? "SELECT pg_advisory_unlock_shared($1, $2)" : "SELECT pg_advisory_unlock($1, $2)",
            Parameters().integer4(space).integer4(number));
    } catch (const Error&) {
        return;  // then the connection is gone, and the lock with it
    }
}

void Link::enterShared() {
    anyConnection();
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (shared_ == 0 && !tryLock(kPresence, 0, true)) {
        if (std::chrono::steady_clock::now() >= deadline) {
            fail(errExclusiveByOther);
        }
        std::this_thread::sleep_for(kNap);
    }
    ++shared_;
}

void Link::leaveShared() noexcept {
    if (--shared_ == 0) {
        unlock(kPresence, 0, true);
    }
}

bool Link::enterExclusive() {
    if (exclusive_ == 0 && !tryLock(kPresence, 0)) {
        return false;
    }
    ++exclusive_;
    return true;
}

void Link::leaveExclusive() noexcept {
    if (exclusive_ > 0 && --exclusive_ == 0) {
        unlock(kPresence, 0);
    }
}

// The server would grant one session the same number twice.
bool Link::holdNumber(int number) {
    if (numbers_.contains(number) || !tryLock(kNumbers, number)) {
        return false;
    }
    numbers_.insert(number);
    return true;
}

void Link::leaveNumber(int number) noexcept {
    numbers_.erase(number);
    if (lost_.erase(number) == 0) {
        unlock(kNumbers, number);
    }
}

}  // namespace dao::postgres
