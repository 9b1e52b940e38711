#pragma once

#include <string>

#include "platform/dao/postgres/parameters.h"
#include "platform/dao/postgres/result.h"

namespace dao::postgres {

// What a statement asks of the store that it was prepared for.
class StatementRunner {
 public:
    StatementRunner() = default;
    StatementRunner(const StatementRunner&) = delete;
    StatementRunner& operator=(const StatementRunner&) = delete;
    virtual ~StatementRunner() = default;

    virtual Result run(const std::string& text, const Parameters& parameters) = 0;
    virtual void noteWritten() = 0;  // something of the shop, in the transaction that is open
};

}  // namespace dao::postgres
