#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/postgres/exchange.h"
#include "platform/dao/postgres/parameters.h"
#include "platform/dao/postgres/patience.h"
#include "platform/dao/postgres/place.h"
#include "platform/dao/postgres/result.h"
#include "platform/dao/postgres/statement_cache.h"
#include "platform/dao/postgres/step.h"

namespace dao::postgres {

enum class TransactionState {
    kNone,    // every statement stands for itself
    kOpen,    // begun
    kFailed,  // begun, and a statement failed: only a rollback, or one to a savepoint, is taken
    kLost,    // no connection any more
};

struct SessionWishes {
    std::string role;  // who the session works as; empty: the user who connects
    std::chrono::milliseconds connectTime{10'000};
};

// One connection to one database of a server. Nothing here waits without bound, whatever becomes of the
// server and the way to it: see Patience and Exchange.
//
// Waiting for a lock is bounded by the server itself (lock_timeout), with the engine's lock timeout as it
// stands when a transaction begins; also in long work. The length of a statement is bounded here, by its
// Patience: the server's own bound (statement_timeout) is off, whatever its keeper set for the user. A server
// that loses sight of a workstation notices within a minute, and so does the workstation: locks of a dead
// machine end then.
//
// Fails as Exchange does, and with the engine's number for what the server refuses.
class Connection {
 public:
    // errUnrecognisedFormat: a server before 15, or a database that does not keep its texts in UTF-8.
    explicit Connection(const Address& place, const SessionWishes& wishes = {});

    // One statement, with the values for its $1, $2, ... The server keeps it prepared; those used last stay
    // so.
    Result run(const std::string& text, const Parameters& parameters = {}, const Patience& patience = {});
    // Several in one breath, outside of transactions or within the one that is open: each answer in its turn.
    // Where one fails, those behind it are not done; `done` counts those before it.
    std::vector<Result> runAll(const std::vector<Step>& steps, std::size_t& done,
                               const Patience& patience = {});
    // One whose answer nobody waits for. `after`: how the transaction stands behind it.
    void tell(const Step& step, TransactionState after);
    // Several in one breath, without waiting: see Exchange::begin. `after`: how the transaction stands behind
    // them. Nothing, and nothing is begun, where the server has yet to prepare one of them.
    std::optional<std::int64_t> begin(const std::vector<Step>& steps, TransactionState after);
    // Its next answer; nothing where there is no more of it, or something else was asked between. `text`: the
    // statement that a refusal is about.
    std::optional<Result> next(std::int64_t question, const std::string& text, const Patience& patience = {});
    void drop(std::int64_t question) { exchange_.drop(question); }
    // Takes in what has arrived, without waiting.
    void takeIn() { exchange_.takeInArrived(); }
    // Statements without parameters, one or several; those that are several stand or fall together.
    void execute(const std::string& text, const Patience& patience = {});

    TransactionState transactionState() const;
    bool lost() const { return exchange_.handle() == nullptr; }
    // Looks whether the server has hung up meanwhile. Asks nothing.
    void noticeLoss() { exchange_.noticeLoss(); }
    int backendPid() const;     // of the server's process that serves this connection; 0: lost
    int serverVersion() const;  // 150004 for 15.4; 0: lost
    std::int64_t roundTrips() const { return exchange_.roundTrips(); }  // questions asked, also failed ones

 private:
    void proveServer();
    void prepareSession(const SessionWishes& wishes);
    void keepLockTimeout();
    void dropLeftStatements();
    Answer askAll(const std::vector<Step>& steps, std::size_t& done, const Patience& patience);
    void refuse(const Answer& answer, const std::string& text) const;

    Exchange exchange_;
    StatementCache statements_;
    int lockTimeout_;                                  // milliseconds, as the server has it
    TransactionState told_ = TransactionState::kNone;  // how it stands behind what was told last
};

}  // namespace dao::postgres
