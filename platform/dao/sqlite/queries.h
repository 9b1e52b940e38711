#pragma once

#include "platform/dao/sqlite/connection.h"

namespace dao::driver {

class SqliteQueries final : public StoredQueries {
 public:
    explicit SqliteQueries(SqliteConnection& connection) : connection_(connection) {}

    std::vector<StoredQueryRow> queries() override;
    std::int64_t queryVersion(std::string_view name) override;
    std::optional<std::string> queryText(std::string_view name) override;
    std::int64_t writeQuery(std::string_view name, std::string_view text) override;
    bool dropQuery(std::string_view name) override;

 private:
    std::int64_t nextQueryVersion();

    SqliteConnection& connection_;
};

}  // namespace dao::driver
