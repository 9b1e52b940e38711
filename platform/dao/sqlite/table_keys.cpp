#include <algorithm>
#include <bit>

#include "platform/dao/sqlite/key_range.h"
#include "platform/dao/sqlite/rows.h"

// The keys of a table's rows, by whatever road is shortest.
namespace dao::driver {
namespace {

// A look into the table for one number takes as long as going through so many rows.
constexpr std::uint64_t kRowsOfALook = 8;

// A table's keys are different numbers, and lie close together where a counter gave them: then each is one
// mark on a long strip, and reading the strip gives their order.
void sortKeys(std::vector<std::int64_t>& keys) {
    constexpr std::uint64_t kWord = 64;
    const auto [lowest, highest] = std::minmax_element(keys.begin(), keys.end());
    const auto first = static_cast<std::uint64_t>(*lowest);
    const std::uint64_t span = static_cast<std::uint64_t>(*highest) - first;
    if (span / kWord > keys.size()) {
        std::sort(keys.begin(), keys.end());
        return;
    }
    std::vector<std::uint64_t> strip(span / kWord + 1, 0);
    for (const std::int64_t key : keys) {
        const std::uint64_t place = static_cast<std::uint64_t>(key) - first;
        strip[place / kWord] |= std::uint64_t{1} << (place % kWord);
    }
    auto out = keys.begin();
    for (std::size_t word = 0; word < strip.size(); ++word) {
        for (std::uint64_t marks = strip[word]; marks != 0; marks &= marks - 1) {
            *out++ = static_cast<std::int64_t>(first + word * kWord +
                                               static_cast<std::uint64_t>(std::countr_zero(marks)));
        }
    }
}

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
    if (!std::is_sorted(keys.begin(), keys.end())) {
        sortKeys(keys);
    }
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
