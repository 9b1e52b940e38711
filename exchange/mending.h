#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/old_rows.h"
#include "platform/dao/definitions.h"
#include "platform/dao/value.h"

namespace exchange {

// A table of a new shop, as it is about to be filled.
struct MendedTable {
    dao::TableDef definition;
    std::vector<std::vector<dao::Value>> rows;  // a value for each field of the definition
    std::vector<std::int64_t> places;           // of each row in the old table; -1: made here
    std::int64_t found = 0;                     // rows of the old table
    std::int64_t left = 0;                      // of these, not taken over

    int indexOf(std::string_view field) const;
};

// What a shop that is taken over comes to.
struct MendedShop {
    std::vector<MendedTable> tables;    // in the order in which they are to be filled
    std::vector<std::string> remarks;   // "Services 17: ...", what is not as it was, row by row
    std::vector<std::string> alike;     // "Oprema 7: ...", products of one name; as they were
    std::vector<std::string> notOurs;   // tables, stored queries and fields that no shop has
    std::vector<std::string> notThere;  // tables and fields that the old file has not
};

// Puts the rows of an old shop into the tables of a new one. The old program did not hold its rules as
// strictly: what a new shop cannot have is put under a record made and named for it, given another number,
// cut to what fits, or left out, and never without a remark. Throws OldFileError where there is no shop in
// the file.
MendedShop mend(const OldShop& old);

}  // namespace exchange
