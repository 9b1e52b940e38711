#include "platform/dao/postgres/startup.h"

#include <libpq-fe.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <map>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/dao/postgres/addresses.h"
#include "platform/dao/postgres/server_error.h"
#include "platform/dao/postgres/socket_wait.h"

namespace dao::postgres {
namespace {

using Keywords = std::map<std::string, std::string>;

constexpr std::chrono::milliseconds kBeforeNextTry{100};

// The client library reads these whatever it is given. They are put away before the program has a second
// thread: what somebody once set up for other programs must not lead a shop to another server, or keep it
// from its own.
const bool kPutAway = [] {
    for (const char* name : {"PGSERVICE", "PGDATESTYLE", "PGTZ", "PGGEQO"}) {
        unsetenv(name);
    }
    return true;
}();

std::string personsName() {
    std::array<char, 4096> room{};
    passwd entry{};
    passwd* found = nullptr;
    getpwuid_r(geteuid(), &entry, room.data(), room.size(), &found);
    return found != nullptr ? found->pw_name : "";
}

// Everything that the library would otherwise take from the environment, as it is in an empty one.
Keywords neutralKeywords() {
    Keywords keywords;
    PQconninfoOption* options = PQconndefaults();
    for (const PQconninfoOption* option = options; option != nullptr && option->keyword != nullptr;
         ++option) {
        if (option->envvar != nullptr && std::string_view(option->keyword) != "service") {
            keywords[option->keyword] = option->compiled != nullptr ? option->compiled : "";
        }
    }
    PQconninfoFree(options);
    return keywords;
}

// A peer that has died is noticed within a minute, also where nobody is waiting for an answer.
const Keywords& ownKeywords() {
    static const Keywords keywords{
        {"application_name", "Tarvello"}, {"client_encoding", "UTF8"},   {"keepalives", "1"},
        {"keepalives_idle", "20"},        {"keepalives_interval", "10"}, {"keepalives_count", "3"},
        {"tcp_user_timeout", "50000"},    {"gssencmode", "disable"},
    };
    return keywords;
}

Keywords keywordsOf(const Address& place, const std::string& address) {
    Keywords keywords = neutralKeywords();
    keywords["user"] = personsName();
    for (const auto& [keyword, value] : ownKeywords()) {
        keywords[keyword] = value;
    }
    for (const PlaceKeyword& each : kPlaceKeywords) {
        if (const std::string& value = place.*each.value; !value.empty()) {
            keywords[std::string(each.keyword)] = value;
        }
    }
    keywords["hostaddr"] = address;
    return keywords;
}

// Quoted as one text: only so does an empty value count as given.
std::string written(const Keywords& keywords) {
    std::string text;
    for (const auto& [keyword, value] : keywords) {
        text += keyword + "='";
        for (const char letter : value) {
            if (letter == '\'' || letter == '\\') {
                text += '\\';
            }
            text += letter;
        }
        text += "' ";
    }
    return text;
}

bool isState(std::string_view text) {
    return text.size() == 5 && std::all_of(text.begin(), text.end(), [](unsigned char letter) {
               return std::isdigit(letter) != 0 || std::isupper(letter) != 0;
           });
}

// One line, without the full stop.
std::string oneLine(std::string_view text) {
    std::string line;
    for (const char letter : text) {
        const bool space = std::isspace(static_cast<unsigned char>(letter)) != 0;
        if (!space || (!line.empty() && line.back() != ' ')) {
            line += space ? ' ' : letter;
        }
    }
    while (!line.empty() && (line.back() == ' ' || line.back() == '.')) {
        line.pop_back();
    }
    return line;
}

// While a connection is being made the library keeps what the server said only as a text; a wordy one has the
// state in it: "FATAL:  28P01: no such user", with other lines behind.
ServerError errorIn(std::string_view message) {
    constexpr std::string_view kBefore = ":  ";
    constexpr std::string_view kAfter = ": ";
    for (std::size_t at = message.find(kBefore); at != std::string_view::npos;
         at = message.find(kBefore, at + 1)) {
        const std::string_view rest = message.substr(at + kBefore.size());
        if (isState(rest.substr(0, 5)) && rest.substr(5).starts_with(kAfter)) {
            const std::string_view said = rest.substr(5 + kAfter.size());
            return {std::string(rest.substr(0, 5)), oneLine(said.substr(0, said.find('\n'))), {}};
        }
    }
    return {{}, oneLine(message), {}};
}

ServerError errorOfConnecting(pg_conn* connection) {
    ServerError error = errorIn(PQerrorMessage(connection));
    if (error.state.empty() && PQconnectionNeedsPassword(connection) != 0) {
        error.state = "28P01";
        error.sentence = "it asks for a password, and there is none for it in the password file (.pgpass)";
    }
    return error;
}

// Whether the connection came about; `error` says why not.
bool carryThrough(pg_conn* connection, const Address& place, Clock::time_point until, ServerError& error) {
    PostgresPollingStatusType state = PGRES_POLLING_WRITING;
    bool accepted = false;
    while (PQstatus(connection) != CONNECTION_BAD && state != PGRES_POLLING_FAILED) {
        if (state == PGRES_POLLING_OK) {
            return true;
        }
        const bool reading = state == PGRES_POLLING_READING;
        accepted = accepted || reading;
        if (!waitForSocket(PQsocket(connection), reading, !reading, until)) {
            error = {{}, "it gives no answer", {}};
            return false;
        }
        state = PQconnectPoll(connection);
    }
    error = errorOfConnecting(connection);
    // A server that sets itself up anew after a fall hangs up on those whom it has just taken. Over a network
    // that may be a quarrel about certificates, which no waiting ends.
    if (error.state.empty() && accepted && isLocal(place)) {
        error.state = kNotReady;
    }
    return false;
}

Handle tryAddress(const Address& place, const std::string& address, Clock::time_point until,
                  ServerError& error) {
    Handle handle(PQconnectStart(written(keywordsOf(place, address)).c_str()));
    if (handle == nullptr) {
        throw std::bad_alloc();
    }
    PQsetErrorVerbosity(handle.get(), PQERRORS_VERBOSE);
    PQsetNoticeReceiver(
        handle.get(), [](void*, const PGresult*) {}, nullptr);
    if (!carryThrough(handle.get(), place, until, error)) {
        return nullptr;
    }
    PQsetErrorVerbosity(handle.get(), PQERRORS_DEFAULT);
    PQsetnonblocking(handle.get(), 1);
    return handle;
}

// A host that has several addresses may answer at one of them only: each has its share of the time.
Handle tryPlace(const Address& place, Clock::time_point until, ServerError& error) {
    Addresses addresses{{""}, {}};
    if (!isLocal(place)) {
        addresses = addressesOf(place.host, until);
        error = {{}, addresses.fault, {}};
    }
    std::size_t left = addresses.numbers.size();
    for (const std::string& address : addresses.numbers) {
        const auto share = (until - Clock::now()) / static_cast<int>(left--);
        if (Handle handle = tryAddress(place, address, Clock::now() + share, error)) {
            return handle;
        }
        if (!error.state.empty()) {
            break;  // the server has answered
        }
    }
    return nullptr;
}

}  // namespace

void Finish::operator()(pg_conn* connection) const {
    PQfinish(connection);
}

Handle connectTo(const Address& place, Clock::time_point until) {
    while (true) {
        ServerError error;
        if (Handle handle = tryPlace(place, until, error)) {
            return handle;
        }
        if (!isNotReady(error) || Clock::now() + kBeforeNextTry >= until) {
            failConnecting(error, place);
        }
        std::this_thread::sleep_for(kBeforeNextTry);
    }
}

}  // namespace dao::postgres
