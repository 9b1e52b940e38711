#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/dao/driver.h"
#include "platform/dao/file_catalog.h"
#include "platform/dao/place.h"

namespace dao {

// All rows of all tables as they are when this is made, for whoever carries them elsewhere. It reads over a
// connection of its own, in one transaction. Of a file, others cannot commit while it lives: a long reading
// is made from a copy. On a server they go on.
class ShopReading {
 public:
    // A row's values, in the order of its table's fields; good until the next row.
    using Row = std::span<const Value>;

    // The errors of DBEngine::OpenDatabase.
    ShopReading(const std::string& path, const std::string& connect);
    ~ShopReading();
    ShopReading(const ShopReading&) = delete;
    ShopReading& operator=(const ShopReading&) = delete;

    std::vector<TableDef> tables() const;
    std::int64_t rowsIn(const std::string& table);
    // The highest number that the table's counter has given, also to rows that are gone; 0: none.
    std::int64_t highestNumber(const std::string& table);
    // Every row, in the order of the keys; without a key, in the order in which they were added. 3078 for a
    // table that is not there.
    void read(const std::string& table, const std::function<void(Row)>& take);

 private:
    std::shared_ptr<Presence> presence_;
    std::unique_ptr<driver::Store> store_;
    std::unique_ptr<FileCatalog> catalog_;
};

}  // namespace dao
