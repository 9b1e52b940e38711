#pragma once

#include "platform/dao/driver.h"
#include "platform/dao/postgres/server_definitions.h"

namespace dao::postgres {

// Locks of rows that a session keeps, whatever becomes of its transactions.
class ServerRowLocks final : public driver::RowLocks {
 public:
    ServerRowLocks(ServerSession& session, ServerDefinitions& definitions)
        : session_(session), definitions_(definitions) {}

    void lockRow(const std::string& table, std::int64_t key) override;
    void unlockRow(const std::string& table, std::int64_t key) noexcept override;
    bool holdRow(const std::string& table, std::int64_t key) override;

 private:
    void unlock(std::int64_t number);

    ServerSession& session_;
    ServerDefinitions& definitions_;
};

}  // namespace dao::postgres
