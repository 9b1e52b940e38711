#include "platform/sql/select_columns.h"

#include <algorithm>
#include <utility>

#include "platform/sql/expressions.h"

namespace sql::writing {

std::vector<SelectColumn> SelectColumns::write() {
    for (const SelectItem& item : source_.statement().items) {
        if (item.star) {
            addStar(item);
        } else {
            add(item);
        }
    }
    tellApart();
    return std::move(columns_);
}

// Names of the result: the alias, the field's own, or Expr1000 and on for what has none.
void SelectColumns::add(const SelectItem& item) {
    SelectColumn column = written(item);
    if (!item.alias.empty()) {
        column.field.name = aliasOf(item);
    } else if (column.leafName.empty()) {
        column.field.name = "Expr" + std::to_string(nextExpression_++);
    }
    columns_.push_back(std::move(column));
}

std::string SelectColumns::aliasOf(const SelectItem& item) {
    const bool taken = std::any_of(aliases_.begin(), aliases_.end(),
                                   [&](const std::string& a) { return sameName(a, item.alias); });
    if (taken) {
        throw SyntaxError("The name '" + item.alias + "' is given to two columns.", item.position);
    }
    aliases_.push_back(item.alias);
    return item.alias;
}

void SelectColumns::addStar(const SelectItem& item) {
    if (source_.isGrouped()) {
        throw SyntaxError("Every field (*) cannot be selected where rows are grouped.", item.position);
    }
    bool found = false;
    for (std::size_t l = 0; l < leaves_.size(); ++l) {
        if (!item.qualifier.empty() && !sameName(item.qualifier, leaves_[l].name)) {
            continue;
        }
        found = true;
        for (const ScopeField& field : leaves_[l].fields) {
            columns_.push_back(columnOf(static_cast<int>(l), field));
        }
    }
    if (!found) {
        throw NameError(NameError::Kind::Table, item.qualifier);
    }
}

SelectColumn SelectColumns::columnOf(int leaf, const ScopeField& field) const {
    SelectColumn column{field, leaves_[static_cast<std::size_t>(leaf)].name, field.name};
    column.field.source = field.source < 0 ? -1 : firstSource(leaves_, leaf) + field.source;
    return column;
}

SelectColumn SelectColumns::written(const SelectItem& item) const {
    const Scope scope(leaves_);
    if (item.expression->kind == Expression::Kind::Name) {
        const Scope::Place place = scope.find(*item.expression);
        const Leaf& leaf = leaves_[static_cast<std::size_t>(place.leaf)];
        return columnOf(place.leaf, leaf.fields[static_cast<std::size_t>(place.field)]);
    }
    SelectColumn column;
    ExpressionWriter writer(scope, context_);
    const Scope rowScope(rows_);
    if (source_.isGrouped()) {
        writer.allowAggregates(rowScope);
    }
    column.field.sql = writer.value(*item.expression);
    return column;
}

// A field whose name another column has too is called by its table's name and its own.
void SelectColumns::tellApart() {
    const auto count = [this](const std::string& name) {
        return std::count_if(columns_.begin(), columns_.end(),
                             [&](const SelectColumn& c) { return sameName(c.field.name, name); });
    };
    std::vector<std::size_t> doubled;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const SelectColumn& column = columns_[i];
        const bool ownName = !column.leafName.empty() && sameName(column.field.name, column.leafField);
        if (ownName && leaves_.size() > 1 && count(column.field.name) > 1) {
            doubled.push_back(i);
        }
    }
    for (const std::size_t i : doubled) {
        columns_[i].field.name = columns_[i].leafName + "." + columns_[i].leafField;
    }
}

}  // namespace sql::writing
