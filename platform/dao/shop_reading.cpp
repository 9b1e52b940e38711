#include "platform/dao/shop_reading.h"

#include "platform/dao/failure.h"
#include "platform/dao/store_kinds.h"
#include "platform/dao/table_definition.h"
#include "platform/dao/table_reader.h"

namespace dao {

ShopReading::ShopReading(const std::string& path, const std::string& connect) {
    const PlacePtr place = kindOf(path).examine(path, connect, false);
    presence_ = place->enter(true);
    store_ = place->open();
    store_->transaction().beginRead();
    catalog_ = std::make_unique<FileCatalog>(*store_);
    catalog_->refresh();
    place->prove(*store_);
}

ShopReading::~ShopReading() {
    store_->transaction().rollback();
}

std::vector<TableDef> ShopReading::tables() const {
    std::vector<TableDef> tables;
    for (const sql::TableInfo& table : catalog_->tables()) {
        tables.push_back(definitionOf(table));
    }
    return tables;
}

std::int64_t ShopReading::rowsIn(const std::string& table) {
    return static_cast<std::int64_t>(store_->rows().readAllKeys(table).size());
}

std::int64_t ShopReading::highestNumber(const std::string& table) {
    return store_->counters().highestNumber(table);
}

void ShopReading::read(const std::string& table, const std::function<void(Row)>& take) {
    const sql::TableInfo* found = catalog_->findTable(table);
    if (found == nullptr) {
        fail(errUnknownObject);
    }
    TableReader reader(*store_, *catalog_, *found);
    std::vector<Value> row(found->columns.size());
    while (reader.next()) {
        for (std::size_t i = 0; i < reader.block().rows(); ++i) {
            for (std::size_t column = 0; column < row.size(); ++column) {
                reader.block().get(i, column, row[column]);
            }
            take(row);
        }
    }
}

}  // namespace dao
