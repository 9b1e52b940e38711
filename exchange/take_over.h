#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "exchange/mending.h"
#include "exchange/new_shop.h"

namespace exchange {

// What was carried from an old shop into a new one, in rows.
struct TakenTable {
    std::string name;
    std::int64_t found = 0;    // in the old file
    std::int64_t carried = 0;  // of these
    std::int64_t made = 0;     // for rows that belonged to none
    std::int64_t left = 0;     // of those found, not carried
};

struct TakenOver {
    std::vector<TakenTable> tables;
    std::vector<std::string> amounts;  // "Services.Price: 123.4500", what the amounts of a field come to
    std::size_t remarks = 0;           // lines in the list that tell of single rows
    std::size_t notOurs = 0;           // and of tables, queries and fields left out
    std::string list;                  // where the list is
};

// `all` may be 0 while nobody knows yet how much there is to do.
using TakingWatch =
    std::function<void(const char* doing, const std::string& table, std::int64_t done, std::int64_t all)>;

// What no file of a shop holds, and therefore none brings along: a sentence for whoever has taken one over.
extern const char* const kNotInTheFile;

// Takes over the shop in the file of the old format at `old`, which is only read, into a new one: a file that
// is not there yet, or the empty server database behind a signpost. It appears when it is whole and was
// compared, or not at all. What is not as it was is listed, row by row, in take-over.txt beside it; a list of
// an earlier time is kept under another name. Throws OldFileError and dao::Error.
TakenOver takeOver(const std::string& old, const std::string& target, const TakingWatch& watch = {});

// The same, where the old file stands in the place of the shop's: the new one takes its place, and the old
// one stays beside it as `kept`, where nothing stands yet.
TakenOver takeOverInPlace(const std::string& path, const std::string& kept, const TakingWatch& watch = {});

}  // namespace exchange
