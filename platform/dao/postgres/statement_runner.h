#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/dao/postgres/parameters.h"
#include "platform/dao/postgres/result.h"

namespace dao::postgres {

// A question whose answer nobody waits for yet.
struct AskedAhead {
    std::int64_t session;   // of the link
    std::int64_t question;  // of the connection
};

// What a statement asks of the store that it was prepared for.
class StatementRunner {
 public:
    StatementRunner() = default;
    StatementRunner(const StatementRunner&) = delete;
    StatementRunner& operator=(const StatementRunner&) = delete;
    virtual ~StatementRunner() = default;

    virtual Result run(const std::string& text, const Parameters& parameters) = 0;
    // The same, the rows in several answers, each taken while the next one is still on its way. `take` asks
    // nothing of the store.
    virtual void runInPieces(const std::string& text, const Parameters& parameters,
                             const std::function<void(const Result&)>& take) = 0;
    // Asks and does not wait. Nothing where it has to be asked when it is wanted.
    virtual std::optional<AskedAhead> askAhead(const std::string& text, const Parameters& parameters) = 0;
    // Its answer. Nothing where anything has come between, whatever that was: it is to be asked again.
    virtual std::optional<Result> takeAhead(const AskedAhead& asked) = 0;
    virtual void takeIn() = 0;  // what has come of it by now
    virtual void dropAhead(const AskedAhead& asked) noexcept = 0;
    virtual void noteWritten() = 0;  // something of the shop, in the transaction that is open
};

}  // namespace dao::postgres
