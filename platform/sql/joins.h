#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/sql/scope.h"

namespace sql::writing {

// A FROM as a tree of joins over the leaves of a statement; one bit of a mask for each leaf.
struct JoinNode {
    enum class Kind : std::uint8_t { Leaf, Inner, Left };
    Kind kind = Kind::Leaf;
    int leaf = -1;
    std::uint64_t mask = 0;
    std::unique_ptr<JoinNode> left, right;
    std::vector<const Expression*> on;
};
using JoinNodePtr = std::unique_ptr<JoinNode>;

// The leaves an expression names.
std::uint64_t leavesOf(const Expression& e, const Scope& scope);
// The leaves without a row of which a condition cannot hold.
std::uint64_t neededLeaves(const Expression& condition, const Scope& scope);

// Where a condition cannot hold without a row of the outer side, the join is as good as an inner one, and the
// store may begin with the side it filters: this is what makes the quick filters read the services first.
void reduceOuterJoins(JoinNode& node, std::uint64_t needed, const Scope& scope);
// Turns a join in parentheses into one that is read from the left, as far as that means the same: the store
// would build a table of its own for the parentheses.
void straighten(JoinNodePtr& node, const Scope& scope);
// The leaves that may be absent from a row.
std::uint64_t nullableLeaves(const JoinNode& node);
// The source (counted through all leaves) whose row stands in one row of the result at most; -1: none.
int uniqueSource(const JoinNode& node, const std::vector<Leaf>& leaves);
// How many sources stand before those of a leaf.
int firstSource(const std::vector<Leaf>& leaves, int leaf);

// The text behind FROM. Fields and keys of leaves that had to go into a nested select are called by their
// names outside of it from then on.
struct FromText {
    std::vector<Leaf> leaves;
    std::string text;
    std::vector<std::string> conditions;  // what has to stand behind WHERE
    // The rows are those of one table, which come in any order; one with a Null among its keys is none.
    bool linked = false;
};
// With `fetch` the rows are found by their keys and need not meet the conditions of the stored queries any
// more.
FromText writeFrom(const JoinNode& node, std::vector<Leaf> leaves, Context& context, bool fetch);

}  // namespace sql::writing
