#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "platform/dao/postgres/result.h"
#include "platform/dao/postgres/server_error.h"
#include "platform/dao/postgres/told_questions.h"
#include "platform/dao/postgres/wire.h"

namespace dao::postgres {

// What came back for one question: the answers of the server in their order, and the first error. Nothing
// that was asked behind an error in the same breath has been done.
struct Answer {
    std::vector<Result> results;
    std::optional<ServerError> error;

    Result last() { return results.empty() ? Result(nullptr) : std::move(results.back()); }
};

// What an answer comes to.
enum class AnswerKind {
    kOne,       // to one question; complete when the server is ready for the next
    kPipeline,  // to the pipeline that was sent last, behind those that were told before
    kNext,      // the next one of a pipeline whose answers are taken one by one
};

// One answer as it comes in. What nobody wants is let go meanwhile.
class IncomingAnswer {
 public:
    // Both outlive it. `question`: the one of kNext.
    IncomingAnswer(Wire& wire, ToldQuestions& told, AnswerKind kind,
                   std::int64_t question = ToldQuestions::kUnwanted)
        : wire_(wire), told_(told), kind_(kind), question_(question) {}

    bool isComplete() const { return complete_; }
    std::size_t count() const { return answer_.results.size(); }
    const std::optional<ServerError>& error() const { return answer_.error; }
    Answer take() { return std::move(answer_); }

    void takeIn();  // what has arrived
    void takeInUntil(Clock::time_point until);
    // The server is to stop: of what is taken one by one nothing more is wanted, and it comes to its end.
    void abandon();
    bool isAbandoned() const { return abandoned_; }

 private:
    void keep(Result&& result, pg_result* answer);
    void keepError(const pg_result* answer);
    void keepAnswer(Result&& result);
    void keepEnd();
    void keepSync();

    Wire& wire_;
    ToldQuestions& told_;
    AnswerKind kind_;
    std::int64_t question_;
    Answer answer_;
    bool complete_ = false;
    bool abandoned_ = false;
    bool ended_ = false;  // the last thing that came in was the end of an answer
};

}  // namespace dao::postgres
