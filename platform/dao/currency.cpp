#include "platform/dao/currency.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

#include "platform/dao/failure.h"

namespace dao {
namespace {

// Money is typed and shown in decimals, so it is the shortest decimal of a number that gets rounded: 1.00005
// is half way although no double is.
std::int64_t scaledFromDecimal(std::string_view digits) {
    const bool negative = !digits.empty() && digits.front() == '-';
    if (negative) {
        digits.remove_prefix(1);
    }
    const std::size_t point = digits.find('.');
    const std::string_view whole = digits.substr(0, point);
    std::string_view fraction =
        point == std::string_view::npos ? std::string_view{} : digits.substr(point + 1);
    std::int64_t scaled = 0;
    constexpr std::int64_t kLimit = std::numeric_limits<std::int64_t>::max();
    const auto push = [&](int digit) {
        if (scaled > (kLimit - digit) / 10) {
            fail(errOverflow);
        }
        scaled = scaled * 10 + digit;
    };
    for (char c : whole) {
        push(c - '0');
    }
    for (std::size_t i = 0; i < 4; ++i) {
        push(i < fraction.size() ? fraction[i] - '0' : 0);
    }
    if (fraction.size() > 4 && fraction[4] >= '5') {
        if (scaled == kLimit) {
            fail(errOverflow);
        }
        ++scaled;
    }
    return negative ? -scaled : scaled;
}

template <typename Number>
std::int64_t scaledFromNumber(Number number) {
    if (!std::isfinite(number) || std::fabs(number) > static_cast<Number>(1e15)) {
        fail(errOverflow);
    }
    std::array<char, 400> buffer;
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed);
    return scaledFromDecimal({buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())});
}

}  // namespace

Currency Currency::fromDouble(double number) {
    return fromScaled(scaledFromNumber(number));
}

Currency Currency::fromSingle(float number) {
    return fromScaled(scaledFromNumber(number));
}

}  // namespace dao
