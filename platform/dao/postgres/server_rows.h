#pragma once

#include "platform/dao/driver.h"
#include "platform/dao/postgres/server_definitions.h"

namespace dao::postgres {

class ServerRows final : public driver::Rows {
 public:
    ServerRows(ServerSession& session, ServerDefinitions& definitions)
        : session_(session), definitions_(definitions) {}

    std::int64_t dataVersion() override;
    KeyList readAllKeys(const std::string& table) override;
    std::int64_t insertRow(const std::string& table, std::span<const driver::FieldValue> fields) override;
    void insertRows(const std::string& table, std::span<const std::string_view> fields,
                    const RowBlock& rows) override;
    bool updateRow(const std::string& table, std::int64_t key,
                   std::span<const driver::FieldValue> fields) override;
    bool deleteRow(const std::string& table, std::int64_t key) override;
    bool changeRow(const driver::RowChange& change) override;

 private:
    void insertSome(const sql::TableInfo& table, std::span<const std::string_view> fields,
                    const RowBlock& rows, std::size_t first, std::size_t count);

    ServerSession& session_;
    ServerDefinitions& definitions_;
};

}  // namespace dao::postgres
