#include "platform/dao/value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "platform/dao/calendar.h"
#include "platform/dao/failure.h"
#include "platform/text/ascii.h"

namespace dao {
namespace {

constexpr std::array kTypes{Type::Null,   Type::YesNo,    Type::Long, Type::Single,
                            Type::Double, Type::Currency, Type::Date, Type::Text};

std::string_view trimmed(std::string_view text) {
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

double numberFromText(std::string_view text) {
    std::string_view body = trimmed(text);
    if (body.size() > 1 && body.front() == '+' && body[1] != '-') {
        body.remove_prefix(1);
    }
    double number = 0;
    const auto [end, failed] = std::from_chars(body.data(), body.data() + body.size(), number);
    if (failed == std::errc::result_out_of_range) {
        fail(errOverflow);
    }
    if (failed != std::errc() || end != body.data() + body.size() || body.empty() || !std::isfinite(number)) {
        fail(errTypeMismatch);
    }
    return number;
}

template <typename Number>
std::string shortestText(Number number) {
    if (number == 0) {
        return "0";
    }
    if (!std::isfinite(number)) {
        return number != number ? "NaN" : number > 0 ? "Inf" : "-Inf";
    }
    std::array<char, 400> buffer;
    const double size = std::fabs(static_cast<double>(number));
    const auto format =
        size >= 1e-5 && size < 1e15 ? std::chars_format::fixed : std::chars_format::scientific;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, format);
    std::string text(buffer.data(), result.ptr);
    std::replace(text.begin(), text.end(), 'e', 'E');
    return text;
}

std::string currencyText(std::int64_t scaled) {
    const bool negative = scaled < 0;
    const std::uint64_t size =
        negative ? 0 - static_cast<std::uint64_t>(scaled) : static_cast<std::uint64_t>(scaled);
    std::string text = std::to_string(size / 10000);
    std::string fraction = std::to_string(size % 10000);
    fraction.insert(0, 4 - fraction.size(), '0');
    while (!fraction.empty() && fraction.back() == '0') {
        fraction.pop_back();
    }
    if (!fraction.empty()) {
        text += '.' + fraction;
    }
    return negative ? '-' + text : text;
}

// A date has no text of its own in the engine, whose text must be the same on every workstation: year first,
// and the time of day only where there is one. Before the first day the time still counts forward.
std::string dateText(double days) {
    double whole = std::trunc(days);
    std::int64_t seconds = std::llround(std::fabs(days - whole) * 86400.0);
    if (seconds >= 86400) {
        whole += 1;
        seconds = 0;
    }
    if (!(std::fabs(whole) < 1e9)) {
        fail(errOverflow);
    }
    const auto [year, month, day] = civilFromDays(static_cast<std::int64_t>(whole));
    std::array<char, 64> buffer;
    std::snprintf(buffer.data(), buffer.size(), "%04lld-%02d-%02d", static_cast<long long>(year), month, day);
    std::string text = buffer.data();
    if (seconds != 0) {
        std::snprintf(buffer.data(), buffer.size(), " %02d:%02d:%02d", static_cast<int>(seconds / 3600),
                      static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
        text += buffer.data();
    }
    return text;
}

struct ToDouble {
    double operator()(std::monostate) const { fail(errInvalidUseOfNull); }
    double operator()(bool v) const { return v ? -1 : 0; }
    double operator()(std::int32_t v) const { return v; }
    double operator()(float v) const { return v; }
    double operator()(double v) const { return v; }
    double operator()(Currency v) const { return v.toDouble(); }
    double operator()(Date v) const { return v.days; }
    double operator()(const std::string& v) const { return numberFromText(v); }
};

bool isWord(std::string_view text, std::string_view lowerWord) {
    return std::equal(text.begin(), text.end(), lowerWord.begin(), lowerWord.end(),
                      [](char a, char b) { return alphabet::lowerAscii(a) == b; });
}

}  // namespace

Type Value::type() const {
    return kTypes[v_.index()];
}

bool Value::asBool() const {
    if (const bool* v = std::get_if<bool>(&v_)) {
        return *v;
    }
    if (const std::string* text = std::get_if<std::string>(&v_)) {
        const std::string_view word = trimmed(*text);
        if (isWord(word, "true")) {
            return true;
        }
        if (isWord(word, "false")) {
            return false;
        }
    }
    return asDouble() != 0;
}

std::int32_t Value::asLong() const {
    if (const std::int32_t* v = std::get_if<std::int32_t>(&v_)) {
        return *v;
    }
    const double rounded = std::nearbyint(asDouble());
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max())) {
        fail(errOverflow);
    }
    return static_cast<std::int32_t>(rounded);
}

float Value::asSingle() const {
    if (const float* v = std::get_if<float>(&v_)) {
        return *v;
    }
    const double number = asDouble();
    if (std::isfinite(number) && std::fabs(number) > std::numeric_limits<float>::max()) {
        fail(errOverflow);
    }
    return static_cast<float>(number);
}

double Value::asDouble() const {
    return std::visit(ToDouble{}, v_);
}

Currency Value::asCurrency() const {
    if (const Currency* v = std::get_if<Currency>(&v_)) {
        return *v;
    }
    if (const float* v = std::get_if<float>(&v_)) {
        return Currency::fromSingle(*v);
    }
    return Currency::fromDouble(asDouble());
}

Date Value::asDate() const {
    return Date{asDouble()};
}

Value Value::as(Type type) const {
    switch (type) {
        case Type::YesNo:
            return Value(asBool());
        case Type::Long:
            return Value(asLong());
        case Type::Single:
            return Value(asSingle());
        case Type::Double:
            return Value(asDouble());
        case Type::Currency:
            return Value(asCurrency());
        case Type::Date:
            return Value(asDate());
        case Type::Text:
            return Value(asText());
        case Type::Null:
            break;
    }
    return *this;
}

std::string Value::asText() const {
    struct ToText {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(bool v) const { return v ? "True" : "False"; }
        std::string operator()(std::int32_t v) const { return std::to_string(v); }
        std::string operator()(float v) const { return shortestText(v); }
        std::string operator()(double v) const { return shortestText(v); }
        std::string operator()(Currency v) const { return currencyText(v.scaled()); }
        std::string operator()(Date v) const { return dateText(v.days); }
        std::string operator()(const std::string& v) const { return v; }
    };
    return std::visit(ToText{}, v_);
}

const std::string& Value::textRef() const {
    static const std::string kEmpty;
    const std::string* text = std::get_if<std::string>(&v_);
    return text != nullptr ? *text : kEmpty;
}

}  // namespace dao
