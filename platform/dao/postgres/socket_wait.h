#pragma once

#include "platform/dao/postgres/patience.h"

namespace dao::postgres {

// Waits until the socket can be read, or written where that is asked for, or until the moment has come.
// Whether the socket is ready.
bool waitForSocket(int socket, bool forReading, bool forWriting, Clock::time_point until);

}  // namespace dao::postgres
