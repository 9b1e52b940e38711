#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

// Whoever waits for a report: is told how far it is, and says whether to go on.
class ReportTurns {
 public:
    // Told after each client how many are done, and before the first of many now and then that none is; false
    // breaks the report off. May close the database.
    using Proceed = std::function<bool(std::int64_t done, std::int64_t total)>;
    using Turn = std::function<bool()>;  // the same before the first client

    // `proceed`: empty goes on; it outlives this. From `large` clients on, work on all of them may take
    // longer than the windows may wait.
    ReportTurns(const Proceed& proceed, std::size_t large) : proceed_(proceed), large_(large) {}

    bool tell(std::int64_t done, std::int64_t total) const { return !proceed_ || proceed_(done, total); }
    Turn beforeFirst(std::int64_t total) const {
        return [this, total] { return tell(0, total); };
    }
    // Does work that asks nothing of the database: half a million names are put in order, the space of a file
    // is given back. False where `turn` says so meanwhile. Throws what the work throws.
    bool run(std::size_t clients, const std::function<void()>& work, const Turn& turn) const;

 private:
    const Proceed& proceed_;
    std::size_t large_;
};
