#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <future>
#include <optional>

#include "platform/dao/postgres/patience.h"
#include "platform/dao/postgres/place.h"
#include "platform/dao/postgres/result.h"
#include "platform/dao/postgres/server_error.h"
#include "platform/dao/postgres/startup.h"

namespace dao::postgres {

// What came back for one question: the last answer of the server, or its error.
struct Answer {
    Result result{nullptr};
    std::optional<ServerError> error;
};

// Asks the server one question after the other, and waits for each answer no longer than it may. When the
// time is over, the server is asked to stop; where it does not say within two seconds that it has, the
// connection is given up. Whatever breaks off throws ConnectionLost, and so does every question after it.
class Exchange {
 public:
    Exchange(Handle handle, Address place) : handle_(std::move(handle)), place_(std::move(place)) {}

    // `send` hands the question to the client library, whose "sent" it returns. An answer, or the server's
    // error; fails with errLocked where the time was over, with errCancelled where it was given up, and with
    // whatever the asking for going on threw.
    Answer ask(const std::function<int(pg_conn*)>& send, const Patience& patience);

    pg_conn* handle() const { return handle_.get(); }  // nullptr: lost
    const Address& place() const { return place_; }
    std::int64_t roundTrips() const { return roundTrips_; }

 private:
    // The answers as they come in; complete when the server is ready for the next question.
    struct Answers {
        Answer last;
        bool complete = false;
    };
    enum class Stop { kNone, kTime, kGivenUp, kFailed };

    void startSending(const std::function<int(pg_conn*)>& send);
    Stop await(Answers& answers, const Patience& patience);
    Stop whetherToStop(const Patience& patience);
    void takeInUntil(Answers& answers, Clock::time_point until);
    void takeIn(Answers& answers);
    void keep(Answers& answers, Result&& result, pg_result* answer);
    std::future<void> startCancel();
    void stop(Answers& answers);
    Answer settled(Answers&& answers, Stop stop);
    [[noreturn]] void lose(const std::string& reason);
    [[noreturn]] void loseWithMessage();

    Handle handle_;
    Address place_;
    std::int64_t roundTrips_ = 0;
    std::exception_ptr whileWaiting_;
};

}  // namespace dao::postgres
