#include "platform/dao/postgres/place.h"

#include <libpq-fe.h>

#include <algorithm>
#include <memory>

#include "platform/dao/failure.h"

namespace dao::postgres {
namespace {

using Options = std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)>;

[[noreturn]] void refuse(const std::string& fault) {
    fail(errInvalidOperation, "The place of a server can't be read: " + fault + ".");
}

std::string takenFrom(char* message) {
    std::string text = message != nullptr ? message : "out of memory";
    PQfreemem(message);
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    return text;
}

Options parsed(const std::string& text) {
    char* message = nullptr;
    Options options(PQconninfoParse(text.c_str(), &message), &PQconninfoFree);
    if (options == nullptr) {
        refuse(takenFrom(message));
    }
    return options;
}

const PlaceKeyword* findKeyword(std::string_view keyword) {
    const auto found = std::find_if(kPlaceKeywords.begin(), kPlaceKeywords.end(),
                                    [&](const PlaceKeyword& each) { return each.keyword == keyword; });
    return found != kPlaceKeywords.end() ? &*found : nullptr;
}

}  // namespace

std::string keywordFault(std::string_view keyword) {
    if (findKeyword(keyword) != nullptr) {
        return {};
    }
    if (keyword == "password" || keyword == "sslpassword") {
        return "a password does not belong here, but into the password file (.pgpass)";
    }
    return "'" + std::string(keyword) + "' is not a word for the place of a shop";
}

std::string placeFault(const Address& place) {
    if (place.dbname.empty()) {
        return "dbname is missing";
    }
    // The shop has one server. With several, each workstation might find another.
    if (place.host.find(',') != std::string::npos) {
        return "host names more than one server";
    }
    return {};
}

Address placeFromText(const std::string& text) {
    const Options options = parsed(text);
    Address place;
    for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
        if (option->val == nullptr) {
            continue;
        }
        if (const std::string fault = keywordFault(option->keyword); !fault.empty()) {
            refuse(fault);
        }
        place.*findKeyword(option->keyword)->value = option->val;
    }
    if (const std::string fault = placeFault(place); !fault.empty()) {
        refuse(fault);
    }
    return place;
}

std::string placeText(const Address& place) {
    std::string host = place.host.empty() ? "this computer" : place.host;
    if (!isLocal(place) && host.find(':') != std::string::npos) {
        host = "[" + host + "]";
    }
    return host + ":" + (place.port.empty() ? "5432" : place.port) + "/" + place.dbname;
}

bool isLocal(const Address& place) {
    // An '@' is a socket without a file.
    return place.host.empty() || place.host.front() == '/' || place.host.front() == '@';
}

}  // namespace dao::postgres
