#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/dao/driver.h"

namespace dao {

// How far a transfer has come. Rows of all tables together; the second pass, comparing, counts them once
// more.
struct TransferState {
    std::string table;
    std::int64_t rows = 0;
    std::int64_t allRows = 0;
    bool comparing = false;
};
using TransferWatch = std::function<void(const TransferState&)>;

// Carries all that `from` holds into `to`, which has no tables yet: tables, relations, indexes, rows with
// their numbers, counters, stored queries, the form. Both are in a transaction of the caller's, `from` in one
// that sees one state. Fails as reading and writing fail; `to` is then to be rolled back.
void transfer(driver::Store& from, driver::Store& to, const TransferWatch& watch = {});

// Reads all texts. errTextNotSound with the rows and fields of those that not every store takes: an older
// file may hold some.
void needSoundTexts(driver::Store& store);

// Reads both from end to end. errDiskIo with the table's name where they do not hold the same.
void needSameRows(driver::Store& one, driver::Store& other, const TransferWatch& watch = {});

}  // namespace dao
