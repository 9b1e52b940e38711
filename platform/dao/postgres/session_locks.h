#pragma once

#include <set>

#include "platform/dao/postgres/connection.h"

namespace dao::postgres {

// Where the one connection of a process comes from.
class ConnectionSource {
 public:
    virtual Connection& anyConnection() = 0;  // made anew where it was lost
    virtual bool isConnected() const = 0;     // now: without a connection there is no lock either

 protected:
    ~ConnectionSource() = default;
};

// The locks by which this process says on a server who is in the shop and which numbers are held. They belong
// to its one connection and go with it; on the next one they are taken again first.
class SessionLocks {
 public:
    explicit SessionLocks(ConnectionSource& server) : server_(server) {}

    // How often each was entered and left, counted.
    void enterShared();  // errExclusiveByOther
    void leaveShared() noexcept;
    bool enterExclusive();
    void leaveExclusive() noexcept;

    bool holdNumber(int number);
    void leaveNumber(int number) noexcept;
    // Whether another process has taken it while the connection was away.
    bool isLost(int number) const { return lost_.contains(number); }
    bool hasLostAny() const { return !lost_.empty(); }

    // On a new connection. errExclusiveByOther where another process has the shop to itself by now,
    // errFileInUse where we had it so and others are in. A number that was taken meanwhile is lost.
    void takeAgain();

 private:
    bool tryLock(int space, int number, bool shared = false);
    void unlock(int space, int number, bool shared = false) noexcept;

    ConnectionSource& server_;
    int shared_ = 0;
    int exclusive_ = 0;
    std::set<int> numbers_;
    std::set<int> lost_;  // of these
};

}  // namespace dao::postgres
