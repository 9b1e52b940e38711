#pragma once

#include <QString>
#include <functional>
#include <source_location>

#include "platform/system/trap.h"

namespace dao {
class Database;
}

// A statement that changes many rows, in a transaction of its own: all of it stays, or nothing.
//
// A failure is noted in `step`. Where a failure stands in `step` then, this one or an earlier one,
// `tellFailure` is called and the statement is rolled back. Gives the number of rows changed, -1 where it was
// rolled back.
qint64 executeWhole(dao::Database& database, const QString& statement, platform::Trap& step,
                    const std::function<void()>& tellFailure,
                    std::source_location where = std::source_location::current());
