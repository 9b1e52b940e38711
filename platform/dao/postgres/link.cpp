#include "platform/dao/postgres/link.h"

#include <map>

#include "platform/dao/failure.h"

namespace dao::postgres {
namespace {

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
    if (locks_.hasLostAny()) {
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
            locks_.takeAgain();
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

}  // namespace dao::postgres
