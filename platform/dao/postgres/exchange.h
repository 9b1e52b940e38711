#pragma once

#include <cstdint>
#include <functional>

#include "platform/dao/postgres/incoming_answer.h"
#include "platform/dao/postgres/patience.h"
#include "platform/dao/postgres/told_questions.h"
#include "platform/dao/postgres/wire.h"

namespace dao::postgres {

// Asks the server one question after the other, and waits for each answer no longer than it may. When the
// time is over, the server is asked to stop; where it does not say within two seconds that it has, the
// connection is given up. Whatever breaks off throws ConnectionLost, and so does every question after it.
class Exchange {
 public:
    Exchange(Handle handle, Address place) : wire_(std::move(handle), std::move(place)) {}

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
    void drop(std::int64_t question) { told_.drop(question); }

    // For what asks nothing: see Wire.
    void takeInArrived() { wire_.takeInArrived(); }
    void noticeLoss() { wire_.noticeLoss(); }
    pg_conn* handle() const { return wire_.handle(); }  // nullptr: lost
    const Address& place() const { return wire_.place(); }
    std::int64_t roundTrips() const { return roundTrips_; }
    // Whether something was told or begun whose answers have not been taken in.
    bool hasTold() const { return !told_.isEmpty(); }
    // How many answers the last question got, also where it failed.
    std::size_t answered() const { return answered_; }

 private:
    void settle(const Patience& patience);
    void startSending(const Send& send, bool pipeline);
    Answer answerOf(IncomingAnswer&& answer, const Patience& patience);
    Answer answerToPipeline(const Patience& patience);

    Wire wire_;
    ToldQuestions told_;
    std::int64_t roundTrips_ = 0;
    std::size_t answered_ = 0;
};

}  // namespace dao::postgres
