#include "platform/dao/table_definition.h"

namespace dao {
namespace {

using sql::Type;

FieldType fieldTypeOf(const sql::ColumnInfo& column) {
    switch (column.type) {
        case Type::YesNo:
            return dbBoolean;
        case Type::Long:
            return dbLong;
        case Type::Currency:
            return dbCurrency;
        case Type::Single:
        case Type::Double:
            return dbSingle;
        case Type::Date:
            return dbDate;
        default:
            return column.size > 0 ? dbText : dbMemo;
    }
}

}  // namespace

TableDef definitionOf(const sql::TableInfo& table) {
    TableDef definition(table.name);
    for (const sql::ColumnInfo& column : table.columns) {
        definition.Append({column.name, fieldTypeOf(column), column.size, column.counter});
    }
    return definition;
}

}  // namespace dao
