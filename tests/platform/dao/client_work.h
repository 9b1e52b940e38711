#pragma once

#include <map>
#include <string>

#include "platform/dao/dao_shop.h"

// A workstation that never rests, for the tests that kill it or its server: it says what it is about to
// write, and that it was written, so that the test knows what must be there.
namespace daotest {

// Edits, adds and deletes clients for ever. Before each step it announces it ("A number name", "E ...", "D
// number"), after it has been told that it is written it says "done". With a city it keeps to the clients of
// that one, who are nobody else's, and goes on past an error: "failed", with the sentence that it was told.
int workForEver(Child& child, const std::string& path, unsigned seed, const std::string& city = {});

using Clients = std::map<int, std::string>;  // surnames

Clients after(Clients clients, const std::string& step);

// What a process reports until it is killed: all that it said is done, and the one step, if any, that it was
// in the middle of.
struct Report {
    Clients written;
    std::string underWay;

    void hear(const std::string& line);
};

// Those in the shop; with a city, those of that one.
Clients clientsIn(const std::string& path, const std::string& city = {});

}  // namespace daotest
