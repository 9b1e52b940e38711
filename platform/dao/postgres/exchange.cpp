#include "platform/dao/postgres/exchange.h"

#include <libpq-fe.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>
#include <thread>
#include <utility>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/postgres/socket_wait.h"

namespace dao::postgres {
namespace {

constexpr std::chrono::milliseconds kBetweenQuestions{100};  // whether the long work is to go on
constexpr std::chrono::milliseconds kBetweenLooks{20};       // whether the cancelling is through
constexpr std::chrono::milliseconds kToStop{2000};

std::string lastMessage(pg_conn* connection) {
    std::string text = PQerrorMessage(connection);
    std::replace(text.begin(), text.end(), '\n', ' ');
    while (!text.empty() && (text.back() == ' ' || text.back() == '.')) {
        text.pop_back();
    }
    return text.empty() ? "the connection broke off" : text;
}

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

}  // namespace

void Exchange::needConnection() {
    if (handle_ == nullptr) {
        failLost(place_, "the connection has broken off before");
    }
}

// A question of its own has to wait until the pipelines before it are through.
Answer Exchange::ask(const Send& send, const Patience& patience) {
    needConnection();
    settle(patience);
    ++roundTrips_;
    startSending(send, false);
    return answerOf(false, patience);
}

Answer Exchange::askPipeline(const Send& send, const Patience& patience) {
    needConnection();
    ++roundTrips_;
    answered_ = 0;
    startSending(send, true);
    return answerOf(true, patience);
}

void Exchange::tell(const Send& send) {
    needConnection();
    startSending(send, true);
    pending_.push_back(kUnwanted);
    if (PQflush(handle_.get()) < 0) {
        loseWithMessage();
    }
}

std::int64_t Exchange::begin(const Send& send) {
    tell(send);
    ++roundTrips_;
    return pending_.back() = ++begun_;
}

bool Exchange::isAsked(std::int64_t question) const {
    return handle_ != nullptr && std::find(pending_.begin(), pending_.end(), question) != pending_.end();
}

Answer Exchange::next(std::int64_t question, const Patience& patience) {
    if (!isAsked(question)) {
        return {};
    }
    Answers answers;
    answers.pipeline = true;
    answers.question = question;
    const Stop why = await(answers, patience);
    if (why == Stop::kNone) {
        return settled(std::move(answers), why);
    }
    dropAll();
    stop(answers, why);
    settled(std::move(answers), why);
    fail(why == Stop::kTime ? errLocked : errCancelled);
}

void Exchange::drop(std::int64_t question) {
    std::replace(pending_.begin(), pending_.end(), question, kUnwanted);
}

void Exchange::takeInArrived() {
    if (handle_ != nullptr && waitForSocket(PQsocket(handle_.get()), true, false, Clock::now())) {
        PQconsumeInput(handle_.get());
    }
}

void Exchange::dropAll() {
    std::fill(pending_.begin(), pending_.end(), kUnwanted);
}

// What it said last comes first, and then the end.
void Exchange::noticeLoss() {
    constexpr int kLooks = 4;
    for (int look = 0; look < kLooks && handle_ != nullptr; ++look) {
        if (!waitForSocket(PQsocket(handle_.get()), true, false, Clock::now())) {
            return;
        }
        if (PQconsumeInput(handle_.get()) == 0) {
            handle_.reset();
        }
    }
}

void Exchange::settle(const Patience& patience) {
    if (!pending_.empty()) {
        pending_.pop_back();
        answerOf(true, patience);
    }
    if (PQpipelineStatus(handle_.get()) != PQ_PIPELINE_OFF && PQexitPipelineMode(handle_.get()) == 0) {
        loseWithMessage();
    }
}

Answer Exchange::answerOf(bool pipeline, const Patience& patience) {
    Answers answers;
    answers.pipeline = pipeline;
    const Stop why = await(answers, patience);
    if (why != Stop::kNone) {
        stop(answers, why);
    }
    return settled(std::move(answers), why);
}

// Where the library refuses a statement, what it has taken before is sent and answered all the same.
void Exchange::startSending(const Send& send, bool pipeline) {
    pg_conn* const handle = handle_.get();
    if (pipeline) {
        PQenterPipelineMode(handle);
    }
    const bool sent = send(handle) != 0;
    const std::string refusal = sent ? std::string() : lastMessage(handle);
    const bool ended = !pipeline || PQpipelineSync(handle) != 0;
    if (sent && ended) {
        return;
    }
    if (PQstatus(handle) == CONNECTION_BAD || !ended) {
        loseWithMessage();
    }
    if (pipeline) {
        answerOf(true, Patience());
    }
    fail(errInvalidOperation, "Invalid operation: " + refusal + ".");
}

// An answer taken one by one may have come in with the one before it.
Exchange::Stop Exchange::await(Answers& answers, const Patience& patience) {
    takeIn(answers);
    while (!answers.complete) {
        takeInUntil(answers, std::min(patience.until(), Clock::now() + kBetweenQuestions));
        const Stop why = answers.complete ? Stop::kNone : whetherToStop(patience);
        if (why != Stop::kNone) {
            return why;
        }
    }
    return Stop::kNone;
}

Exchange::Stop Exchange::whetherToStop(const Patience& patience) {
    try {
        if (!patience.goesOn()) {
            return Stop::kGivenUp;
        }
    } catch (...) {
        // Thrown on once the server has stopped: the connection is then fit for the next question.
        whileWaiting_ = std::current_exception();
        return Stop::kFailed;
    }
    return Clock::now() >= patience.until() ? Stop::kTime : Stop::kNone;
}

void Exchange::takeInUntil(Answers& answers, Clock::time_point until) {
    do {
        const int unsent = PQflush(handle_.get());
        if (unsent < 0) {
            loseWithMessage();
        }
        if (!waitForSocket(PQsocket(handle_.get()), true, unsent != 0, until)) {
            return;
        }
        if (PQconsumeInput(handle_.get()) == 0) {
            loseWithMessage();
        }
        takeIn(answers);
    } while (!answers.complete && Clock::now() < until);
}

void Exchange::takeIn(Answers& answers) {
    while (!answers.complete && PQisBusy(handle_.get()) == 0) {
        pg_result* answer = PQgetResult(handle_.get());
        if (answer == nullptr) {
            keepEnd(answers);
        } else {
            answers.ended = false;
            keep(answers, Result(answer), answer);
        }
    }
}

// In a pipeline every statement's answer has an end, and the pipeline one of its own.
void Exchange::keepEnd(Answers& answers) {
    if (!answers.pipeline) {
        answers.complete = true;
    } else if (std::exchange(answers.ended, true)) {
        lose("an answer is missing");
    }
}

// The first error is the reason of all that follow it.
void Exchange::keep(Answers& answers, Result&& result, pg_result* answer) {
    switch (PQresultStatus(answer)) {
        case PGRES_FATAL_ERROR:
        case PGRES_BAD_RESPONSE:
            if (!answers.answer.error.has_value()) {
                answers.answer.error = errorOf(answer);
            }
            answers.complete = isTurnOf(answers.question);
            break;
        case PGRES_COPY_IN:
        case PGRES_COPY_OUT:
        case PGRES_COPY_BOTH:
            lose("a statement began to copy, which nobody here takes part in");
        case PGRES_PIPELINE_ABORTED:
            break;
        case PGRES_PIPELINE_SYNC:
            keepSync(answers);
            break;
        default:
            keepAnswer(answers, std::move(result));
    }
    if (PQstatus(handle_.get()) == CONNECTION_BAD && !answers.answer.error.has_value()) {
        loseWithMessage();
    }
}

bool Exchange::isTurnOf(std::int64_t question) const {
    return question != kUnwanted && !pending_.empty() && pending_.front() == question;
}

// What nobody wants is let go as it comes in.
void Exchange::keepAnswer(Answers& answers, Result&& result) {
    const bool isWanted = isTurnOf(answers.question);
    if (isWanted || pending_.empty()) {
        answers.answer.results.push_back(std::move(result));
    }
    answers.complete = isWanted;
}

void Exchange::keepSync(Answers& answers) {
    if (pending_.empty()) {
        answers.complete = true;
        return;
    }
    const bool wasLast = isTurnOf(answers.question);  // of the answers that are taken one by one
    pending_.pop_front();
    answers.answer = {};  // so far it was the answer to what was merely told
    answers.complete = wasLast || (answers.question != kUnwanted && pending_.empty());
}

std::future<void> Exchange::startCancel() {
    std::promise<void> promise;
    std::future<void> done = promise.get_future();
    PGcancel* cancel = PQgetCancel(handle_.get());
    if (cancel == nullptr) {
        loseWithMessage();
    }
    cancelBehind(cancel, std::move(promise));
    return done;
}

// Both must have come to an end, the statement and the cancelling: a cancelling that is still on its way
// would hit the next statement. Whoever has left need not be told that the server did not hear of it.
void Exchange::stop(Answers& answers, Stop why) {
    const auto until = Clock::now() + kToStop;
    const std::future<void> cancelled = startCancel();
    while (!answers.complete && Clock::now() < until) {
        takeInUntil(answers, std::min(until, Clock::now() + kBetweenLooks));
    }
    if (!answers.complete || cancelled.wait_until(until) != std::future_status::ready) {
        const std::exception_ptr thrown = std::exchange(whileWaiting_, nullptr);
        if (thrown != nullptr) {
            handle_.reset();
            std::rethrow_exception(thrown);
        }
        if (why == Stop::kGivenUp && isLeft()) {
            handle_.reset();
            fail(errCancelled);
        }
        lose("it gives no answer");
    }
}

Answer Exchange::settled(Answers&& answers, Stop stop) {
    answered_ = answers.answer.results.size();
    if (const std::exception_ptr thrown = std::exchange(whileWaiting_, nullptr); thrown != nullptr) {
        std::rethrow_exception(thrown);
    }
    const std::optional<ServerError>& error = answers.answer.error;
    if (error.has_value() && (isLoss(*error) || PQstatus(handle_.get()) == CONNECTION_BAD)) {
        lose(error->sentence.empty() ? lastMessage(handle_.get()) : error->sentence);
    }
    if (error.has_value() && isCancel(*error) && stop != Stop::kNone) {
        fail(stop == Stop::kTime ? errLocked : errCancelled);
    }
    return std::move(answers.answer);
}

void Exchange::lose(const std::string& reason) {
    handle_.reset();
    failLost(place_, reason);
}

void Exchange::loseWithMessage() {
    lose(lastMessage(handle_.get()));
}

}  // namespace dao::postgres
