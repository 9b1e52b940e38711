#include <algorithm>

#include "platform/dao/sqlite/key_range.h"
#include "platform/dao/sqlite/rows.h"
#include "platform/sql/close_numbers.h"

// The keys of a table's rows, by whatever road is shortest.
namespace dao::driver {
namespace {

// A look into the table for one number takes as long as going through so many rows.
constexpr std::uint64_t kRowsOfALook = 8;

KeyRange keyRange(SqliteConnection& file, const std::string& table) {
    std::vector<std::int64_t> told;
    file.cached(KeyRange::question(table))->readKeys(told, 3);
    return {told[0], told[1], static_cast<std::uint64_t>(told[2])};
}

// Both ascend.
std::vector<std::int64_t> between(const sql::IdSet& numbers, const KeyRange& range) {
    if (range.rows == 0) {
        return {};
    }
    return {std::ranges::lower_bound(numbers, range.first), std::ranges::upper_bound(numbers, range.last)};
}

// An index on some other field lists all rows, too, in a tenth of the pages; the price is that its order is
// another.
std::vector<std::int64_t> keysOfEachRow(SqliteConnection& file, const std::string& table,
                                        std::uint64_t rows) {
    std::string text(RowGatherer::kHead);
    text.append("rowid) FROM ").append(quotedName(table));
    std::vector<std::int64_t> keys;
    keys.reserve(rows);
    file.cached(text)->readKeys(keys, 1);
    sql::sortOnce(keys);
    return keys;
}

}  // namespace

KeyList SqliteRows::readAllKeys(const std::string& table) {
    const KeyRange range = keyRange(connection_, table);
    return range.hasAll() ? KeyList(range.first, range.rows)
                          : KeyList(keysOfEachRow(connection_, table, range.rows));
}

std::optional<KeyList> SqliteRows::readKeysAmong(const std::string& table, const sql::IdSet& numbers) {
    const KeyRange range = keyRange(connection_, table);
    if (range.hasAll()) {
        return KeyList(between(numbers, range));
    }
    if (range.rows / kRowsOfALook > numbers.size()) {
        return std::nullopt;
    }
    const std::vector<std::int64_t> keys = keysOfEachRow(connection_, table, range.rows);
    std::vector<std::int64_t> both;
    both.reserve(std::min(keys.size(), numbers.size()));
    std::ranges::set_intersection(keys, numbers, std::back_inserter(both));
    return KeyList(std::move(both));
}

}  // namespace dao::driver
