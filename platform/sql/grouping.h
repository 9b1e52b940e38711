#pragma once

#include <string>
#include <vector>

#include "platform/sql/select_source.h"

namespace sql::writing {

// What the rows of a SELECT are grouped by, where they are grouped.
class Grouping {
 public:
    // Both outlive it.
    Grouping(const SelectSource& source, Context& context)
        : statement_(source.statement()), context_(context) {}

    // The fields as they stand outside of counting functions.
    std::vector<Leaf> ofGroups(std::vector<Leaf> leaves) const;
    // A field outside of a counting function has to be one the groups are made by: SyntaxError.
    void check(const Expression& e, const Scope& scope) const;
    // GROUP BY ... HAVING ...; `rows` as the fields stand within counting functions, `groups` outside.
    std::string write(const std::vector<Leaf>& rows, const std::vector<Leaf>& groups) const;

 private:
    bool isGroupedBy(const Scope::Place& field, const Scope& scope) const;
    std::string having(const Scope& rows, const std::vector<Leaf>& groups) const;

    const Statement& statement_;
    Context& context_;
};

}  // namespace sql::writing
