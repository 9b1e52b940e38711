#include "platform/dao/given_numbers.h"

#include "platform/dao/failure.h"
#include "platform/dao/file_transaction.h"

namespace dao {

std::int64_t GivenNumbers::next(const std::string& table) {
    std::int64_t& highest = highest_[table];
    std::int64_t number = 0;
    const auto raise = [&] { number = transaction_.store().raiseCounter(table, highest); };
    const bool apart = transaction_.store().countsApart();
    if (apart) {
        raise();
    } else {
        transaction_.write(raise);
    }
    highest = number;
    if (!apart && transaction_.workspaceDepth() > 0) {
        inWorkspace_[table] = number;
    }
    return number;
}

// A number that was shown to somebody must not come back, although the row it was for was rolled back.
void GivenNumbers::keep() noexcept {
    if (inWorkspace_.empty()) {
        return;
    }
    const QuietErrors quiet;
    try {
        transaction_.write([&] {
            for (const auto& [table, highest] : inWorkspace_) {
                transaction_.store().raiseCounter(table, highest - 1);
            }
        });
    } catch (const Error&) {
        // This process still remembers what it gave; only the others lose the mark, and they never saw the
        // number.
        return;
    }
}

}  // namespace dao
