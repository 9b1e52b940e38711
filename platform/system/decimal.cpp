#include "platform/system/decimal.h"

#include <array>
#include <charconv>
#include <string>
#include <string_view>

namespace platform {

namespace {

constexpr std::array<std::uint64_t, 20> kPowersOfTen = [] {
    std::array<std::uint64_t, 20> powers{};
    std::uint64_t power = 1;
    for (std::uint64_t& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

template <typename Number>
Decimal shortestDecimalOf(Number value) {
    std::array<char, 40> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific).ptr;
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    Decimal number;
    std::size_t at = 0;
    if (text[at] == '-') {
        number.negative = true;
        ++at;
    }
    for (bool behindPoint = false; at < text.size() && text[at] != 'e'; ++at) {
        if (text[at] == '.') {
            behindPoint = true;
            continue;
        }
        number.digits = number.digits * 10 + static_cast<std::uint64_t>(text[at] - '0');
        number.exponent -= behindPoint ? 1 : 0;
    }
    int exponent = 0;
    at += text[at + 1] == '+' ? 2 : 1;
    std::from_chars(text.data() + at, text.data() + text.size(), exponent);
    number.exponent += exponent;
    return number;
}

}  // namespace

Decimal decimalOf(double value) {
    return shortestDecimalOf(value);
}

Decimal decimalOf(float value) {
    return shortestDecimalOf(value);
}

Decimal decimalOf(dao::Currency value) {
    constexpr int kPlaces = 4;
    const std::int64_t scaled = value.scaled();
    const auto size = static_cast<std::uint64_t>(scaled);
    return {scaled < 0, scaled < 0 ? std::uint64_t{0} - size : size, -kPlaces};
}

Decimal roundedHalfAway(Decimal number, int decimals) {
    const int surplus = -decimals - number.exponent;
    if (surplus <= 0) {
        return number;
    }
    number.exponent = -decimals;
    if (surplus >= static_cast<int>(kPowersOfTen.size())) {
        number.digits = 0;
        return number;
    }
    const std::uint64_t unit = kPowersOfTen[static_cast<std::size_t>(surplus)];
    const std::uint64_t rest = number.digits % unit;
    number.digits = number.digits / unit + (rest >= unit - rest ? 1 : 0);
    return number;
}

double toDouble(const Decimal& number) {
    const std::string text = std::to_string(number.digits) + 'e' + std::to_string(number.exponent);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return number.negative ? -value : value;
}

}  // namespace platform
