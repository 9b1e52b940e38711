#include "platform/dao/postgres/connection.h"

#include <libpq-fe.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "platform/dao/failure.h"
#include "platform/dao/limits.h"
#include "platform/dao/postgres/loss.h"

namespace dao::postgres {
namespace {

constexpr std::size_t kPreparedStatements = 64;
constexpr int kOldestServer = 150000;
constexpr int kBinary = 1;

// The keepalives are the server's; ours are among the keywords of the connection. They mean nothing to a
// socket of this computer, and do no harm there.
constexpr const char* kSessionSettings =
    "SET standard_conforming_strings = on;"
    "SET client_min_messages = warning;"
    "SET statement_timeout = 0;"
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
    keepLockTimeout();
    const std::string key = StatementCache::keyOf(text, parameters.types());
    Answer answer = runKept(key, text, parameters, patience);
    if (answer.error.has_value() && isStale(*answer.error)) {
        // The tables are no longer those that it was prepared for. A transaction has failed with it.
        statements_.forget(key);
        if (transactionState() == TransactionState::kNone) {
            answer = runKept(key, text, parameters, patience);
        }
    }
    refuse(answer, text);
    return std::move(answer.result);
}

void Connection::execute(const std::string& text, const Patience& patience) {
    keepLockTimeout();
    refuse(
        exchange_.ask([&](pg_conn* connection) { return PQsendQuery(connection, text.c_str()); }, patience),
        text);
}

TransactionState Connection::transactionState() const {
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
    std::string text;
    for (const std::string& name : statements_.takeLeft()) {
        text += "DEALLOCATE " + name + ";";
    }
    if (!text.empty()) {
        execute(text);
    }
}

Answer Connection::runKept(const std::string& key, const std::string& text, const Parameters& parameters,
                           const Patience& patience) {
    std::string name = statements_.find(key);
    if (name.empty()) {
        dropLeftStatements();
        name = statements_.newName();
        if (Answer refused = prepare(name, text, parameters, patience); refused.error.has_value()) {
            return refused;
        }
        statements_.keep(key, name);
    }
    const std::vector<const char*> values = parameters.values();
    const std::vector<int> formats(values.size(), kBinary);
    return exchange_.ask(
        [&](pg_conn* connection) {
            return PQsendQueryPrepared(connection, name.c_str(), static_cast<int>(values.size()),
                                       values.data(), parameters.lengths().data(), formats.data(), kBinary);
        },
        patience);
}

Answer Connection::prepare(const std::string& name, const std::string& text, const Parameters& parameters,
                           const Patience& patience) {
    const std::vector<unsigned>& types = parameters.types();
    return exchange_.ask(
        [&](pg_conn* connection) {
            return PQsendPrepare(connection, name.c_str(), text.c_str(), static_cast<int>(types.size()),
                                 types.data());
        },
        patience);
}

void Connection::refuse(const Answer& answer, const std::string& text) const {
    if (answer.error.has_value()) {
        failWith(*answer.error, exchange_.place(), text);
    }
}

}  // namespace dao::postgres
