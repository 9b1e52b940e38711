#pragma once

#include "platform/dao/driver.h"
#include "platform/dao/postgres/server_definitions.h"

namespace dao::postgres {

// The server's sequences, which no transaction takes back.
class ServerCounters final : public driver::Counters {
 public:
    ServerCounters(ServerSession& session, ServerDefinitions& definitions)
        : session_(session), definitions_(definitions) {}

    std::int64_t raiseCounter(const std::string& table, std::int64_t above) override;
    bool countsApart() const override { return true; }
    std::int64_t highestNumber(const std::string& table) override;
    void setHighestNumber(const std::string& table, std::int64_t number) override;

 private:
    Parameters counterOf(const std::string& table) const;

    ServerSession& session_;
    ServerDefinitions& definitions_;
};

}  // namespace dao::postgres
