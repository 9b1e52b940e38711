#include "platform/sql/select_spelling.h"

namespace sql::writing {

std::string selectText(const SelectSpelling& spelling, std::size_t chainLength, const SelectParts& parts,
                       const std::string& columns) {
    std::string result = columns + " FROM " + parts.from;
    if (!parts.conditions.empty()) {
        result += " WHERE " + chain(parts.conditions, " AND ", chainLength);
    }
    result += parts.groups;
    for (std::size_t i = 0; i < parts.order.size(); ++i) {
        result += (i == 0 ? " ORDER BY " : ", ") + spelling.orderTerm(parts.order[i]);
    }
    return result;
}

}  // namespace sql::writing
