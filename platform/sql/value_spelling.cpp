#include "platform/sql/value_spelling.h"

#include <algorithm>

namespace sql::writing {

std::string ValueSpelling::wrapped(const Sql& sql, int least, int& nesting, std::size_t position) const {
    nesting = std::max(nesting, sql.nesting);
    if (sql.precedence >= least) {
        return sql.text;
    }
    nesting = std::max(nesting, sql.nesting + 1);
    if (!takes(nesting)) {
        throw SyntaxError("The expression is nested too deeply for the store.", position);
    }
    return "(" + sql.text + ")";
}

}  // namespace sql::writing
