#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/driver.h"
#include "platform/dao/postgres/lock_queue.h"
#include "platform/dao/postgres/long_answers.h"
#include "platform/dao/postgres/server_transaction.h"
#include "platform/dao/postgres/statement_runner.h"

namespace dao::postgres {

// Asks the server what a store and its statements want to know, within the transaction that is open: what
// begins it, and the locks of rows that are wanted, go in one breath with the next statement. Outside of
// transactions a connection that was lost is made anew without a word.
class ServerSession final : public StatementRunner {
 public:
    explicit ServerSession(std::shared_ptr<Link> link);
    ~ServerSession() override;

    Link& link() { return *link_; }
    ServerTransaction& transaction() { return transaction_; }
    LockQueue& locks() { return locks_; }
    std::shared_ptr<driver::Statement> prepare(std::string_view text) const;

    Result run(const std::string& text, const Parameters& parameters = {}) override;
    void runInPieces(const std::string& text, const Parameters& parameters,
                     const std::function<void(const Result&)>& take) override;
    std::optional<AskedAhead> askAhead(const std::string& text, const Parameters& parameters) override;
    std::optional<Result> takeAhead(const AskedAhead& asked) override;
    void takeIn() override;
    void dropAhead(const AskedAhead& asked) noexcept override;
    void noteWritten() override { transaction_.noteWritten(Written::kRows); }

    Versions versions();
    std::int64_t newestSchema() const { return newestSchema_; }  // that anybody asked for

 private:
    std::vector<Step> stepsBefore();
    Result runAll(const std::vector<Step>& steps);
    void noteDone(std::size_t done);
    Versions keepVersions(const Result& answer);
    std::optional<std::int64_t> beginPieces(const std::string& text, const Parameters& parameters);
    Result firstPiece(std::int64_t question, const std::string& text);
    std::optional<Result> answerAhead(Connection& server, std::int64_t question);

    std::shared_ptr<StatementRunner*> self_;  // for its statements: holds nullptr once the store is gone
    std::shared_ptr<Link> link_;
    ServerTransaction transaction_;
    LockQueue locks_;
    std::int64_t newestSchema_ = -1;
    LongAnswers longAnswers_;
};

}  // namespace dao::postgres
