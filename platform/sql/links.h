#pragma once

#include "platform/sql/joins.h"

namespace sql::writing {

// A FROM whose joins do nothing but follow numbers: from the services that a filter has found to the numbers
// of their computers, and on to those of the clients. The store then follows them in memory (see
// LookupSpelling::link) instead of looking for a computer and a client in the file for each service.
class Links {
 public:
    // `unique` is the source whose row stands in one row of the result at most.
    Links(const JoinNode& join, const std::vector<Leaf>& leaves, int unique);

    // Whether nothing but numbers is asked of the tables that are linked to, and the conditions ask for the
    // first table alone.
    bool serve(const Statement& statement) const;
    FromText write(Context& context) const;

 private:
    // How a table's rows are found: its counter has the number that a field of another one holds.
    struct Link {
        int from = -1;  // the leaf of that field
        int field = -1;
    };

    bool gather(const JoinNode& node);
    bool gather(const Expression& condition);
    bool gather(const Scope::Place& number, const Scope::Place& field);
    bool order();
    bool choosePassed();
    bool isNumber(const Scope::Place& place) const;
    const ScopeField& at(const Scope::Place& place) const;

    const std::vector<Leaf>& leaves_;
    int first_;
    bool whole_ = false;       // each table but the first has its link
    std::vector<Link> links_;  // by leaf
    std::vector<int> order_;   // the leaves but the first, each behind the one it is linked from
    std::vector<int> passed_;  // by leaf: the field that others are linked by; -1: none
};

}  // namespace sql::writing
