#include "platform/dao/sqlite/counters.h"

#include <algorithm>

#include "platform/dao/failure.h"

namespace dao::driver {

std::int64_t SqliteCounters::raiseCounter(const std::string& table, std::int64_t above) {
    const std::int64_t next = std::max({above, highestNumber(table), std::int64_t{0}}) + 1;
    if (next > INT32_MAX) {
        fail(errOverflow);
    }
    setHighestNumber(table, next);
    return next;
}

void SqliteCounters::setHighestNumber(const std::string& table, std::int64_t number) {
    const auto update = connection_.cached("UPDATE sqlite_sequence SET seq=?1 WHERE name=?2");
    const auto insert = connection_.cached("INSERT INTO sqlite_sequence(seq,name) VALUES(?1,?2)");
    for (const auto& write : {update, insert}) {
        write->bindInteger(1, number);
        write->bind(2, Value(table));
        if (write->run() != 0) {
            return;
        }
    }
}

std::int64_t SqliteCounters::highestNumber(const std::string& table) {
    const auto read = connection_.cached("SELECT seq FROM sqlite_sequence WHERE name=?1");
    read->bind(1, Value(table));
    std::vector<std::int64_t> found;
    read->readKeys(found, 1);
    return found.empty() ? 0 : found.front();
}

}  // namespace dao::driver
