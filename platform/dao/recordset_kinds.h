#pragma once

#include <cstdint>
#include <cstdio>
#include <vector>

// The record set's word for its end has been a macro of <cstdio> for longer than either has been here.
#undef EOF

// The words in which record sets are asked for and told.
namespace dao {

enum RecordsetType { dbOpenTable = 1, dbOpenDynaset = 2, dbOpenSnapshot = 4 };

enum class EditModeKind { None, InProgress, Add };

// Where a row stands: kept from Bookmark or LastModified, given back to setBookmark of the same record set.
using Bookmark = std::vector<std::int64_t>;

}  // namespace dao
