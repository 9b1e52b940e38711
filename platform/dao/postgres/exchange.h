#pragma once

#include <cstdint>
#include <deque>
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

    // Asks without waiting: the answers are taken one by one, the first of them while the others are still on
    // their way. The number of the question. Whatever else is asked before all are taken ends it, and what is
    // left of it is dropped as it comes in; what is begun or told behind it waits for its turn.
    std::int64_t begin(const Send& send);
    // Whether there may be more of it.
    bool isAsked(std::int64_t question) const;
    // Its next answer, or the error in its place; neither where there is no more of it. Fails as ask does.
    Answer next(std::int64_t question, const Patience& patience);
    void drop(std::int64_t question);
    // Takes what has arrived from the socket, so that the server can go on sending. Asks nothing, and leaves
    // a loss to be told by whoever asks next.
    void takeInArrived();

    // Looks whether the other end has hung up: then the connection counts as lost from here on.
    void noticeLoss();

    pg_conn* handle() const { return handle_.get(); }  // nullptr: lost
    const Address& place() const { return place_; }
    std::int64_t roundTrips() const { return roundTrips_; }
    // Whether something was told or begun whose answers have not been taken in.
    bool hasTold() const { return !pending_.empty(); }
    // How many answers the last question got, also where it failed.
    std::size_t answered() const { return answered_; }

 private:
    // The answers as they come in; complete when the server is ready for the next question.
    static constexpr std::int64_t kUnwanted = 0;
    struct Answers {
        Answer answer;
        bool pipeline = false;
        bool complete = false;
        bool ended = false;                 // the last thing that came in was the end of an answer
        std::int64_t question = kUnwanted;  // that one answer is taken of
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
    void keepAnswer(Answers& answers, Result&& result);
    void keepEnd(Answers& answers);
    void keepSync(Answers& answers);
    bool isTurnOf(std::int64_t question) const;
    void dropAll();
    std::future<void> startCancel();
    void stop(Answers& answers, Stop why);
    Answer settled(Answers&& answers, Stop stop);
    [[noreturn]] void lose(const std::string& reason);
    [[noreturn]] void loseWithMessage();

    Handle handle_;
    Address place_;
    std::int64_t roundTrips_ = 0;
    std::size_t answered_ = 0;
    // Pipelines whose answers nobody has taken in yet: the question's number, or that nobody wants them.
    std::deque<std::int64_t> pending_;
    std::int64_t begun_ = kUnwanted;  // the last one that was begun
    std::exception_ptr whileWaiting_;
};

}  // namespace dao::postgres
