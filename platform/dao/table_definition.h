#pragma once

#include <string_view>
#include <vector>

#include "platform/dao/definitions.h"
#include "platform/sql/types.h"

namespace dao {

// A table as the file has it, in the words of Database::TableDefs.
TableDef definitionOf(const sql::TableInfo& table);

// And back, for a new table: errInvalidOperation for a type or size that no field has, errDuplicateField.
sql::TableInfo tableInfo(const TableDef& table);

// Whether a relation stands on that field, on either side: its index comes with the relation.
bool belongsToRelation(std::string_view table, std::string_view field,
                       const std::vector<Relation>& relations);

}  // namespace dao
