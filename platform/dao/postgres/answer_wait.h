#pragma once

#include <exception>

#include "platform/dao/postgres/incoming_answer.h"

namespace dao::postgres {

// The waiting for one answer, no longer than it may take. When the time is over, the server is asked to stop;
// where it does not say within two seconds that it has, the connection is given up.
class AnswerWait {
 public:
    // All of them outlive it.
    AnswerWait(Wire& wire, IncomingAnswer& answer, const Patience& patience)
        : wire_(wire), answer_(answer), patience_(patience) {}

    // Comes back when the answer is complete, or has been stopped.
    void wait();
    // The answer, or the server's error in it. Where the server was stopped: errLocked since the time was
    // over, errCancelled since it was given up; throws on what the asking for going on threw.
    Answer take();

 private:
    enum class Stop { kNone, kTime, kGivenUp, kFailed };
    void watch();
    Stop whetherToStop();
    void stopServer();
    bool isStopped() const;
    [[noreturn]] void giveUp();

    Wire& wire_;
    IncomingAnswer& answer_;
    const Patience& patience_;
    Stop stop_ = Stop::kNone;
    std::exception_ptr whileWaiting_;
};

}  // namespace dao::postgres
