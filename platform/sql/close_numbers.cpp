#include "platform/sql/close_numbers.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace sql {
namespace {

constexpr std::uint64_t kWord = 64;  // places in one word of a strip

// Each is one mark on a strip, and reading the strip gives their order.
void sortByMarks(std::vector<std::int64_t>& numbers, std::int64_t first, std::int64_t last) {
    std::vector<std::uint64_t> strip(spanOf(first, last) / kWord + 1, 0);
    for (const std::int64_t number : numbers) {
        const std::uint64_t place = spanOf(first, number);
        strip[place / kWord] |= std::uint64_t{1} << (place % kWord);
    }
    auto out = numbers.begin();
    for (std::size_t word = 0; word < strip.size(); ++word) {
        for (std::uint64_t marks = strip[word]; marks != 0; marks &= marks - 1) {
            *out++ = first + static_cast<std::int64_t>(word * kWord +
                                                       static_cast<std::uint64_t>(std::countr_zero(marks)));
        }
    }
    numbers.erase(out, numbers.end());
}

}  // namespace

void sortOnce(std::vector<std::int64_t>& numbers) {
    if (std::is_sorted(numbers.begin(), numbers.end(), std::less_equal<>())) {
        return;
    }
    const auto [low, high] = std::minmax_element(numbers.begin(), numbers.end());
    if (areClose(*low, *high, numbers.size(), kWord)) {
        sortByMarks(numbers, *low, *high);
    } else {
        std::sort(numbers.begin(), numbers.end());
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    }
}

}  // namespace sql
