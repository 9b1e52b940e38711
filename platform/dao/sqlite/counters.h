#pragma once

#include "platform/dao/sqlite/connection.h"

namespace dao::driver {

// They stand in a table of the file, which is written within transactions.
class SqliteCounters final : public Counters {
 public:
    explicit SqliteCounters(SqliteConnection& connection) : connection_(connection) {}

    std::int64_t raiseCounter(const std::string& table, std::int64_t above) override;
    bool countsApart() const override { return false; }
    std::int64_t highestNumber(const std::string& table) override;
    void setHighestNumber(const std::string& table, std::int64_t number) override;

 private:
    SqliteConnection& connection_;
};

}  // namespace dao::driver
