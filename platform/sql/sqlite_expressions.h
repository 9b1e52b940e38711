#pragma once

#include "platform/sql/sqlite_scope.h"

namespace sql::sqlite {

// Writes expressions of the dialect in the store's SQL, with the engine's types and rules.
class ExpressionWriter {
 public:
    ExpressionWriter(const NameResolver& names, Context& context) : names_(names), context_(context) {}

    // Counting functions are known only where rows are grouped: behind SELECT, HAVING and ORDER BY.
    void allowAggregates(bool allowed) { aggregates_ = allowed; }

    Sql write(const Expression& e);
    // What the store is to select: an engine value, Yes/No as 0 and -1.
    Sql value(const Expression& e);
    // What stands behind WHERE, ON, HAVING.
    Sql condition(const Expression& e);
    // What a field of a table is to be set to, in the form that the store keeps it in.
    std::string assigned(const Expression& e, const ColumnInfo& column);

    static bool isAggregate(const Expression& call);
    static bool hasAggregate(const Expression& e);

 private:
    Sql written(const Expression& e);
    Sql negation(const Expression& e);
    Sql inversion(const Expression& e);
    Sql nullTest(const Expression& e);
    Sql literal(const Expression& e) const;
    Sql arithmetic(const Expression& e);
    Sql division(const Sql& left, const Sql& right, const Expression& e) const;
    Sql wholeNumbers(const Sql& left, const Sql& right, const Expression& e) const;
    Sql concat(const Expression& e);
    Sql compare(const Expression& e);
    Sql between(const Expression& e);
    Sql inList(const Expression& e);
    Sql inSet(const Expression& e);
    Sql terms(const Expression& e);
    Sql call(const Expression& e);
    Sql dateDiff(const Expression& e);
    Sql aggregate(const Expression& e);
    std::vector<Sql> comparable(const Expression& e, std::size_t count);
    std::string assignedCurrency(const Expression& e, const Sql& sql) const;
    std::string assignedText(const Expression& e, const Sql& sql) const;

    const NameResolver& names_;
    Context& context_;
    bool aggregates_ = false;
};

// Parentheses around what binds less tightly than `least`. Throws SyntaxError when the store could not read
// it.
std::string wrapped(const Sql& sql, int least, int& nesting, std::size_t position);
// Yes/No as the engine counts it: 0 and -1.
Sql engineValue(Sql sql);
// Currency in units, as a floating number.
Sql inUnits(Sql sql);
// `term` with the engine's comparison of texts, where it is a text.
std::string orderTerm(const Sql& sql, bool descending);

}  // namespace sql::sqlite
