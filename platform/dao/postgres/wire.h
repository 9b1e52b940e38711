#pragma once

#include <string>
#include <utility>

#include "platform/dao/postgres/patience.h"
#include "platform/dao/postgres/place.h"
#include "platform/dao/postgres/startup.h"

namespace dao::postgres {

// The client library's connection to a server, until it is lost: whatever breaks off throws ConnectionLost,
// and there is no handle from then on.
class Wire {
 public:
    Wire(Handle handle, Address place) : handle_(std::move(handle)), place_(std::move(place)) {}

    pg_conn* handle() const { return handle_.get(); }  // nullptr: lost
    const Address& place() const { return place_; }
    void need() const;                // ConnectionLost where it was lost before
    bool isBroken() const;            // the library has given it up; not where it is lost already
    std::string lastMessage() const;  // of the library, in one line without a full stop

    // Hands over what is to be sent. Whether some of it is still to go.
    bool flush();
    // Sends and receives until something has come in. False where the moment has come before.
    bool turn(Clock::time_point until);
    // Takes what has arrived from the socket, so that the server can go on sending. Asks nothing, and leaves
    // a loss to be told by whoever asks next.
    void takeInArrived();
    // Looks whether the other end has hung up: then it counts as lost from here on.
    void noticeLoss();

    void letGo() { handle_.reset(); }
    [[noreturn]] void lose(const std::string& reason);
    [[noreturn]] void loseWithMessage() { lose(lastMessage()); }

 private:
    bool hasArrived() const;

    Handle handle_;
    Address place_;
};

}  // namespace dao::postgres
