#include "exchange/plain_values.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <stdexcept>

#include "platform/dao/calendar.h"

namespace exchange {
namespace {

constexpr double kSecondsADay = 86400;

template <typename Number>
std::string shortest(Number number) {
    std::array<char, 64> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), end.ptr};
}

template <typename Number>
std::optional<Number> numberIn(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

// ----- amounts

std::string amountText(std::int64_t scaled) {
    const std::uint64_t size =
        scaled < 0 ? 0 - static_cast<std::uint64_t>(scaled) : static_cast<std::uint64_t>(scaled);
    std::string text = (scaled < 0 ? "-" : "") + std::to_string(size / 10000);
    std::string fraction = std::to_string(10000 + size % 10000).substr(1);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    return fraction.empty() ? text : text + '.' + fraction;
}

std::optional<std::int64_t> scaledIn(std::string_view text) {
    const bool negative = text.substr(0, 1) == "-";
    std::string digits(text.substr(negative ? 1 : 0));
    const std::size_t point = digits.find('.');
    std::size_t decimals = 0;
    if (point != std::string::npos) {
        decimals = digits.size() - point - 1;
        digits.erase(point, 1);
    }
    if (digits.empty() || point == 0 || (point != std::string::npos && decimals == 0) || decimals > 4 ||
        digits.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    digits.append(4 - decimals, '0');
    return numberIn<std::int64_t>((negative ? "-" : "") + digits);
}

// ----- dates

std::optional<int> digitsAt(std::string_view text, std::size_t at, std::size_t count) {
    if (text.size() < at + count) {
        return std::nullopt;
    }
    const std::string_view digits = text.substr(at, count);
    if (digits.find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    return numberIn<int>(digits);
}

// Of "14:05:00" or "14:05:00.25".
std::optional<double> secondsIn(std::string_view text) {
    const auto hour = digitsAt(text, 0, 2);
    const auto minute = digitsAt(text, 3, 2);
    const auto second = digitsAt(text, 6, 2);
    if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59 || text[2] != ':' ||
        text[5] != ':') {
        return std::nullopt;
    }
    const int whole = *hour * 3600 + *minute * 60 + *second;
    if (text.size() == 8) {
        return whole;
    }
    const std::string_view fraction = text.substr(9);
    if (text[8] != '.' || fraction.empty() ||
        fraction.find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    return numberIn<double>(std::to_string(whole) + '.' + std::string(fraction));
}

// Before the first day the time of day counts forward all the same: see dao::linearDays.
double daysOf(std::int64_t day, double seconds) {
    const double time = seconds / kSecondsADay;
    return day < 0 ? static_cast<double>(day) - time : static_cast<double>(day) + time;
}

std::optional<double> daysIn(std::string_view text) {
    const auto year = digitsAt(text, 0, 4);
    const auto month = digitsAt(text, 5, 2);
    const auto day = digitsAt(text, 8, 2);
    if (!year || !month || !day || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    const std::int64_t whole = dao::daysFromCivil({*year, *month, *day});
    const dao::CivilDay back = dao::civilFromDays(whole);
    if (back.year != *year || back.month != *month || back.day != *day) {
        return std::nullopt;
    }
    if (text.size() == 10) {
        return static_cast<double>(whole);
    }
    const auto seconds = secondsIn(text.substr(11));
    if ((text[10] != 'T' && text[10] != ' ') || !seconds) {
        return std::nullopt;
    }
    return daysOf(whole, *seconds);
}

std::string clockText(double seconds, int decimals) {
    const double unit = std::pow(10.0, decimals);
    const double rounded =
        std::round(seconds * unit) / unit;  // before minutes are taken off: 59.99 is the next one
    const int minutes = static_cast<int>(rounded / 60);
    std::array<char, 64> buffer;
    std::snprintf(buffer.data(), buffer.size(), "T%02d:%02d:%0*.*f", minutes / 60, minutes % 60,
                  decimals == 0 ? 2 : decimals + 3, decimals, rounded - minutes * 60.0);
    return buffer.data();
}

bool isSame(const std::optional<double>& one, double other) {
    return one && std::bit_cast<std::uint64_t>(*one) == std::bit_cast<std::uint64_t>(other);
}

std::string dateText(double days) {
    constexpr double kMost = 3e6;  // the year 9999 is within
    if (std::fabs(days) < kMost) {
        const double whole = std::trunc(days);
        const dao::CivilDay day = dao::civilFromDays(static_cast<std::int64_t>(whole));
        std::array<char, 32> buffer;
        std::snprintf(buffer.data(), buffer.size(), "%04d-%02d-%02d", static_cast<int>(day.year), day.month,
                      day.day);
        std::string date = buffer.data();
        if (isSame(daysIn(date), days)) {
            return date;
        }
        for (int decimals = 0; decimals <= 9; ++decimals) {
            std::string text = date + clockText(std::fabs(days - whole) * kSecondsADay, decimals);
            if (isSame(daysIn(text), days)) {
                return text;
            }
        }
    }
    return shortest(days);
}

// ----- truth

std::optional<bool> truthIn(std::string_view text) {
    if (text == "true" || text == "True" || text == "TRUE" || text == "1") {
        return true;
    }
    if (text == "false" || text == "False" || text == "FALSE" || text == "0") {
        return false;
    }
    return std::nullopt;
}

struct Writer {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool v) const { return v ? "true" : "false"; }
    std::string operator()(std::int32_t v) const { return std::to_string(v); }
    std::string operator()(float v) const { return shortest(v); }
    std::string operator()(double v) const { return shortest(v); }
    std::string operator()(dao::Currency v) const { return amountText(v.scaled()); }
    std::string operator()(dao::Date v) const { return dateText(v.days); }
    std::string operator()(const std::string& v) const { return v; }
};

template <typename Found>
Found need(const std::optional<Found>& found, const char* otherwise) {
    if (!found) {
        throw std::invalid_argument(otherwise);
    }
    return *found;
}

}  // namespace

std::string plainText(const dao::Value& value) {
    return std::visit(Writer{}, value.store());
}

dao::Value plainValue(std::string_view text, dao::FieldType type) {
    switch (type) {
        case dao::dbBoolean:
            return need(truthIn(text), "is neither true nor false");
        case dao::dbLong:
            return need(numberIn<std::int32_t>(text), "is no whole number");
        case dao::dbCurrency:
            return dao::Currency::fromScaled(
                need(scaledIn(text), "is no amount with a point and at most four decimals"));
        case dao::dbSingle:
            return need(numberIn<float>(text), "is no number with a point");
        case dao::dbDate: {
            const auto day = daysIn(text);
            return dao::Date{need(day ? day : numberIn<double>(text),
                                  "is no date such as 2026-11-22 or 2026-11-22T14:05:00")};
        }
        case dao::dbText:
        case dao::dbMemo:
            break;
    }
    return std::string(text);
}

}  // namespace exchange
