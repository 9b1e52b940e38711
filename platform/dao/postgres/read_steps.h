#pragma once

#include <cstdint>
#include <vector>

#include "platform/dao/postgres/connection.h"

namespace dao::postgres {

// What tells at one glance whether anything has changed.
struct Versions {
    std::int64_t schema = 0;
    std::int64_t data = 0;     // of the other workstations
    std::int64_t queries = 0;  // how many are stored
    std::int64_t newestQuery = 0;
};

// Asks for them; `writer` is this workstation.
Step versionsStep(int writer);
Versions versionsFrom(const Result& answer);
// What a transaction begins with that sees one state of the shop throughout: two steps, the versions second.
std::vector<Step> beginningOfRead(int writer);

}  // namespace dao::postgres
