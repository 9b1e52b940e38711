#pragma once

#include <sqlcipher/sqlite3.h>

#include <exception>
#include <functional>
#include <string_view>

namespace dao::driver {

// Takes rows where the library comes upon them: left and entered again for each row, it copies every text out
// of its page on the way, and a walk through a large table takes noticeably longer.
//
// A statement for it reads "SELECT dao_gather(A, B, ...) FROM ...". It has one row of no meaning, and the
// rows that were asked for come in the order in which the library meets them.
class RowGatherer {
 public:
    static constexpr std::string_view kHead = "SELECT dao_gather(";
    // The columns of a row, which stay where they are until the function returns.
    using Take = std::function<void(sqlite3_value** columns)>;

    RowGatherer() = default;
    RowGatherer(const RowGatherer&) = delete;
    RowGatherer& operator=(const RowGatherer&) = delete;

    void install(sqlite3* db);  // which must not outlive this
    // Runs a prepared statement, also within a row of another. The library's code for how it ended; throws
    // what `take` throws.
    int run(sqlite3_stmt* statement, const Take& take);

 private:
    static void step(sqlite3_context* context, int count, sqlite3_value** columns);
    static void finish(sqlite3_context*) {}

    const Take* take_ = nullptr;
    std::exception_ptr failure_;
};

}  // namespace dao::driver
