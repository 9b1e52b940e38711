#pragma once

#include <string>

#include "platform/dao/repair_report.h"
#include "platform/dao/sqlite/store.h"

namespace dao::driver {

// Whether every page of the file carries its seal and the trees are in order. 3049 where not even the first
// page can be read.
bool isWhole(const OpenRequest& file);

// Carries every row that can be read into `fresh`, a newly created file, with the tables, relations, indexes,
// stored queries and counters. 3049 where the list of tables itself cannot be read.
RepairReport salvage(const OpenRequest& broken, const OpenRequest& fresh);

}  // namespace dao::driver
