#include "platform/dao/currency.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
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

// Whole ten-thousandths where the number lies so far from half of one that its shortest decimal, which is the
// number itself but for its last bit, lies on the same side of it; nothing where only the decimal can tell.
std::optional<std::int64_t> scaledOffTheHalf(double number) {
    constexpr double kMost = 1e12;  // up to here the last bit is far below the margin
    constexpr double kMargin = 1e-3;
    const double scaled = number * 1e4;
    if (!(std::fabs(scaled) < kMost)) {
        return std::nullopt;
    }
    const double whole = std::round(scaled);
    return std::fabs(scaled - whole) < 0.5 - kMargin ? std::optional(static_cast<std::int64_t>(whole))
                                                     : std::nullopt;
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
    if (const std::optional<std::int64_t> scaled = scaledOffTheHalf(number)) {
        return fromScaled(*scaled);
    }
    return fromScaled(scaledFromNumber(number));
}

Currency Currency::fromSingle(float number) {
    return fromScaled(scaledFromNumber(number));
}

}  // namespace dao
