#include "platform/dao/postgres/incoming_answer.h"

#include <libpq-fe.h>

#include <utility>

namespace dao::postgres {

void IncomingAnswer::takeIn() {
    while (!complete_ && PQisBusy(wire_.handle()) == 0) {
        pg_result* answer = PQgetResult(wire_.handle());
        if (answer == nullptr) {
            keepEnd();
        } else {
            ended_ = false;
            keep(Result(answer), answer);
        }
    }
}

void IncomingAnswer::takeInUntil(Clock::time_point until) {
    do {
        if (!wire_.turn(until)) {
            return;
        }
        takeIn();
    } while (!complete_ && Clock::now() < until);
}

void IncomingAnswer::abandon() {
    if (kind_ == AnswerKind::kNext) {
        told_.dropAll();
        abandoned_ = true;
    }
}

// In a pipeline every statement's answer has an end, and the pipeline one of its own.
void IncomingAnswer::keepEnd() {
    if (kind_ == AnswerKind::kOne) {
        complete_ = true;
    } else if (std::exchange(ended_, true)) {
        wire_.lose("an answer is missing");
    }
}

void IncomingAnswer::keep(Result&& result, pg_result* answer) {
    switch (PQresultStatus(answer)) {
        case PGRES_FATAL_ERROR:
        case PGRES_BAD_RESPONSE:
            keepError(answer);
            break;
        case PGRES_COPY_IN:
        case PGRES_COPY_OUT:
        case PGRES_COPY_BOTH:
            wire_.lose("a statement began to copy, which nobody here takes part in");
        case PGRES_PIPELINE_ABORTED:
            break;
        case PGRES_PIPELINE_SYNC:
            keepSync();
            break;
        default:
            keepAnswer(std::move(result));
    }
    if (wire_.isBroken() && !answer_.error.has_value()) {
        wire_.loseWithMessage();
    }
}

// The first error is the reason of all that follow it.
void IncomingAnswer::keepError(const pg_result* answer) {
    if (!answer_.error.has_value()) {
        answer_.error = errorOf(answer);
    }
    complete_ = told_.isFirst(question_);
}

void IncomingAnswer::keepAnswer(Result&& result) {
    const bool isWanted = told_.isFirst(question_);
    if (isWanted || told_.isEmpty()) {
        answer_.results.push_back(std::move(result));
    }
    complete_ = isWanted;
}

void IncomingAnswer::keepSync() {
    if (told_.isEmpty()) {
        complete_ = true;
        return;
    }
    const bool wasLast = told_.isFirst(question_);
    told_.endFirst();
    answer_ = {};  // so far it was the answer to what was merely told
    complete_ = wasLast || (kind_ == AnswerKind::kNext && told_.isEmpty());
}

}  // namespace dao::postgres
