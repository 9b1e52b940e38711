#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/sql/types.h"

namespace sql {

// The tree of a statement. Immutable once parsed, so that caches, stored queries and record sets can share it
// between them without a copy.

// One expression. A chain of ANDs or ORs is one node with many children: a chain of a hundred thousand terms
// must neither deepen the tree nor the stack.
struct Expression {
    enum class Kind : std::uint8_t {
        Null,
        Boolean,     // integer: -1 or 0
        Integer,     // integer
        Number,      // number
        Text,        // text
        Date,        // number: days since 30 December 1899
        Name,        // qualifier (may be empty), text
        Negate,      // children[0]
        Arithmetic,  // op, children[0], children[1]
        Concat,      // children[0] & children[1]
        Compare,     // op, children[0], children[1]
        Not,         // children[0]
        And,         // children, two or more
        Or,          // children, two or more
        IsNull,      // children[0], negated
        Between,     // children[0] between children[1] and children[2], negated
        In,          // children[0] in the others, negated
        InSet,       // children[0], a Name, is one of ids
        Call,        // text: the function, in its own spelling; children: its arguments
    };
    enum class Op : std::uint8_t {
        None,
        Add,
        Subtract,
        Multiply,
        Divide,
        IntDivide,
        Mod,
        Equal,
        NotEqual,
        Less,
        Greater,
        LessEqual,
        GreaterEqual,
    };

    Kind kind = Kind::Null;
    Op op = Op::None;
    bool negated = false;   // IS NOT NULL, NOT BETWEEN, NOT IN
    bool distinct = false;  // Call: COUNT(DISTINCT ...)
    bool star = false;      // Call: COUNT(*)
    bool dotted = false;    // Name: one pair of brackets around all of it and a point inside, [Table.Field]
    int depth = 1;          // levels of the tree from here down
    std::size_t position = 0;  // where it stands in the statement, in bytes
    std::int64_t integer = 0;
    double number = 0;
    std::string text;
    std::string qualifier;
    std::vector<ExpressionPtr> children;
    // What a chain "field = number OR field = number ..." asked for: ascending, each once. Kept as bare
    // numbers, since a quick filter writes one term for each client, computer and service it has found.
    std::shared_ptr<const std::vector<std::int64_t>> ids;
};

// One entry behind SELECT.
struct SelectItem {
    bool star = false;      // every field, of all sources or of `qualifier`
    std::string qualifier;  // with star only
    ExpressionPtr expression;
    std::string alias;  // empty: none given
    std::size_t position = 0;
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};

// What stands behind FROM: a table or stored query, a SELECT in parentheses, or a join of two of these.
struct FromNode {
    enum class Kind : std::uint8_t { Table, Select, Inner, Left, Right, Cross };
    Kind kind = Kind::Table;
    std::string name;   // Table
    std::string alias;  // Table, Select; empty: none given
    StatementPtr select;
    std::shared_ptr<const FromNode> left, right;
    ExpressionPtr on;  // Inner, Left, Right
    std::size_t position = 0;
};
using FromNodePtr = std::shared_ptr<const FromNode>;

// A field and the value it gets: UPDATE and INSERT.
struct Assignment {
    std::string qualifier;  // may be empty
    std::string field;
    ExpressionPtr value;
    std::size_t position = 0;
};

struct Statement {
    enum class Kind : std::uint8_t { Select, Insert, Update, Delete };
    Kind kind = Kind::Select;

    // Select
    bool distinct = false;
    std::vector<SelectItem> items;
    FromNodePtr from;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
    std::vector<OrderItem> orderBy;

    // Select, Update, Delete; nullptr: every row
    ExpressionPtr where;

    // Insert, Update, Delete
    std::string table;
    std::size_t tablePosition = 0;
    std::vector<Assignment> assignments;
};

// The deepest tree the parser builds. The store's own limit is a thousand levels, and what the writer adds
// around an expression has to fit below it.
inline constexpr int kMaxTreeDepth = 400;
// How deep parentheses, signs and nested selects may stand in each other.
inline constexpr int kMaxNesting = 200;
// How many tables and queries one FROM may name.
inline constexpr int kMaxSources = 32;
// How many stored queries may stand in one another.
inline constexpr int kMaxQueryDepth = 32;

// The tree in one line, for tests and for whoever looks for the reason of an error: "(= CustID 5)".
std::string dump(const Expression& expression);
std::string dump(const Statement& statement);

}  // namespace sql
