#pragma once

#include <memory>
#include <string>

#include "platform/dao/postgres/patience.h"
#include "platform/dao/postgres/place.h"

struct pg_conn;

namespace dao::postgres {

struct Finish {
    void operator()(pg_conn* connection) const;
};
using Handle = std::unique_ptr<pg_conn, Finish>;

// A connection to the place, made by its keywords and ours alone: nothing in the environment changes where it
// leads or how. A server that is just starting is asked again and again. Comes back, or fails, at the given
// moment: ConnectionLost where nobody answers, errInvalidPassword, errFileNotFound where the server has no
// such database, and whatever else the server says.
Handle connectTo(const Address& place, Clock::time_point until);

}  // namespace dao::postgres
