#pragma once

#include <string>

#include "platform/dao/at_row.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

namespace dao {

// Goes through the rows of a SELECT, in its order and as they are at one moment, for those who keep something
// of each of half a million rows: only some of the rows are held at a time. Throws what OpenRecordset throws
// of a snapshot, and what `begin` and the call at a row throw.
void walkRows(const Database& database, std::string statement, const BeginWalk& begin);

}  // namespace dao
