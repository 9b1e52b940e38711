#pragma once

#include "platform/dao/definitions.h"
#include "platform/sql/types.h"

namespace dao {

// A table as the file has it, in the words of Database::TableDefs.
TableDef definitionOf(const sql::TableInfo& table);

}  // namespace dao
