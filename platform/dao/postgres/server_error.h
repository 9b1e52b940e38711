#pragma once

#include <string>
#include <string_view>

#include "platform/dao/error.h"
#include "platform/dao/postgres/place.h"

struct pg_result;

namespace dao::postgres {

// The connection is gone: the server, or the way to it. errDiskIo. What was sent and not confirmed may have
// been done or not; whoever can begin anew opens another connection.
class ConnectionLost : public Error {
 public:
    using Error::Error;
};

// What the server said when it refused.
struct ServerError {
    std::string state;     // five characters, the same in every language; empty: nobody answered
    std::string sentence;  // in the server's language, without a full stop
    std::string detail;
};

ServerError errorOf(const pg_result* answer);

inline constexpr const char* kNotReady = "57P03";

bool isLoss(const ServerError& error);      // the server has ended the connection
bool isNotReady(const ServerError& error);  // it is just starting, and will take us soon
bool isCancel(const ServerError& error);    // somebody stopped the statement
// The statement was prepared before the tables changed, or is not there any more.
bool isStale(const ServerError& error);

[[noreturn]] void failLost(const Address& place, const std::string& reason);
// In the engine's numbers, for a statement of this text. Errors that the engine has no number for:
// errInvalidOperation with the server's sentence.
[[noreturn]] void failWith(const ServerError& error, const Address& place, std::string_view statement);
// The same for a connection that did not come about.
[[noreturn]] void failConnecting(const ServerError& error, const Address& place);

}  // namespace dao::postgres
