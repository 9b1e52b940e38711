#include "platform/dao/sqlite/sorted_columns.h"

#include <charconv>

#include "platform/sql/sql_text.h"

namespace dao::driver {

SortedColumns SortedColumns::of(std::string_view statement) {
    SortedColumns result;
    if (!statement.starts_with(kHead)) {
        return result;
    }
    statement.remove_prefix(kHead.size());
    const char* const end = statement.data() + statement.size();
    const char* at = std::from_chars(statement.data(), end, result.keys).ptr + std::string_view(", '").size();
    for (int place = 0; *at != '\''; ++at) {
        at = std::from_chars(at, end, place).ptr;
        result.shown.push_back(place);
    }
    statement.remove_prefix(static_cast<std::size_t>(at - statement.data()) +
                            std::string_view("', '").size());
    result.table = sql::writing::quotedName(statement.substr(0, statement.find('\'')));
    return result;
}

}  // namespace dao::driver
