#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <future>
#include <optional>
#include <vector>

#include "platform/dao/postgres/patience.h"
#include "platform/dao/postgres/place.h"
#include "platform/dao/postgres/result.h"
#include "platform/dao/postgres/server_error.h"
#include "platform/dao/postgres/startup.h"

namespace dao::postgres {

// What came back for one question: the answers of the server in their order, and the first error. Nothing
// that was asked behind an error in the same breath has been done.
struct Answer {
    std::vector<Result> results;
    std::optional<ServerError> error;

    Result last() { return results.empty() ? Result(nullptr) : std::move(results.back()); }
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
    using Send = std::function<int(pg_conn*)>;
    Answer ask(const Send& send, const Patience& patience);
    Answer askPipeline(const Send& send, const Patience& patience);
    void tell(const Send& send);

    // Looks whether the other end has hung up: then the connection counts as lost from here on.
    void noticeLoss();

    pg_conn* handle() const { return handle_.get(); }  // nullptr: lost
    const Address& place() const { return place_; }
    std::int64_t roundTrips() const { return roundTrips_; }
    // Whether something was told whose answer has not been taken in.
    bool hasTold() const { return told_ > 0; }
    // How many answers the last question got, also where it failed.
    std::size_t answered() const { return answered_; }

 private:
    // The answers as they come in; complete when the server is ready for the next question.
    struct Answers {
        Answer answer;
        bool pipeline = false;
        bool complete = false;
        bool ended = false;  // the last thing that came in was the end of an answer
    };
    enum class Stop { kNone, kTime, kGivenUp, kFailed };

    void needConnection();
    void settle(const Patience& patience);
    void startSending(const Send& send, bool pipeline);
    Answer answerOf(bool pipeline, const Patience& patience);
    Stop await(Answers& answers, const Patience& patience);
    Stop whetherToStop(const Patience& patience);
    void takeInUntil(Answers& answers, Clock::time_point until);
    void takeIn(Answers& answers);
    void keep(Answers& answers, Result&& result, pg_result* answer);
    void keepEnd(Answers& answers);
    std::future<void> startCancel();
    void stop(Answers& answers);
    Answer settled(Answers&& answers, Stop stop);
    [[noreturn]] void lose(const std::string& reason);
    [[noreturn]] void loseWithMessage();

    Handle handle_;
    Address place_;
    std::int64_t roundTrips_ = 0;
    std::size_t answered_ = 0;
    int told_ = 0;  // pipelines whose answers nobody has taken in yet
    std::exception_ptr whileWaiting_;
};

}  // namespace dao::postgres
