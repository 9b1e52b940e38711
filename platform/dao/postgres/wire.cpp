#include "platform/dao/postgres/wire.h"

#include <libpq-fe.h>

#include <algorithm>

#include "platform/dao/postgres/server_error.h"
#include "platform/dao/postgres/socket_wait.h"

namespace dao::postgres {

void Wire::need() const {
    if (handle_ == nullptr) {
        failLost(place_, "the connection has broken off before");
    }
}

bool Wire::isBroken() const {
    return PQstatus(handle_.get()) == CONNECTION_BAD;
}

std::string Wire::lastMessage() const {
    std::string text = PQerrorMessage(handle_.get());
    std::replace(text.begin(), text.end(), '\n', ' ');
    while (!text.empty() && (text.back() == ' ' || text.back() == '.')) {
        text.pop_back();
    }
    return text.empty() ? "the connection broke off" : text;
}

bool Wire::flush() {
    const int unsent = PQflush(handle_.get());
    if (unsent < 0) {
        loseWithMessage();
    }
    return unsent != 0;
}

bool Wire::turn(Clock::time_point until) {
    const bool unsent = flush();
    if (!waitForSocket(PQsocket(handle_.get()), true, unsent, until)) {
        return false;
    }
    if (PQconsumeInput(handle_.get()) == 0) {
        loseWithMessage();
    }
    return true;
}

bool Wire::hasArrived() const {
    return handle_ != nullptr && waitForSocket(PQsocket(handle_.get()), true, false, Clock::now());
}

void Wire::takeInArrived() {
    if (hasArrived()) {
        PQconsumeInput(handle_.get());
    }
}

// What it said last comes first, and then the end.
void Wire::noticeLoss() {
    constexpr int kLooks = 4;
    for (int look = 0; look < kLooks && hasArrived(); ++look) {
        if (PQconsumeInput(handle_.get()) == 0) {
            handle_.reset();
        }
    }
}

void Wire::lose(const std::string& reason) {
    handle_.reset();
    failLost(place_, reason);
}

}  // namespace dao::postgres
