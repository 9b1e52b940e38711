#include "platform/dao/table_reader.h"

#include <algorithm>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/sql/ast.h"
#include "platform/sql/parser.h"

namespace dao {
TableReader::TableReader(driver::Store& store, const FileCatalog& catalog, const sql::TableInfo& table)
    : store_(store),
      select_(store.writer().select(*sql::parse("SELECT * FROM [" + table.name + "]"), catalog, 0)),
      keys_(store.rows().readAllKeys(table.name)) {
    block_.reset(typesOf(table.columns));
}

bool TableReader::next() {
    if (at_ >= keys_.size()) {
        return false;
    }
    needGoingOn();
    const std::size_t last = std::min(at_ + driver::kRowsAtOnce, keys_.size()) - 1;
    block_.clear();
    const auto statement = store_.cached(select_.fetchRange);
    const int first = driver::bindParameters(*statement, select_.parameters);
    statement->bindInteger(first, keys_.key(at_, 0));
    statement->bindInteger(first + 1, keys_.key(last, 0));
    std::vector<std::int64_t> found;
    if (statement->readRows(block_, 1, &found) != last - at_ + 1) {
        fail(errCannotOpen);
    }
    at_ = last + 1;
    return true;
}

}  // namespace dao
