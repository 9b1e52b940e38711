#pragma once

#include "platform/sql/scope.h"

namespace sql::writing {

// Writes expressions of the engine's language in the store's SQL, with the engine's types and rules.
class ExpressionWriter {
 public:
    ExpressionWriter(const NameResolver& names, Context& context)
        : names_(&names), context_(context), dialect_(context.dialect) {}

    // Counting functions are known only where rows are grouped: behind SELECT, HAVING and ORDER BY. What they
    // count is called by the names of `rows`.
    void allowAggregates(const NameResolver& rows) { rows_ = &rows; }

    Sql write(const Expression& e);
    // What the store is to select: an engine value, Yes/No as 0 and -1.
    Sql value(const Expression& e);
    // What stands behind WHERE, ON, HAVING.
    Sql condition(const Expression& e);

    static bool isAggregate(const Expression& call);
    static bool hasAggregate(const Expression& e);

 private:
    Sql written(const Expression& e);
    Sql field(const Expression& e);
    Sql negation(const Expression& e);
    Sql inversion(const Expression& e);
    Sql nullTest(const Expression& e);
    Sql arithmetic(const Expression& e);
    Sql concat(const Expression& e);
    Sql comparison(const Expression& e);
    Sql inSet(const Expression& e);
    Sql terms(const Expression& e);
    Sql call(const Expression& e);
    Sql dateDiff(const Expression& e);
    Sql aggregate(const Expression& e);
    Sql ofRows(const Expression& e);

    const NameResolver* names_;
    const NameResolver* rows_ = nullptr;
    Context& context_;
    const Dialect& dialect_;
};

// Calls `seen` with every name outside of counting functions.
template <class Seen>
void eachName(const Expression& e, const Seen& seen) {
    if (e.kind == Expression::Kind::Name) {
        seen(e);
    } else if (!ExpressionWriter::isAggregate(e)) {
        for (const ExpressionPtr& child : e.children) {
            eachName(*child, seen);
        }
    }
}

}  // namespace sql::writing
