#pragma once

#include "platform/dao/driver.h"
#include "platform/dao/row_state.h"

namespace dao {

// Carries all that `from` holds into `to`, which has no tables yet: tables, relations, indexes, rows with
// their numbers, counters, stored queries, the form. Both are in a transaction of the caller's, `from` in one
// that sees one state. The watch counts the rows of all tables together. Fails as reading and writing fail;
// `to` is then to be rolled back.
void transfer(driver::Store& from, driver::Store& to, const RowWatch& watch = {});

// Reads all texts. errTextNotSound with the rows and fields of those that not every store takes: an older
// file may hold some.
void needSoundTexts(driver::Store& store);

// Reads both from end to end. errDiskIo with the table's name where they do not hold the same.
void needSameRows(driver::Store& one, driver::Store& other, const RowWatch& watch = {});

}  // namespace dao
