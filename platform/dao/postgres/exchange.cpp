#include "platform/dao/postgres/exchange.h"

#include <libpq-fe.h>

#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/answer_wait.h"

namespace dao::postgres {

// A question of its own has to wait until the pipelines before it are through.
Answer Exchange::ask(const Send& send, const Patience& patience) {
    wire_.need();
    settle(patience);
    ++roundTrips_;
    startSending(send, false);
    return answerOf({wire_, told_, AnswerKind::kOne}, patience);
}

Answer Exchange::askPipeline(const Send& send, const Patience& patience) {
    wire_.need();
    ++roundTrips_;
    answered_ = 0;
    startSending(send, true);
    return answerToPipeline(patience);
}

void Exchange::tell(const Send& send) {
    wire_.need();
    startSending(send, true);
    told_.addUnwanted();
    wire_.flush();
}

std::int64_t Exchange::begin(const Send& send) {
    tell(send);
    ++roundTrips_;
    return told_.wantLast();
}

bool Exchange::isAsked(std::int64_t question) const {
    return wire_.handle() != nullptr && told_.has(question);
}

Answer Exchange::next(std::int64_t question, const Patience& patience) {
    return isAsked(question) ? answerOf({wire_, told_, AnswerKind::kNext, question}, patience) : Answer();
}

void Exchange::settle(const Patience& patience) {
    if (!told_.isEmpty()) {
        told_.forgetLast();
        answerToPipeline(patience);
    }
    pg_conn* const handle = wire_.handle();
    if (PQpipelineStatus(handle) != PQ_PIPELINE_OFF && PQexitPipelineMode(handle) == 0) {
        wire_.loseWithMessage();
    }
}

Answer Exchange::answerToPipeline(const Patience& patience) {
    return answerOf({wire_, told_, AnswerKind::kPipeline}, patience);
}

Answer Exchange::answerOf(IncomingAnswer&& answer, const Patience& patience) {
    AnswerWait waiting(wire_, answer, patience);
    waiting.wait();
    answered_ = answer.count();
    return waiting.take();
}

// Where the library refuses a statement, what it has taken before is sent and answered all the same.
void Exchange::startSending(const Send& send, bool pipeline) {
    pg_conn* const handle = wire_.handle();
    if (pipeline) {
        PQenterPipelineMode(handle);
    }
    const bool sent = send(handle) != 0;
    const std::string refusal = sent ? std::string() : wire_.lastMessage();
    const bool ended = !pipeline || PQpipelineSync(handle) != 0;
    if (sent && ended) {
        return;
    }
    if (wire_.isBroken() || !ended) {
        wire_.loseWithMessage();
    }
    if (pipeline) {
        answerToPipeline(Patience());
    }
    fail(errInvalidOperation, "Invalid operation: " + refusal + ".");
}

}  // namespace dao::postgres
