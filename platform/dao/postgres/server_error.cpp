#include "platform/dao/postgres/server_error.h"

#include <libpq-fe.h>

#include <algorithm>
#include <array>

#include "platform/dao/failure.h"

namespace dao::postgres {
namespace {

struct StateNumber {
    std::string_view state;  // all of it, or the class that it begins with
    int number;
    std::string_view opening;  // goes before the server's sentence; empty: the engine's own sentence instead
};

constexpr std::array kNumbers{
    StateNumber{"22003", errOverflow, ""},
    StateNumber{"23505", errDuplicateKey, ""},
    StateNumber{"23503", errRelatedRecordRequired, ""},
    StateNumber{"25006", errReadOnly, ""},
    StateNumber{"28", errInvalidPassword, "The server does not let you in: "},
    StateNumber{"3D000", errFileNotFound, "The server has no such database: "},
    StateNumber{"40001", errDataChanged, ""},
    StateNumber{"40P01", errLocked, ""},
    StateNumber{"42501", errMissingRight, "You have no permission for this on the server: "},
    StateNumber{"53100", errNotEnoughSpace, ""},
    StateNumber{"55P03", errLocked, ""},
};

// The server was shut down, has fallen, is starting, or has cut the connection off.
constexpr std::array<std::string_view, 6> kLosses{"08", "57P01", "57P02", "57P03", "57P05", "25P03"};

std::string field(const pg_result* answer, int which) {
    const char* text = PQresultErrorField(answer, which);
    return text != nullptr ? text : "";
}

// One state for two errors: a row is deleted that others refer to, or one is written that refers to nothing.
// The statement tells which, and of a changed key a server that speaks English.
bool isStillReferred(const ServerError& error, std::string_view statement) {
    return error.state == "23503" &&
           (statement.starts_with("DELETE") || error.detail.find("still referenced") != std::string::npos);
}

const StateNumber* findNumber(const ServerError& error) {
    const auto found = std::find_if(kNumbers.begin(), kNumbers.end(), [&](const StateNumber& each) {
        return error.state.starts_with(each.state);
    });
    return found != kNumbers.end() ? &*found : nullptr;
}

[[noreturn]] void failOpening(const ServerError& error, const Address& place, const std::string& opening) {
    if (isLoss(error)) {
        failLost(place, error.sentence);
    }
    const StateNumber* number = findNumber(error);
    if (number == nullptr) {
        fail(errInvalidOperation, opening + error.sentence + ".");
    }
    fail(number->number,
         number->opening.empty() ? std::string() : std::string(number->opening) + error.sentence + ".");
}

}  // namespace

ServerError errorOf(const pg_result* answer) {
    return {field(answer, PG_DIAG_SQLSTATE), field(answer, PG_DIAG_MESSAGE_PRIMARY),
            field(answer, PG_DIAG_MESSAGE_DETAIL)};
}

bool isLoss(const ServerError& error) {
    return std::any_of(kLosses.begin(), kLosses.end(),
                       [&](std::string_view loss) { return error.state.starts_with(loss); });
}

bool isNotReady(const ServerError& error) {
    return error.state == kNotReady;
}

bool isCancel(const ServerError& error) {
    return error.state == "57014";
}

bool isStale(const ServerError& error) {
    return error.state == "26000" || error.state == "0A000";
}

void failLost(const Address& place, const std::string& reason) {
    try {
        fail(errDiskIo, "The server of " + placeText(place) + " can't be reached: " + reason + ".");
    } catch (const Error& error) {
        throw ConnectionLost(error.Number(), error.Description());
    }
}

void failWith(const ServerError& error, const Address& place, std::string_view statement) {
    if (isStillReferred(error, statement)) {
        fail(errRelatedRecordExists);
    }
    failOpening(error, place, "Invalid operation: ");
}

void failConnecting(const ServerError& error, const Address& place) {
    if (error.state.empty()) {
        failLost(place, error.sentence);
    }
    failOpening(error, place, "Couldn't connect to " + placeText(place) + ": ");
}

}  // namespace dao::postgres
