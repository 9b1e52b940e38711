#include "platform/system/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "platform/dao/error.h"
#include "platform/system/decimal.h"
#include "platform/system/locale_facts.h"

namespace platform {

namespace {

constexpr int kCurrencyScale = 4;  // places behind the point in a Currency

// The digits of an amount in groups of three, written from behind, so that they stand ready to become a text
// in one step. The largest double with its places and separators stays below the room kept here.
class GroupedDigits {
 public:
    GroupedDigits(const Decimal& exact, int decimals, const LocaleFacts& facts)
        : decimal_(facts.decimal.unicode()),
          group_(facts.group.isEmpty() ? u'\0' : facts.group.at(0).unicode()),
          decimals_(decimals) {
        Decimal number = roundedHalfAway(exact, decimals);
        isZero_ = number.digits == 0;
        for (int place = isZero_ ? 0 : decimals + number.exponent; place > 0; --place) {
            put(u'0');
        }
        while (number.digits > 0 || behindPoint_ < decimals_ || beforePoint_ == 0) {
            put(static_cast<char16_t>(u'0' + number.digits % 10));
            number.digits /= 10;
        }
    }
    bool isZero() const { return isZero_; }
    void putMinus() { *--first_ = u'-'; }
    QString text() const {
        return QString(reinterpret_cast<const QChar*>(first_), room_.data() + room_.size() - first_);
    }

 private:
    void put(char16_t digit) {
        if (behindPoint_ < decimals_) {
            *--first_ = digit;
            if (++behindPoint_ == decimals_) {
                *--first_ = decimal_;
            }
            return;
        }
        if (inGroup_ == 3) {
            inGroup_ = 0;
            if (group_ != 0) {
                *--first_ = group_;
            }
        }
        *--first_ = digit;
        ++inGroup_;
        ++beforePoint_;
    }

    std::array<char16_t, 512> room_;
    char16_t* first_ = room_.data() + room_.size();
    char16_t decimal_;
    char16_t group_;
    int decimals_;
    int behindPoint_ = 0;
    int beforePoint_ = 0;
    int inGroup_ = 0;
    bool isZero_ = false;
};

constexpr int kMostDecimals = 30;

QString groupedText(const Decimal& number, int decimals) {
    GroupedDigits digits(number, std::clamp(decimals, 0, kMostDecimals), localeFacts());
    // What rounds to nothing is nothing: no customer owes minus zero.
    if (number.negative && !digits.isZero()) {
        digits.putMinus();
    }
    return digits.text();
}

QString currencyText(const Decimal& number) {
    const LocaleFacts& facts = localeFacts();
    const GroupedDigits digits(number, facts.currencyDecimals, facts);
    return number.negative && !digits.isZero() ? facts.negativePrefix + digits.text() + facts.negativeSuffix
                                               : facts.positivePrefix + digits.text() + facts.positiveSuffix;
}

template <typename Number>
QString shortestText(Number value) {
    if (!std::isfinite(value)) {
        return localeFacts().locale.toString(static_cast<double>(value));
    }
    if (value == 0) {
        return QStringLiteral("0");
    }
    constexpr Number kTooSmall = static_cast<Number>(1e-10);
    constexpr Number kTooLarge = static_cast<Number>(1e15);
    const bool plain = std::abs(value) >= kTooSmall && std::abs(value) < kTooLarge;
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   plain ? std::chars_format::fixed : std::chars_format::scientific)
                         .ptr;
    const qsizetype length = end - buffer.data();
    QString text(length, Qt::Uninitialized);
    QChar* shown = text.data();
    for (qsizetype i = 0; i < length; ++i) {
        const char c = buffer[static_cast<std::size_t>(i)];
        shown[i] = c == '.' ? localeFacts().decimal : c == 'e' ? QLatin1Char('E') : QLatin1Char(c);
    }
    return text;
}

// The percentages of a list are the same few whole numbers over and over.
const QString* textOfFewPercent(float value) {
    static const std::array<QString, 101> kTexts = [] {
        std::array<QString, 101> texts;
        for (std::size_t number = 0; number < texts.size(); ++number) {
            texts[number] = QString::number(number);
        }
        return texts;
    }();
    const bool isOne = value >= 0 && value < kTexts.size() && value == std::trunc(value);
    return isOne ? &kTexts[static_cast<std::size_t>(value)] : nullptr;
}

// Whole units of 10^-4 from a decimal; throws where they do not fit.
dao::Currency currencyOf(Decimal number) {
    number = roundedHalfAway(number, kCurrencyScale);
    constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
    for (int place = number.exponent + kCurrencyScale; place > 0 && number.digits > 0; --place) {
        if (number.digits > kMost / 10) {
            throw dao::Error(dao::errOverflow, "Overflow");
        }
        number.digits *= 10;
    }
    if (number.digits > kMost) {
        throw dao::Error(dao::errOverflow, "Overflow");
    }
    const auto scaled = static_cast<std::int64_t>(number.digits);
    return dao::Currency::fromScaled(number.negative ? -scaled : scaled);
}

// The Single next to a decimal.
float singleOf(const Decimal& number) {
    // Digits and power are both Singles to the last bit up to here, and so one division rounds once.
    constexpr std::uint64_t kExactDigits = std::uint64_t{1} << 24U;
    constexpr std::array<float, 11> kPowersOfTen = {1e0F, 1e1F, 1e2F, 1e3F, 1e4F, 1e5F,
                                                    1e6F, 1e7F, 1e8F, 1e9F, 1e10F};
    float single = 0;
    if (number.digits < kExactDigits && number.exponent <= 0 &&
        -number.exponent < static_cast<int>(kPowersOfTen.size())) {
        single = static_cast<float>(number.digits) / kPowersOfTen[static_cast<std::size_t>(-number.exponent)];
    } else {
        std::string text = std::to_string(number.digits);
        text += 'e';
        text += std::to_string(number.exponent);
        std::from_chars(text.data(), text.data() + text.size(), single);
    }
    return number.negative && number.digits != 0 ? -single : single;
}

// A decimal read back as a Single, the Single as an amount.
dao::Currency throughSingle(const Decimal& number) {
    // Up to here neighbouring Singles lie closer together than two amounts do, so that the way there and back
    // is none.
    constexpr std::uint64_t kOne = 1;
    constexpr std::array<std::uint64_t, 5> kExact = {kOne << 24U, (kOne << 20U) * 10U, (kOne << 17U) * 100U,
                                                     (kOne << 14U) * 1000U, (kOne << 10U) * 10000U};
    const int decimals = -number.exponent;
    if (decimals >= 0 && decimals < static_cast<int>(kExact.size()) &&
        number.digits < kExact[static_cast<std::size_t>(decimals)]) {
        return currencyOf(number);
    }
    return currencyOf(decimalOf(singleOf(number)));
}

}  // namespace

