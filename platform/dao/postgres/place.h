#pragma once

#include <array>
#include <string>
#include <string_view>

// Where a shop's records lie on a server, in the words of the server's own client library. A password is not
// among them: it stands in the person's password file, never in a place that a shop hands round.
namespace dao::postgres {

// Empty: what the client library takes by itself, whatever the environment says.
struct Address {
    std::string host;         // a name, a number, or the folder of a socket (it begins with '/')
    std::string port;         // empty: 5432
    std::string dbname;       // never empty in a place that can be opened
    std::string user;         // empty: the person's own name on this computer
    std::string sslmode;      // verify-full: only a server whose certificate bears the name of the host
    std::string sslrootcert;  // who signs the server's certificate: a file of this computer
    std::string passfile;     // empty: .pgpass in the person's own folder

    bool operator==(const Address&) const = default;
};

struct PlaceKeyword {
    std::string_view keyword;
    std::string Address::*value;
};

inline constexpr std::array kPlaceKeywords{
    PlaceKeyword{"host", &Address::host},         PlaceKeyword{"port", &Address::port},
    PlaceKeyword{"dbname", &Address::dbname},     PlaceKeyword{"user", &Address::user},
    PlaceKeyword{"sslmode", &Address::sslmode},   PlaceKeyword{"sslrootcert", &Address::sslrootcert},
    PlaceKeyword{"passfile", &Address::passfile},
};

// What is wrong with a keyword in a place, as the end of a sentence; empty: nothing.
std::string keywordFault(std::string_view keyword);
// What is wrong with a place as a whole; empty: nothing.
std::string placeFault(const Address& place);

// "host=shop dbname=tarvello", quoted as the client library has it. errInvalidOperation with what is wrong:
// the text itself, a keyword that no place has (a password), no dbname.
Address placeFromText(const std::string& text);

// For messages: "shop:5432/tarvello", "/run/postgresql:5432/tarvello". Not meant to be read back.
std::string placeText(const Address& place);

// Whether the server is reached through a socket of this computer.
bool isLocal(const Address& place);

}  // namespace dao::postgres
