#pragma once

#include <cstddef>
#include <string_view>

#include "platform/sql/lookup_spelling.h"
#include "platform/sql/select_spelling.h"
#include "platform/sql/value_spelling.h"

namespace sql::writing {

// What a store takes, and the small words that differ.
struct Facts {
    std::size_t chainLength;    // terms that one AND or OR may join
    std::size_t maxColumns;     // of a SELECT, and terms of an order
    bool joinNeedsCondition;    // INNER JOIN cannot stand without ON
    std::size_t linkedColumns;  // with which rows can be followed by their links; 0: not at all
    bool setsInOrder;           // rows looked up by a set come in the order of its numbers
    bool listsAbsentRows;       // a list of keys may also stand for rows that an outer join has none of
    std::string_view oneGroup;  // behind GROUP BY: all rows there are, and no group where there are none
    std::string_view dateDiff;  // the function of this name
    // The function that does a whole calculation of floating numbers; empty: there is none.
    std::string_view calculate = {};
};

// How one store spells what the engine's statements ask for. Everything that two stores write alike stands in
// the writers that use it.
struct Dialect {
    const Facts& facts;
    const ValueSpelling& values;
    const LookupSpelling& lookups;
    const SelectSpelling& selects;
};

const Dialect& sqliteDialect();
const Dialect& postgresDialect();

}  // namespace sql::writing
