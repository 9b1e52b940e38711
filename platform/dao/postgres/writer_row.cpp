#include "platform/dao/postgres/writer_row.h"

#include <random>

#include "platform/dao/failure.h"

namespace dao::postgres {
namespace {

constexpr int kWriters = 76003;  // what the first of the lock's two numbers stands for
constexpr int kMost = 9999;

std::int64_t newMark() {
    std::random_device device;
    return static_cast<std::int64_t>(std::uint64_t{device()} << 32 | device());
}

}  // namespace

WriterRow::WriterRow() : mark_(newMark()) {}

// The CASE keeps the server from trying the lock of a number that it must not take.
int WriterRow::number(Connection& server) {
    if (number_.has_value() && (held_ || tryHold(server, *number_))) {
        return *number_;
    }
    const Result found = server.run(
        "SELECT n FROM generate_series(0, $2) AS n WHERE CASE WHEN EXISTS"
        " (SELECT 1 FROM dao.writers AS w WHERE w.number = n AND w.mark <> $3"
        " AND w.written > clock_timestamp() - interval '1 hour')"
        " THEN false ELSE pg_try_advisory_lock($1, n) END LIMIT 1",
        Parameters().integer4(kWriters).integer4(kMost).integer8(mark_));
    if (found.rows() == 0) {
        fail(errLocked);
    }
    number_ = static_cast<int>(found.integer(0, 0));
    held_ = true;
    return *number_;
}

bool WriterRow::tryHold(Connection& server, int number) {
    held_ =
        server.run("SELECT pg_try_advisory_lock($1, $2)", Parameters().integer4(kWriters).integer4(number))
            .boolean(0, 0);
    return held_;
}

Step WriterRow::raising(Connection& server, Written written) {
    return {
        "INSERT INTO dao.writers AS w (number, version, changed, commits, mark, written)"
        " VALUES ($1, $3, clock_timestamp(), 1, $2, clock_timestamp())"
        " ON CONFLICT (number) DO UPDATE SET version = w.version + EXCLUDED.version,"
        " changed = CASE EXCLUDED.version WHEN 0 THEN w.changed ELSE EXCLUDED.changed END,"
        " commits = w.commits + 1, mark = EXCLUDED.mark, written = EXCLUDED.written RETURNING commits",
        Parameters().integer4(number(server)).integer8(mark_).integer8(written == Written::kRows ? 1 : 0)};
}

void WriterRow::foreseeRaise(Connection& server) {
    const int own = number(server);
    if (!commits_) {
        const Result row =
            server.run("SELECT commits FROM dao.writers WHERE number = $1", Parameters().integer4(own));
        commits_ = row.rows() == 0 ? 0 : row.integer(0, 0);
    }
    raisedTo_ = *commits_ + 1;
}

// Once the number is ours again the old connection is gone, and with it whatever might still have been on its
// way to being committed.
std::optional<bool> WriterRow::wasCommitted(Connection& server) {
    if (!number_.has_value() || (!held_ && !tryHold(server, *number_))) {
        return std::nullopt;
    }
    const Result row = server.run("SELECT commits, mark = $2 FROM dao.writers WHERE number = $1",
                                  Parameters().integer4(*number_).integer8(mark_));
    if (row.rows() == 0 || row.integer(0, 0) < raisedTo_) {
        return false;
    }
    return row.boolean(0, 1) ? std::optional(true) : std::nullopt;
}

}  // namespace dao::postgres
