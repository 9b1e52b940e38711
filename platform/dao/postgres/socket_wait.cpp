#include "platform/dao/postgres/socket_wait.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

namespace dao::postgres {
namespace {

// Rounded up: a poll of no length would turn the last millisecond into a busy one.
int millisecondsUntil(Clock::time_point until) {
    constexpr std::chrono::milliseconds kLongest{60'000};
    const auto now = Clock::now();
    if (until <= now) {
        return 0;
    }
    if (until - now > kLongest) {
        return static_cast<int>(kLongest.count());
    }
    return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(until - now).count());
}

}  // namespace

bool waitForSocket(int socket, bool forReading, bool forWriting, Clock::time_point until) {
    pollfd watched{};
    watched.fd = socket;
    watched.events = static_cast<short>((forReading ? POLLIN : 0) | (forWriting ? POLLOUT : 0));
    while (true) {
        const int ready = poll(&watched, 1, millisecondsUntil(until));
        if (ready > 0 || (ready < 0 && errno != EINTR)) {
            return true;  // a broken socket tells so when it is read
        }
        if (Clock::now() >= until) {
            return false;
        }
    }
}

}  // namespace dao::postgres
