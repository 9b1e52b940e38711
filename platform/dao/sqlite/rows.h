#pragma once

#include "platform/dao/sqlite/connection.h"

namespace dao::driver {

class SqliteRows final : public Rows {
 public:
    explicit SqliteRows(SqliteConnection& connection) : connection_(connection) {}

    std::int64_t dataVersion() override;
    KeyList readAllKeys(const std::string& table) override;
    std::optional<KeyList> readKeysAmong(const std::string& table, const sql::IdSet& numbers) override;
    std::int64_t insertRow(const std::string& table, std::span<const FieldValue> fields) override;
    void insertRows(const std::string& table, std::span<const std::string_view> fields,
                    const RowBlock& rows) override;
    bool updateRow(const std::string& table, std::int64_t key, std::span<const FieldValue> fields) override;
    bool deleteRow(const std::string& table, std::int64_t key) override;

 private:
    SqliteConnection& connection_;
};

}  // namespace dao::driver