double roundHalfAway(double value, int decimals) {
    return std::isfinite(value) ? toDouble(roundedHalfAway(decimalOf(value), decimals)) : value;
}

QString formatGrouped(double value, int decimals) {
    return std::isfinite(value) ? groupedText(decimalOf(value), decimals)
                                : localeFacts().locale.toString(value);
}

QString formatGrouped(float value, int decimals) {
    return std::isfinite(value) ? groupedText(decimalOf(value), decimals)
                                : localeFacts().locale.toString(static_cast<double>(value));
}

QString formatGrouped(dao::Currency value, int decimals) {
    return groupedText(decimalOf(value), decimals);
}

float throughGroupedFormat(float value, int decimals) {
    return std::isfinite(value)
               ? singleOf(roundedHalfAway(decimalOf(value), std::clamp(decimals, 0, kMostDecimals)))
               : 0.0F;
}

QString formatCurrency(double value) {
    return std::isfinite(value) ? currencyText(decimalOf(value)) : localeFacts().locale.toString(value);
}

QString formatCurrency(float value) {
    return std::isfinite(value) ? currencyText(decimalOf(value))
                                : localeFacts().locale.toString(static_cast<double>(value));
}

QString formatCurrency(dao::Currency value) {
    return currencyText(decimalOf(value));
}

int currencyDecimals() {
    return localeFacts().currencyDecimals;
}

dao::Currency throughCurrencyFormat(dao::Currency value) {
    return throughSingle(roundedHalfAway(decimalOf(value), currencyDecimals()));
}

dao::Currency throughCurrencyFormat(float value) {
    if (!std::isfinite(value)) {
        throw dao::Error(dao::errOverflow, "Overflow");
    }
    return throughSingle(roundedHalfAway(decimalOf(value), currencyDecimals()));
}

QString textOfSingle(float value) {
    if (const QString* known = textOfFewPercent(value)) {
        return *known;
    }
    return shortestText(value);
}

QString textOfDouble(double value) {
    return shortestText(value);
}

QString decimalSeparator() {
    return localeFacts().decimalText;
}

}  // namespace platform
