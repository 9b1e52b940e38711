#include "platform/dao/table_definition.h"

#include <algorithm>
#include <utility>

#include "platform/dao/failure.h"

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

constexpr std::pair<FieldType, Type> kTypes[] = {
    {dbBoolean, Type::YesNo}, {dbLong, Type::Long}, {dbCurrency, Type::Currency}, {dbSingle, Type::Single},
    {dbDate, Type::Date},     {dbText, Type::Text}, {dbMemo, Type::Text},
};

}  // namespace

TableDef definitionOf(const sql::TableInfo& table) {
    TableDef definition(table.name);
    for (const sql::ColumnInfo& column : table.columns) {
        definition.Append({column.name, fieldTypeOf(column), column.size, column.counter});
    }
    return definition;
}

sql::TableInfo tableInfo(const TableDef& table) {
    sql::TableInfo info;
    info.name = table.Name();
    for (const FieldDef& field : table.Fields()) {
        sql::ColumnInfo column;
        column.name = field.Name;
        column.size = field.Size;
        column.counter = field.counter;
        const auto row = std::find_if(std::begin(kTypes), std::end(kTypes),
                                      [&](const auto& each) { return each.first == field.Type; });
        if (row == std::end(kTypes) || (field.counter && field.Type != dbLong) || field.Size < 0) {
            fail(errInvalidOperation, "Invalid field data type.");
        }
        column.type = row->second;
        if (info.indexOf(field.Name) >= 0) {
            fail(errDuplicateField,
                 "Field '" + field.Name + "' already exists in table '" + info.name + "'.");
        }
        info.columns.push_back(std::move(column));
    }
    return info;
}

bool belongsToRelation(std::string_view table, std::string_view field,
                       const std::vector<Relation>& relations) {
    return std::any_of(relations.begin(), relations.end(), [&](const Relation& each) {
        return (sql::sameName(each.foreignTable, table) && sql::sameName(each.foreignField, field)) ||
               (sql::sameName(each.table, table) && sql::sameName(each.field, field));
    });
}

}  // namespace dao
