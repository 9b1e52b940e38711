// The part of a session that reads while the server is still answering.
#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/loss.h"
#include "platform/dao/postgres/server_session.h"

namespace dao::postgres {
namespace {

constexpr int kPieces = 24;  // of a long answer; what comes behind them is one more

bool isWholePiece(const Result& piece) {
    return piece.rows() == static_cast<int>(driver::kRowsAtOnce);
}

std::vector<Step> fetches() {
    const std::string from = " FROM dao_rows";
    std::vector<Step> steps(kPieces, {"FETCH " + std::to_string(driver::kRowsAtOnce) + from, {}, false});
    steps.push_back({"FETCH ALL" + from, {}, false});
    return steps;
}

// Without rows behind the last one.
Result pieceOf(std::optional<Result>&& answer) {
    return answer ? std::move(*answer) : Result(nullptr);
}

// What is left of a question is not wanted any more once nobody goes on taking its answers.
class Taking {
 public:
    Taking(const std::shared_ptr<Link>& link, std::int64_t question) : link_(link), question_(question) {}
    ~Taking() {
        if (link_->isConnected()) {
            link_->heldConnection().drop(question_);
        }
    }
    Taking(const Taking&) = delete;
    Taking& operator=(const Taking&) = delete;

 private:
    const std::shared_ptr<Link>& link_;
    std::int64_t question_;
};

}  // namespace

// A short answer is not worth more than one statement, and whether it is short shows the first time.
void ServerSession::runInPieces(const std::string& text, const Parameters& parameters,
                                const std::function<void(const Result&)>& take) {
    std::optional<std::int64_t> question;
    Result piece(nullptr);
    const auto ask = [&] {
        question = beginPieces(text, parameters);
        piece = question ? firstPiece(*question, text) : run(text, parameters);
    };
    if (!transaction_.beginning().isAhead() || !withoutLoss(ask)) {
        ask();
    }
    if (!question) {
        longAnswers_.note(text, piece.rows());
        take(piece);
        return;
    }
    const Taking taking(link_, *question);
    while (piece.rows() > 0) {
        take(piece);
        piece =
            isWholePiece(piece) ? pieceOf(transaction_.connection().next(*question, text)) : Result(nullptr);
    }
}

std::optional<std::int64_t> ServerSession::beginPieces(const std::string& text,
                                                       const Parameters& parameters) {
    if (!transaction_.isReading() || !locks_.isEmpty() || !longAnswers_.has(text)) {
        return std::nullopt;
    }
    std::vector<Step> steps = stepsBefore();
    steps.push_back({"CLOSE ALL", {}, false});
    steps.push_back({"DECLARE dao_rows NO SCROLL CURSOR FOR " + text, parameters, false});
    for (Step& step : fetches()) {
        steps.push_back(std::move(step));
    }
    return transaction_.connection().begin(steps, TransactionState::kOpen);
}

// Where the transaction is to begin with it, it has begun once that is answered, whatever becomes of the
// rest.
Result ServerSession::firstPiece(std::int64_t question, const std::string& text) {
    Connection& server = transaction_.connection();
    std::size_t done = 0;
    try {
        if (transaction_.beginning().isAhead()) {
            server.next(question, text);
            keepVersions(pieceOf(server.next(question, text)));
            done = 2;
        }
        server.next(question, text);  // of the cursors before, and of this one
        server.next(question, text);
        Result piece = pieceOf(server.next(question, text));
        noteDone(done);
        return piece;
    } catch (const ConnectionLost&) {
        throw;
    } catch (const Error&) {
        noteDone(done);
        throw;
    }
}

// It is a transaction of its own, which ends with it: whoever never comes for the answer leaves nothing open.
std::optional<AskedAhead> ServerSession::askAhead(const std::string& text, const Parameters& parameters) {
    if (transaction_.isOpen() || !link_->isConnected()) {
        return std::nullopt;
    }
    const QuietErrors quiet;
    try {
        Connection& server = transaction_.connection();
        std::vector<Step> steps = beginningOfRead(link_->writer().number(server));
        steps.push_back({text, parameters});
        const std::optional<std::int64_t> question = server.begin(steps, TransactionState::kNone);
        if (!question) {
            return std::nullopt;
        }
        server.tell({"ROLLBACK", {}}, TransactionState::kNone);
        return AskedAhead{link_->session(), *question};
    } catch (const Error&) {
        return std::nullopt;  // told when the answer is wanted
    }
}

// Whatever fails ahead is asked once more, and fails where it belongs; a lock that was waited for is not
// waited for twice.
std::optional<Result> ServerSession::takeAhead(const AskedAhead& asked) {
    if (!transaction_.beginning().isAhead() || !link_->isConnected() || asked.session != link_->session()) {
        return std::nullopt;
    }
    std::optional<QuietErrors> quiet(std::in_place);
    try {
        return answerAhead(transaction_.connection(), asked.question);
    } catch (const Error& error) {
        if (error.Number() != errLocked) {
            return std::nullopt;
        }
        quiet.reset();
        fail(error.Number(), error.Description());
    }
}

std::optional<Result> ServerSession::answerAhead(Connection& server, std::int64_t question) {
    server.next(question, {});
    const std::optional<Result> versions = server.next(question, {});
    std::optional<Result> answer = server.next(question, {});
    if (!versions || !answer) {
        return std::nullopt;
    }
    keepVersions(*versions);
    return answer;
}

void ServerSession::takeIn() {
    if (link_->isConnected()) {
        link_->heldConnection().takeIn();
    }
}

void ServerSession::dropAhead(const AskedAhead& asked) noexcept {
    if (link_->isConnected() && asked.session == link_->session()) {
        link_->heldConnection().drop(asked.question);
    }
}

}  // namespace dao::postgres
