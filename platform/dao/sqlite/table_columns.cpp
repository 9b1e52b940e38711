#include "platform/dao/sqlite/table_columns.h"

namespace dao::driver {

std::vector<DeclaredColumn> columnsOf(SqliteConnection& file, const std::string& table) {
    RowBlock block;  // cid, name, type, notnull, default, pk
    block.reset({Type::Long, Type::Text, Type::Text, Type::Long, Type::Null, Type::Long});
    file.prepare("PRAGMA table_info(" + quotedName(table) + ")")->readRows(block);
    std::vector<DeclaredColumn> columns;
    Value cell;
    for (std::size_t row = 0; row < block.rows(); ++row) {
        DeclaredColumn& column = columns.emplace_back();
        block.get(row, 1, cell);
        column.name = cell.textRef();
        block.get(row, 2, cell);
        column.type = cell.textRef();
        block.get(row, 3, cell);
        column.needed = cell.asLong() != 0;
        block.get(row, 5, cell);
        column.isKey = cell.asLong() != 0;
    }
    return columns;
}

}  // namespace dao::driver
