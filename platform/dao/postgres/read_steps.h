#pragma once

#include <vector>

#include "platform/dao/postgres/connection.h"

namespace dao::postgres {

// What tells at one glance whether anything has changed: the versions of the tables, of what all writers but
// `writer` have written, the count of the stored queries and the version of the newest.
Step versionsStep(int writer);
// What a transaction begins with that sees one state of the shop throughout: two steps, the versions second.
std::vector<Step> beginningOfRead(int writer);

}  // namespace dao::postgres
