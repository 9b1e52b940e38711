#include "platform/sql/select_body.h"

#include <algorithm>
#include <utility>

#include "platform/sql/expressions.h"
#include "platform/sql/links.h"

namespace sql::writing {
namespace {

using Kind = Expression::Kind;

// A name behind ORDER BY: first a column of the result, then a field of the tables.
class OrderNames : public NameResolver {
 public:
    OrderNames(const std::vector<SelectColumn>& columns, const Scope& scope)
        : columns_(columns), scope_(scope) {}
    const ScopeField& resolve(const Expression& name) const override {
        if (name.qualifier.empty()) {
            for (const SelectColumn& column : columns_) {
                if (sameName(column.field.name, name.text)) {
                    return column.field;
                }
            }
        }
        return scope_.resolve(name);
    }

 private:
    const std::vector<SelectColumn>& columns_;
    const Scope& scope_;
};

}  // namespace

SelectBody SelectBodyWriter::write(SelectPurpose purpose) {
    body_.from = from(purpose);
    body_.groupLeaves = source_.isGrouped() ? grouping_.ofGroups(body_.from.leaves) : body_.from.leaves;
    addColumns();
    body_.conditions = body_.from.conditions;
    if (purpose != SelectPurpose::Fetch) {
        addWhere();
        if (source_.isGrouped()) {
            body_.groups = grouping_.write(body_.from.leaves, body_.groupLeaves);
        }
        addOrder();
    }
    return std::move(body_);
}

SelectBody SelectBodyWriter::writeMerged() {
    body_.from.leaves = source_.leaves();
    body_.groupLeaves = source_.leaves();
    addColumns();
    addOrder();
    if (const std::string& own = source_.leaves().front().condition; !own.empty()) {
        body_.conditions.push_back(own);
    }
    addWhere();
    return std::move(body_);
}

// Rows that are found by their keys are few: nothing is gained by following their numbers in memory.
FromText SelectBodyWriter::from(SelectPurpose purpose) const {
    const Statement& statement = source_.statement();
    const std::size_t columns = statement.items.size() + source_.leaves().size();
    if (purpose == SelectPurpose::All && source_.hasKeys() &&
        columns <= context_.dialect.facts.linkedColumns) {
        const Links links(source_.join(), source_.leaves(), source_.unique());
        if (links.serve(statement)) {
            return links.write(context_);
        }
    }
    return writeFrom(source_.join(), source_.leaves(), context_, purpose == SelectPurpose::Fetch);
}

void SelectBodyWriter::addColumns() {
    body_.columns = SelectColumns(source_, body_.from.leaves, body_.groupLeaves, context_).write();
    checkSize();
}

// The keys of all tables may join the columns, and the terms of an order.
void SelectBodyWriter::checkSize() const {
    const Statement& statement = source_.statement();
    if (std::max({body_.columns.size(), statement.orderBy.size(), statement.groupBy.size()}) >
        context_.dialect.facts.maxColumns) {
        throw SizeError("The statement has too many columns.");
    }
}

void SelectBodyWriter::addWhere() {
    const Scope scope(body_.from.leaves);
    ExpressionWriter writer(scope, context_);
    for (const Expression* condition : source_.conditions()) {
        int nesting = 0;
        body_.conditions.push_back(context_.dialect.values.wrapped(writer.condition(*condition), kNot,
                                                                   nesting, condition->position));
    }
}

void SelectBodyWriter::addOrder() {
    const Scope rows(body_.from.leaves);
    const Scope scope(body_.groupLeaves);
    const OrderNames names(body_.columns, scope);
    const OrderNames rowNames(body_.columns, rows);
    ExpressionWriter writer(names, context_);
    if (source_.isGrouped()) {
        writer.allowAggregates(rowNames);
    }
    for (const OrderItem& item : source_.statement().orderBy) {
        const Expression& e = *item.expression;
        if (e.kind == Kind::Integer) {
            body_.order.push_back(ofColumn(item));
            continue;
        }
        if (source_.isGrouped() && !isColumn(e)) {
            grouping_.check(e, scope);
        }
        body_.order.push_back({writer.write(e), item.descending});
    }
    if (body_.order.empty() && source_.leaves().size() == 1 && !source_.isGrouped()) {
        body_.order = body_.from.leaves.front().order;
    }
}

// An order by the place of a column, from 1.
OrderTerm SelectBodyWriter::ofColumn(const OrderItem& item) const {
    const Expression& place = *item.expression;
    if (place.integer < 1 || place.integer > static_cast<std::int64_t>(body_.columns.size())) {
        throw SyntaxError("There is no column " + std::to_string(place.integer) + " to order by.",
                          place.position);
    }
    return {body_.columns[static_cast<std::size_t>(place.integer - 1)].field.sql, item.descending};
}

bool SelectBodyWriter::isColumn(const Expression& name) const {
    return name.kind == Kind::Name && name.qualifier.empty() &&
           std::any_of(body_.columns.begin(), body_.columns.end(),
                       [&](const SelectColumn& column) { return sameName(column.field.name, name.text); });
}

}  // namespace sql::writing
