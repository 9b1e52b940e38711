#pragma once

#include <functional>

namespace dao {

class Recordset;

// What is done at each row of a walk. It asks nothing of the database.
using AtRow = std::function<void()>;
// Is given the record set that will stand on each row, to look up its fields, and answers what is done there.
// The record set lasts as long as the walk; there is no row in it yet.
using BeginWalk = std::function<AtRow(const Recordset& rows)>;

}  // namespace dao
