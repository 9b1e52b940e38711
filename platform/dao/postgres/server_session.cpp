#include "platform/dao/postgres/server_session.h"

#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/loss.h"
#include "platform/dao/postgres/server_statement.h"

namespace dao::postgres {

ServerSession::ServerSession(std::shared_ptr<Link> link)
    : self_(std::make_shared<StatementRunner*>(this)), link_(std::move(link)), transaction_(*link_) {}

ServerSession::~ServerSession() {
    *self_ = nullptr;
    transaction_.rollback();
}

std::shared_ptr<driver::Statement> ServerSession::prepare(std::string_view text) const {
    return std::make_shared<ServerStatement>(self_, std::string(text));
}

// A question asked twice does no harm, whatever came of it the first time.
Result ServerSession::run(const std::string& text, const Parameters& parameters) {
    Result answer{nullptr};
    const bool mayRepeat = transaction_.beginning().isAhead() ||
                           (!transaction_.beginning().isAsked() && text.starts_with("SELECT"));
    const auto ask = [&] {
        std::vector<Step> steps = stepsBefore();
        steps.push_back({text, parameters});
        answer = runAll(steps);
    };
    if (!mayRepeat || !withoutLoss(ask)) {
        ask();
    }
    return answer;
}

// What goes to the server in one breath with the next statement: nobody has to wait for it alone.
std::vector<Step> ServerSession::stepsBefore() {
    std::vector<Step> steps = transaction_.beginning().stepsAhead();
    locks_.addSteps(steps);
    return steps;
}

Result ServerSession::runAll(const std::vector<Step>& steps) {
    Connection& server = transaction_.connection();
    std::size_t done = 0;
    try {
        std::vector<Result> answers = server.runAll(steps, done);
        if (transaction_.beginning().isAhead()) {
            keepVersions(answers[1]);
        }
        noteDone(done);
        return std::move(answers.back());
    } catch (const ConnectionLost&) {
        throw;
    } catch (const Error&) {
        noteDone(done);
        transaction_.restore();
        throw;
    }
}

// The first `done` of the steps that stepsBefore gave, and of whatever came behind them.
void ServerSession::noteDone(std::size_t done) {
    if (done > 0 && transaction_.beginning().noteBegun()) {
        done -= std::min<std::size_t>(done, 2);
    }
    locks_.noteDone(done, link_->session());
}

Versions ServerSession::versions() {
    if (const std::optional<Versions> seen = transaction_.seen()) {
        return *seen;
    }
    if (transaction_.beginning().isAhead()) {  // they come with what begins the transaction
        const auto ask = [&] { runAll(stepsBefore()); };
        if (!withoutLoss(ask)) {
            ask();
        }
        return transaction_.seen().value_or(Versions());
    }
    const Step versions = versionsStep(link_->writer().number(transaction_.connection()));
    return keepVersions(run(versions.text, versions.parameters));
}

Versions ServerSession::keepVersions(const Result& answer) {
    const Versions now = versionsFrom(answer);
    transaction_.noteSeen(now);
    newestSchema_ = now.schema;
    return now;
}

}  // namespace dao::postgres
