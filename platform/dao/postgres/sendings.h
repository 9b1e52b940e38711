#pragma once

#include <string>
#include <vector>

#include "platform/dao/postgres/result.h"
#include "platform/dao/postgres/statement_cache.h"
#include "platform/dao/postgres/step.h"

struct pg_conn;

namespace dao::postgres {

// Steps on their way to the server in one breath: under which name each goes, and which of them it is to
// prepare first.
class Sendings {
 public:
    // Both outlive it. `prepared`: what the server holds prepared.
    Sendings(const std::vector<Step>& steps, StatementCache& prepared);

    bool hasNew() const;  // that the server has yet to prepare
    bool send(pg_conn* connection) const;
    // Of the answers that came before an error, or all: keeps what was prepared, whose own answers nobody
    // asks for, and leaves in `answers`, where there are any, those to the steps. How many of these are done.
    std::size_t take(std::size_t answered, std::vector<Result>* answers);

    static bool sendUnnamed(pg_conn* connection, const Step& step);

 private:
    struct Sending {
        const Step* step;
        std::string key;
        std::string name;
        bool isNew;
    };
    Sending sendingOf(const Step& step);

    StatementCache& prepared_;
    std::vector<Sending> all_;
};

}  // namespace dao::postgres
