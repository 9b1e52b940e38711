#pragma once

#include <functional>
#include <string>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

namespace dao {

// What is done at each row of a walk. It asks nothing of the database.
using AtRow = std::function<void()>;

// Goes through the rows of a SELECT, in its order and as they are at one moment, for those who keep something
// of each of half a million rows: only some of the rows are held at a time. `begin` is given the record set
// that will stand on each of them, to look up its fields, and which lasts as long as the walk; there is no
// row in it yet. Throws what OpenRecordset throws of a snapshot, and what the two throw.
void walkRows(const Database& database, std::string statement,
              const std::function<AtRow(const Recordset& rows)>& begin);

}  // namespace dao
