#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/sql/calculation.h"
#include "platform/sql/types.h"

// The pieces of text that a statement of a store is put together from.
namespace sql::writing {

// How tightly the outermost operator of a piece of SQL binds. Parentheses are written only where they are
// needed: a store's own parser may give up on some thirty levels of them.
enum Precedence { kOr = 1, kAnd, kNot, kEquality, kSum, kProduct, kConcat, kCollate, kUnary, kAtom };

// An expression in the store's SQL. A value of type Currency is the stored count of ten-thousandths.
struct Sql {
    std::string text;
    Type type = Type::Null;
    Precedence precedence = kAtom;
    int nesting = 0;       // levels of parentheses inside
    bool truth = false;    // a condition as the store's own comparisons give it, not yet 0 or -1
    bool real = false;     // surely a floating number, so that a division by it is no division of integers
    bool notNull = false;  // surely not Null
    Calculation calculation = {};  // of a floating number, where the store takes it; else empty
};

struct OrderTerm {
    Sql sql;
    bool descending = false;
};

// One column behind SELECT.
struct SelectedColumn {
    Sql sql;
    std::string name;  // how it is called outside of this SELECT; empty: by nothing
};

// A SELECT whose pieces are all written.
struct SelectParts {
    bool distinct = false;
    std::vector<SelectedColumn> columns;
    std::string from;
    std::vector<std::string> conditions;  // each fit to stand beside an AND
    std::string groups;                   // with its GROUP BY and HAVING, a blank in front; or empty
    std::vector<OrderTerm> order;
};

std::string quotedName(std::string_view name);
std::string quotedText(std::string_view text);
// Terms joined by AND or OR. Chains of more than `most` go into groups of as many: stores limit the depth of
// one chain.
std::string chain(const std::vector<std::string>& terms, std::string_view joint, std::size_t most);
// The shortest digits that give the number again, with a point or an exponent.
std::string shortest(double number);
// `terms` with a comma between each two.
std::string listed(const std::vector<std::string>& terms);

}  // namespace sql::writing
