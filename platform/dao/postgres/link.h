#pragma once

#include <memory>
#include <string>

#include "platform/dao/postgres/connection.h"
#include "platform/dao/postgres/session_locks.h"
#include "platform/dao/postgres/writer_row.h"

namespace dao::postgres {

// The same for two addresses where one connection serves both.
std::string identityOf(const Address& address);

// This process's one connection to a shop on a server, with the locks that say so there and our row in the
// table of writers. A connection that was lost is made anew when it is next needed, and its locks are taken
// again first.
class Link final : private ConnectionSource {
 public:
    // The process's one link to that place, made now if it has none. Fails as Connection does.
    static std::shared_ptr<Link> to(const Address& address);
    // One that nobody else in this process uses: for long reading, beside which the others go on.
    static std::shared_ptr<Link> apart(const Address& address);

    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    const Address& address() const { return address_; }
    // Connects again where the connection was lost. errExclusiveByOther where another process has the shop to
    // itself by now, errLocked where one of our numbers was taken meanwhile, until it is let go.
    Connection& connection();
    // The same for what has nothing to do with our numbers.
    Connection& anyConnection() override;
    // The same, where it is not known whether it still stands: looked at first.
    Connection& soundConnection();
    // Whether there is a connection now: without one there is no transaction and no lock either.
    bool isConnected() const override { return connection_ != nullptr && !connection_->lost(); }
    // The one that there is now: isConnected() comes first.
    Connection& heldConnection() { return *connection_; }
    // Counts the connections that there have been.
    std::int64_t session() const { return session_; }
    // Of all those connections.
    std::int64_t roundTrips() const {
        return roundTripsBefore_ + (connection_ != nullptr ? connection_->roundTrips() : 0);
    }

    SessionLocks& locks() { return locks_; }
    WriterRow& writer() { return writer_; }

 private:
    explicit Link(Address address) : address_(std::move(address)) {}
    void connect();
    void workAsOwner();

    Address address_;
    std::unique_ptr<Connection> connection_;
    std::int64_t session_ = 0;
    std::int64_t roundTripsBefore_ = 0;  // of the connections that are gone
    SessionLocks locks_{*this};
    WriterRow writer_;
};

}  // namespace dao::postgres
