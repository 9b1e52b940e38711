#include "platform/dao/postgres/connection.h"

#include <libpq-fe.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "platform/dao/failure.h"
#include "platform/dao/limits.h"
#include "platform/dao/postgres/loss.h"
#include "platform/dao/postgres/sendings.h"

namespace dao::postgres {
namespace {

constexpr std::size_t kPreparedStatements = 64;
constexpr int kOldestServer = 150000;

// The keepalives are the server's; ours are among the keywords of the connection. They mean nothing to a
// socket of this computer, and do no harm there.
constexpr const char* kSessionSettings =
    "SET standard_conforming_strings = on;"
    "SET client_min_messages = warning;"
    "SET statement_timeout = 0;"
    "SET cursor_tuple_fraction = 1;"  // all rows of each are wanted
    "SET default_transaction_isolation = 'read committed';"
    "SET tcp_keepalives_idle = 20;"
    "SET tcp_keepalives_interval = 10;"
    "SET tcp_keepalives_count = 3;"
    "SET tcp_user_timeout = 50000;";

// To the server no time at all means all the time there is.
std::string lockTimeoutSetting(int milliseconds) {
    return "SET lock_timeout = " + std::to_string(std::max(1, milliseconds));
}

std::string quotedName(pg_conn* connection, const std::string& name) {
    const std::unique_ptr<char, decltype(&PQfreemem)> quoted(
        PQescapeIdentifier(connection, name.data(), name.size()), &PQfreemem);
    if (quoted == nullptr) {
        fail(errInvalidOperation, "Invalid operation: '" + name + "' can't be the name of a role.");
    }
    return quoted.get();
}

std::string parameterStatus(pg_conn* connection, const char* name) {
    const char* value = PQparameterStatus(connection, name);
    return value != nullptr ? value : "";
}

}  // namespace

Connection::Connection(const Address& place, const SessionWishes& wishes)
    : exchange_(nullptr, place), statements_(kPreparedStatements), lockTimeout_(driver::lockTimeout()) {
    const Clock::time_point until = Clock::now() + wishes.connectTime;
    const auto prepare = [&] {
        proveServer();
        prepareSession(wishes);
    };
    // A server that falls may have taken us in its last moment: it is connected to once the session is
    // prepared.
    do {
        exchange_ = Exchange(connectTo(place, until), place);
    } while (!withoutLoss(prepare));
}

Result Connection::run(const std::string& text, const Parameters& parameters, const Patience& patience) {
    std::size_t done = 0;
    return std::move(runAll({{text, parameters}}, done, patience).back());
}

// Where the tables are no longer those that a statement was prepared for, it is prepared anew. A transaction
// has failed with it.
std::vector<Result> Connection::runAll(const std::vector<Step>& steps, std::size_t& done,
                                       const Patience& patience) {
    keepLockTimeout();
    done = 0;
    Answer answer = askAll(steps, done, patience);
    if (answer.error.has_value() && isStale(*answer.error) && done < steps.size()) {
        statements_.forget(StatementCache::keyOf(steps[done].text, steps[done].parameters.types()));
        if (done == 0 && transactionState() == TransactionState::kNone) {
            answer = askAll(steps, done, patience);
        }
    }
    // All may be done, and refused in the end.
    refuse(answer, steps[std::min(done, steps.size() - 1)].text);
    return std::move(answer.results);
}

void Connection::tell(const Step& step, TransactionState after) {
    exchange_.tell([&](pg_conn* connection) { return Sendings::sendUnnamed(connection, step); });
    told_ = after;
}

std::optional<std::int64_t> Connection::begin(const std::vector<Step>& steps, TransactionState after) {
    const Sendings sendings(steps, statements_);
    if (sendings.hasNew()) {
        return std::nullopt;
    }
    const std::int64_t question =
        exchange_.begin([&](pg_conn* connection) { return sendings.send(connection); });
    told_ = after;
    return question;
}

std::optional<Result> Connection::next(std::int64_t question, const std::string& text,
                                       const Patience& patience) {
    Answer answer = exchange_.next(question, patience);
    if (answer.error.has_value()) {
        exchange_.drop(question);
        refuse(answer, text);
    }
    return answer.results.empty() ? std::nullopt : std::optional(answer.last());
}

void Connection::execute(const std::string& text, const Patience& patience) {
    keepLockTimeout();
    const Answer answer =
        exchange_.ask([&](pg_conn* connection) { return PQsendQuery(connection, text.c_str()); }, patience);
    refuse(answer, text);
}

TransactionState Connection::transactionState() const {
    if (!lost() && exchange_.hasTold()) {
        return told_;
    }
    switch (PQtransactionStatus(exchange_.handle())) {
        case PQTRANS_IDLE:
            return TransactionState::kNone;
        case PQTRANS_INTRANS:
        case PQTRANS_ACTIVE:
            return TransactionState::kOpen;
        case PQTRANS_INERROR:
            return TransactionState::kFailed;
        default:
            return TransactionState::kLost;
    }
}

int Connection::backendPid() const {
    return PQbackendPID(exchange_.handle());
}

int Connection::serverVersion() const {
    return PQserverVersion(exchange_.handle());
}

void Connection::proveServer() {
    const std::string where = "The server of " + placeText(exchange_.place());
    if (serverVersion() < kOldestServer) {
        fail(errUnrecognisedFormat, where + " is too old: it is PostgreSQL " +
                                        parameterStatus(exchange_.handle(), "server_version") +
                                        ", and it takes 15 or a newer one.");
    }
    const std::string encoding = parameterStatus(exchange_.handle(), "server_encoding");
    if (encoding != "UTF8") {
        fail(errUnrecognisedFormat,
             where + " keeps the texts of this database in " + encoding + ", and it takes UTF8.");
    }
}

void Connection::prepareSession(const SessionWishes& wishes) {
    std::string settings = kSessionSettings + lockTimeoutSetting(lockTimeout_);
    if (!wishes.role.empty()) {
        settings += ";SET ROLE " + quotedName(exchange_.handle(), wishes.role);
    }
    execute(settings);
}

// Between transactions only: a setting that a transaction made goes when it is rolled back. Within one, the
// patience of the call bounds the waiting.
void Connection::keepLockTimeout() {
    const int wanted = driver::lockTimeout();
    if (wanted != lockTimeout_ && transactionState() == TransactionState::kNone) {
        lockTimeout_ = wanted;
        execute(lockTimeoutSetting(wanted));
    }
}

void Connection::dropLeftStatements() {
    if (transactionState() == TransactionState::kFailed) {
        return;  // the server would not take it
    }
    const TransactionState state = transactionState();
    for (const std::string& name : statements_.takeLeft()) {
        tell({"DEALLOCATE " + name, {}}, state);
    }
}

Answer Connection::askAll(const std::vector<Step>& steps, std::size_t& done, const Patience& patience) {
    dropLeftStatements();
    Sendings sendings(steps, statements_);
    const auto send = [&](pg_conn* connection) { return sendings.send(connection); };
    try {
        Answer answer = exchange_.askPipeline(send, patience);
        done = sendings.take(exchange_.answered(), &answer.results);
        return answer;
    } catch (...) {
        done = sendings.take(exchange_.answered(), nullptr);
        throw;
    }
}

void Connection::refuse(const Answer& answer, const std::string& text) const {
    if (answer.error.has_value()) {
        failWith(*answer.error, exchange_.place(), text);
    }
}

}  // namespace dao::postgres
