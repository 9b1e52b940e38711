#include "platform/dao/postgres/answer_wait.h"

#include <libpq-fe.h>

#include <algorithm>
#include <array>
#include <future>
#include <thread>
#include <utility>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"

namespace dao::postgres {
namespace {

constexpr std::chrono::milliseconds kBetweenQuestions{100};  // whether the long work is to go on
constexpr std::chrono::milliseconds kBetweenLooks{20};       // whether the cancelling is through
constexpr std::chrono::milliseconds kToStop{2000};

// The cancelling is a small connection of its own, which the library waits for without bound: it must not
// hold up the one who cancels.
void cancelBehind(PGcancel* cancel, std::promise<void> done) {
    std::thread([cancel, told = std::move(done)]() mutable {
        std::array<char, 256> reason{};
        PQcancel(cancel, reason.data(), static_cast<int>(reason.size()));
        PQfreeCancel(cancel);
        told.set_value();
    }).detach();
}

std::future<void> startCancel(Wire& wire) {
    std::promise<void> promise;
    std::future<void> done = promise.get_future();
    PGcancel* cancel = PQgetCancel(wire.handle());
    if (cancel == nullptr) {
        wire.loseWithMessage();
    }
    cancelBehind(cancel, std::move(promise));
    return done;
}

}  // namespace

void AnswerWait::wait() {
    watch();
    if (stop_ != Stop::kNone) {
        answer_.abandon();
        stopServer();
    }
}

// An answer taken one by one may have come in with the one before it.
void AnswerWait::watch() {
    answer_.takeIn();
    while (!answer_.isComplete() && stop_ == Stop::kNone) {
        answer_.takeInUntil(std::min(patience_.until(), Clock::now() + kBetweenQuestions));
        stop_ = answer_.isComplete() ? Stop::kNone : whetherToStop();
    }
}

AnswerWait::Stop AnswerWait::whetherToStop() {
    try {
        if (!patience_.goesOn()) {
            return Stop::kGivenUp;
        }
    } catch (...) {
        // Thrown on once the server has stopped: the connection is then fit for the next question.
        whileWaiting_ = std::current_exception();
        return Stop::kFailed;
    }
    return Clock::now() >= patience_.until() ? Stop::kTime : Stop::kNone;
}

// Both must have come to an end, the statement and the cancelling: a cancelling that is still on its way
// would hit the next statement.
void AnswerWait::stopServer() {
    const auto until = Clock::now() + kToStop;
    const std::future<void> cancelled = startCancel(wire_);
    while (!answer_.isComplete() && Clock::now() < until) {
        answer_.takeInUntil(std::min(until, Clock::now() + kBetweenLooks));
    }
    if (!answer_.isComplete() || cancelled.wait_until(until) != std::future_status::ready) {
        giveUp();
    }
}

// Whoever has left need not be told that the server did not hear of it.
void AnswerWait::giveUp() {
    if (whileWaiting_ != nullptr) {
        wire_.letGo();
        std::rethrow_exception(whileWaiting_);
    }
    if (stop_ == Stop::kGivenUp && isLeft()) {
        wire_.letGo();
        fail(errCancelled);
    }
    wire_.lose("it gives no answer");
}

Answer AnswerWait::take() {
    if (whileWaiting_ != nullptr) {
        std::rethrow_exception(whileWaiting_);
    }
    const std::optional<ServerError>& error = answer_.error();
    if (error.has_value() && (isLoss(*error) || wire_.isBroken())) {
        wire_.lose(error->sentence.empty() ? wire_.lastMessage() : error->sentence);
    }
    if (isStopped()) {
        fail(stop_ == Stop::kTime ? errLocked : errCancelled);
    }
    return answer_.take();
}

// An answer that was whole before the server heard that it was to stop is as good as any; but one that is
// taken one by one was told to be of no use any more.
bool AnswerWait::isStopped() const {
    const std::optional<ServerError>& error = answer_.error();
    return stop_ != Stop::kNone && (answer_.isAbandoned() || (error.has_value() && isCancel(*error)));
}

}  // namespace dao::postgres
