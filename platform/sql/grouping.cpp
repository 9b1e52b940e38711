#include "platform/sql/grouping.h"

#include <algorithm>
#include <utility>

#include "platform/sql/expressions.h"

namespace sql::writing {

std::vector<Leaf> Grouping::ofGroups(std::vector<Leaf> leaves) const {
    for (Leaf& leaf : leaves) {
        for (ScopeField& field : leaf.fields) {
            const bool own = std::any_of(
                statement_.groupBy.begin(), statement_.groupBy.end(),
                [&](const ExpressionPtr& group) { return isNameOf(*group, leaf.name, field.name); });
            field.sql = context_.dialect.selects.ofGroup(std::move(field.sql), own);
        }
    }
    return leaves;
}

void Grouping::check(const Expression& e, const Scope& scope) const {
    eachName(e, [&](const Expression& name) {
        if (!isGroupedBy(scope.find(name), scope)) {
            throw SyntaxError("The field '" + name.text + "' is neither grouped by nor counted.",
                              name.position);
        }
    });
}

bool Grouping::isGroupedBy(const Scope::Place& field, const Scope& scope) const {
    bool known = false;
    for (const ExpressionPtr& group : statement_.groupBy) {
        eachName(*group, [&](const Expression& grouped) {
            const Scope::Place by = scope.find(grouped);
            known = known || (by.leaf == field.leaf && by.field == field.field);
        });
    }
    return known;
}

std::string Grouping::write(const std::vector<Leaf>& rows, const std::vector<Leaf>& groups) const {
    const Scope scope(rows);
    for (const SelectItem& item : statement_.items) {
        check(*item.expression, scope);
    }
    ExpressionWriter writer(scope, context_);
    std::string text;
    for (const ExpressionPtr& group : statement_.groupBy) {
        text += (text.empty() ? " GROUP BY " : ", ") + context_.dialect.selects.sortKey(writer.write(*group));
    }
    return statement_.having == nullptr ? text : text + having(scope, groups);
}

std::string Grouping::having(const Scope& rows, const std::vector<Leaf>& groups) const {
    std::string text;
    if (statement_.groupBy.empty()) {
        text = " GROUP BY " + std::string(context_.dialect.facts.oneGroup);
    }
    check(*statement_.having, rows);
    const Scope scope(groups);
    ExpressionWriter writer(scope, context_);
    writer.allowAggregates(rows);
    return text + " HAVING " + writer.condition(*statement_.having).text;
}

}  // namespace sql::writing
