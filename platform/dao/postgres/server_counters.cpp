#include "platform/dao/postgres/server_counters.h"

#include "platform/dao/postgres/quoting.h"

namespace dao::postgres {

// The table and the column whose counter it is, as the server's function for that takes them.
Parameters ServerCounters::counterOf(const std::string& table) const {
    return Parameters().text(tableName(table)).text(keyName(definitions_.described(table)));
}

std::int64_t ServerCounters::raiseCounter(const std::string& table, std::int64_t above) {
    return session_
        .run("SELECT dao.next_number(pg_get_serial_sequence($1, $2), $3)", counterOf(table).integer8(above))
        .integer(0, 0);
}

std::int64_t ServerCounters::highestNumber(const std::string& table) {
    return session_
        .run("SELECT coalesce(pg_sequence_last_value(pg_get_serial_sequence($1, $2)::regclass), 0)",
             counterOf(table))
        .integer(0, 0);
}

void ServerCounters::setHighestNumber(const std::string& table, std::int64_t number) {
    session_.run("SELECT setval(pg_get_serial_sequence($1, $2), $3)", counterOf(table).integer8(number));
}

}  // namespace dao::postgres
