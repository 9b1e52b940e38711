#pragma once

#include <string>

#include "platform/dao/repair_report.h"
#include "platform/dao/sqlite/store.h"

namespace dao::driver {

// Whether every page of the file carries its seal and the trees are in order. The file is not open here.
bool isWhole(const OpenRequest& file);
// The same of an open one, whose key it is.
bool isWhole(SqliteStore& store, const std::string& key);
// Whether any page of the file carries the seal of that key.
bool isKeyOf(const std::string& path, const std::string& key);

// Carries every row that can be read into `fresh`, a newly created file, with the tables, relations, indexes,
// stored queries and counters, by what the first page tells of them or, where that is lost, by what the file
// tells elsewhere. 3049 where nothing does.
RepairReport salvage(const OpenRequest& broken, const OpenRequest& fresh);

}  // namespace dao::driver
