#include "platform/sql/dialect.h"

#include <algorithm>

namespace sql::writing {

int Numbers::addIdSet(const IdSetPtr& ids) {
    for (std::size_t i = 0; i < idSets_.size(); ++i) {
        if (idSets_[i] == ids) {
            return idSetBase_ + static_cast<int>(i);
        }
    }
    idSets_.push_back(ids);
    return idSetBase_ + static_cast<int>(idSets_.size()) - 1;
}

int Numbers::addParameter(const Parameter& parameter) {
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
        if (parameters_[i].kind == parameter.kind && parameters_[i].ids == parameter.ids) {
            return static_cast<int>(i) + 1;
        }
    }
    parameters_.push_back(parameter);
    return static_cast<int>(parameters_.size());
}

std::string Dialect::wrapped(const Sql& sql, int least, int& nesting, std::size_t position) const {
    nesting = std::max(nesting, sql.nesting);
    if (sql.precedence >= least) {
        return sql.text;
    }
    nesting = std::max(nesting, sql.nesting + 1);
    if (nesting > facts_.maxNesting) {
        throw SyntaxError("The expression is nested too deeply for the store.", position);
    }
    return "(" + sql.text + ")";
}

std::string selectText(const Dialect& dialect, const SelectParts& parts, const std::string& columns) {
    std::string result = columns + " FROM " + parts.from;
    if (!parts.conditions.empty()) {
        result += " WHERE " + chain(parts.conditions, " AND ", dialect.facts().chainLength);
    }
    result += parts.groups;
    for (std::size_t i = 0; i < parts.order.size(); ++i) {
        result += (i == 0 ? " ORDER BY " : ", ") + dialect.orderTerm(parts.order[i]);
    }
    return result;
}

}  // namespace sql::writing
