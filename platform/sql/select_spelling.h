#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/sql/ast.h"
#include "platform/sql/sql_text.h"
#include "platform/sql/writer.h"

namespace sql::writing {

// How one store spells a selection: its tables, what it is grouped and ordered by, and the whole of it.
class SelectSpelling {
 public:
    SelectSpelling() = default;
    virtual ~SelectSpelling() = default;
    SelectSpelling(const SelectSpelling&) = delete;
    SelectSpelling& operator=(const SelectSpelling&) = delete;

    // A table and its rows. Throws SizeError for names that the store does not take.
    virtual std::string table(const TableInfo& table) const = 0;
    virtual std::string rowKey(const TableInfo& table, const std::string& alias) const = 0;

    // The call of a counting function; `nesting` as in ValueSpelling::wrapped.
    virtual std::string aggregate(const Expression& call, const Sql& argument, int& nesting) const = 0;
    // A field as it stands outside of counting functions where rows are grouped: by it alone (`own`), or by
    // something it is a part of.
    virtual Sql ofGroup(Sql field, bool own) const = 0;
    // What rows are grouped and ordered by: texts that are the same but for case stand together.
    virtual std::string sortKey(const Sql& sql) const = 0;
    virtual std::string orderTerm(const OrderTerm& term) const = 0;
    virtual std::string select(const SelectParts& parts) const = 0;
    // The rows of one table between two keys, in the order of these, all of which are read.
    virtual std::string range(const SelectParts& parts) const { return select(parts); }
    // Rows in the order of their keys, which are the first columns of `parts`; those with a Null among them
    // are left out. `shown`: which of the columns are given, by their places. They come from one pass through
    // `table`, whose own key among those is `key`.
    virtual std::string rowsByKeys(const SelectParts& parts, std::size_t, const std::vector<std::size_t>&,
                                   const std::string&, const std::string&) const {
        return select(parts);
    }
    // Rows by lists of their keys; in what order they come does not matter.
    virtual std::string rowsOfLists(const SelectParts& parts) const { return select(parts); }
};

// The text of a SELECT from `columns` on, where there is nothing to add. Chains are of `chainLength` terms.
std::string selectText(const SelectSpelling& spelling, std::size_t chainLength, const SelectParts& parts,
                       const std::string& columns);

}  // namespace sql::writing
