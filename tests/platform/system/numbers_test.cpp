#include "platform/system/numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "platform/dao/error.h"
#include "platform/system/decimal.h"
#include "platform/system/locale_scope.h"

using namespace platform;

namespace {

constexpr char kPoint[] = "en_US";
constexpr char kComma[] = "sr_Latn_RS";

std::string text(const QString& shown) {
    return shown.toStdString();
}

dao::Currency amount(std::int64_t tenThousandths) {
    return dao::Currency::fromScaled(tenThousandths);
}

// The same road on foot: format, read back as a Single, take the Single's decimal as an amount.
dao::Currency onFoot(const QString& formatted) {
    const Decimal number = roundedHalfAway(decimalOf(readSingle(formatted).value()), 4);
    std::int64_t scaled = static_cast<std::int64_t>(number.digits);
    for (int place = number.exponent; place > -4; --place) {
        scaled *= 10;
    }
    return amount(number.negative ? -scaled : scaled);
}

}  // namespace

TEST(Rounding, IsHalfAwayFromZeroOnTheShortestDecimal) {
    EXPECT_EQ(roundHalfAway(0.335, 2), 0.34);
    EXPECT_EQ(roundHalfAway(1.005, 2), 1.01);
    EXPECT_EQ(roundHalfAway(-1.005, 2), -1.01);
    EXPECT_EQ(roundHalfAway(2.5, 0), 3.0);
    EXPECT_EQ(roundHalfAway(-2.5, 0), -3.0);
    EXPECT_EQ(roundHalfAway(0.5, 0), 1.0);
    EXPECT_EQ(roundHalfAway(0.49999, 0), 0.0);
    EXPECT_EQ(roundHalfAway(1234.5678, 4), 1234.5678);
    EXPECT_EQ(roundHalfAway(1e300, 2), 1e300);
    EXPECT_EQ(roundHalfAway(1e-300, 2), 0.0);
    EXPECT_EQ(roundHalfAway(99.995, 2), 100.0);
    EXPECT_TRUE(std::isnan(roundHalfAway(std::nan(""), 2)));
}

TEST(GroupedFormat, WhatIsReadOffItNeedsNoText) {
    std::mt19937 random(14);
    for (const QLocale& locale : {QLocale(kPoint), QLocale(kComma), QLocale("de_CH"), QLocale("fr_FR"),
                                  QLocale("hi_IN"), QLocale("ar_EG"), QLocale("fa_IR"), QLocale::c()}) {
        const LocaleScope scope(locale);
        const auto check = [&](float value) {
            for (const int decimals : {0, 2, 4}) {
                const QString shown = formatGrouped(value, decimals);
                EXPECT_EQ(throughGroupedFormat(value, decimals), readSingle(shown).value_or(0.0F))
                    << text(shown) << " under " << text(locale.name());
            }
        };
        for (const float value :
             {0.0F, -0.0F, 0.335F, 1.005F, -0.004F, 0.005F, 99.995F, 167772.16F, 167772.17F, 16777216.0F,
              16777217.0F, 1e10F, 1e20F, -3.4e38F, 1e-40F, std::numeric_limits<float>::max(),
              std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
            check(value);
        }
        for (int i = 0; i < 2000; ++i) {
            check(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
            check(static_cast<float>(random() % 100'000'000) / 1000.0F);
        }
    }
    EXPECT_EQ(throughGroupedFormat(0.335F), 0.34F);
    EXPECT_FALSE(std::signbit(throughGroupedFormat(-0.004F))) << "no customer owes minus zero";
}

TEST(GroupedFormat, UsesTheSeparatorsOfTheLocale) {
    {
        const LocaleScope locale(kPoint);
        EXPECT_EQ(text(formatGrouped(1234567.891)), "1,234,567.89");
        EXPECT_EQ(text(formatGrouped(-1234.5)), "-1,234.50");
    }
    {
        const LocaleScope locale(kComma);
        EXPECT_EQ(text(formatGrouped(1234567.891)), "1.234.567,89");
        EXPECT_EQ(text(formatGrouped(-1234.5)), "-1.234,50");
    }
    {
        const LocaleScope locale("sr_RS@latin");
        EXPECT_EQ(text(formatGrouped(1234.5)), "1.234,50");
    }
    {
        const LocaleScope locale("de_DE");
        EXPECT_EQ(text(formatGrouped(1234.5)), "1.234,50");
    }
    {
        const LocaleScope locale("fr_FR");
        EXPECT_EQ(formatGrouped(1234.5), QStringLiteral("1\u202F234,50"));
    }
    {
        const LocaleScope locale(QLocale::c());
        EXPECT_EQ(text(formatGrouped(1234.5)), "1,234.50");
    }
}

TEST(GroupedFormat, CutsGroupsOfThreeWhereTheLocaleWouldNotYet) {
    // In Spain four digits stand together in plain text; on the shop's lists they do not.
    const LocaleScope locale("es_ES");
    EXPECT_EQ(text(formatGrouped(1234.5)), "1.234,50");
    EXPECT_EQ(text(formatGrouped(12345678.0)), "12.345.678,00");
}

TEST(GroupedFormat, HasAFixedNumberOfPlaces) {
    const LocaleScope locale(kPoint);
    EXPECT_EQ(text(formatGrouped(0.0)), "0.00");
    EXPECT_EQ(text(formatGrouped(0.05)), "0.05");
    EXPECT_EQ(text(formatGrouped(7.0)), "7.00");
    EXPECT_EQ(text(formatGrouped(100.0)), "100.00");
    EXPECT_EQ(text(formatGrouped(999.995)), "1,000.00");
    EXPECT_EQ(text(formatGrouped(1234.5, 0)), "1,235");
    EXPECT_EQ(text(formatGrouped(1234.5, 4)), "1,234.5000");
    EXPECT_EQ(text(formatGrouped(1e15)), "1,000,000,000,000,000.00");
    EXPECT_EQ(formatGrouped(std::numeric_limits<double>::max()).size(), 309 + 102 + 3);
}

TEST(GroupedFormat, NobodyOwesMinusZero) {
    const LocaleScope locale(kPoint);
    EXPECT_EQ(text(formatGrouped(-0.001)), "0.00");
    EXPECT_EQ(text(formatGrouped(-0.0)), "0.00");
    EXPECT_EQ(text(formatGrouped(amount(-49))), "0.00");
    EXPECT_EQ(text(formatGrouped(amount(-50))), "-0.01");
}

TEST(GroupedFormat, OfASingleGoesByTheDecimalOfTheSingle) {
    const LocaleScope locale(kPoint);
    EXPECT_EQ(text(formatGrouped(1.005F)), "1.01");
    EXPECT_EQ(text(formatGrouped(76.5F)), "76.50");
    EXPECT_EQ(text(formatGrouped(12345678.0F)), "12,345,678.00");
}

TEST(GroupedFormat, OfAnAmountIsExactToTheLastPlace) {
    const LocaleScope locale(kPoint);
    EXPECT_EQ(text(formatGrouped(amount(1234567))), "123.46");
    EXPECT_EQ(text(formatGrouped(amount(1234550))), "123.46");
    EXPECT_EQ(text(formatGrouped(amount(1234549))), "123.45");
    EXPECT_EQ(text(formatGrouped(amount(std::numeric_limits<std::int64_t>::max()), 4)),
              "922,337,203,685,477.5807");
    EXPECT_EQ(text(formatGrouped(amount(std::numeric_limits<std::int64_t>::min()), 4)),
              "-922,337,203,685,477.5808");
}

TEST(CurrencyFormat, HasTheSymbolAndDecimalsOfTheLocale) {
    {
        const LocaleScope locale(kPoint);
        EXPECT_EQ(text(formatCurrency(1234.5)), "$1,234.50");
        EXPECT_EQ(readNumber(formatCurrency(-1234.5)), -1234.5);
    }
    {
        const LocaleScope locale(kComma);
        EXPECT_EQ(formatCurrency(1234.5), QStringLiteral("1.234,50\u00A0RSD"));
        EXPECT_EQ(readNumber(formatCurrency(-1234.5)), -1234.5);
    }
    {
        const LocaleScope locale("ja_JP");
        EXPECT_EQ(readNumber(formatCurrency(1234.5)), 1235.0);
    }
}

TEST(CurrencyFormat, EveryLocaleReadsItsOwnAmountsBack) {
    for (const char* name :
         {"en_US", "sr_Latn_RS", "sr_Cyrl_RS", "de_DE", "de_CH", "fr_FR", "hu_HU", "en_GB", "hr_HR", "sv_SE",
          "nb_NO", "pl_PL", "cs_CZ", "ja_JP", "ar_KW", "he_IL", "en_IN", "C"}) {
        const LocaleScope locale(name);
        for (const double value : {0.0, 0.25, 12.5, 1234.75, -1234.75, 1234567.25}) {
            const double expected = roundHalfAway(value, currencyDecimals());
            EXPECT_EQ(readNumber(formatCurrency(value)), expected)
                << name << ' ' << text(formatCurrency(value));
            EXPECT_EQ(readNumber(formatGrouped(value)), value) << name << ' ' << text(formatGrouped(value));
        }
    }
}

TEST(CurrencyDecimals, AreTwoForTheDinarAndTheExceptionsAreKnown) {
    const std::pair<const char*, int> kExpected[] = {
        {"sr_Latn_RS", 2}, {"sr_Cyrl_RS", 2}, {"en_US", 2}, {"de_DE", 2}, {"hu_HU", 2}, {"ja_JP", 0},
        {"ko_KR", 0},      {"is_IS", 0},      {"ar_KW", 3}, {"ar_TN", 3}, {"C", 2}};
    for (const auto& [name, decimals] : kExpected) {
        const LocaleScope locale(name);
        EXPECT_EQ(currencyDecimals(), decimals) << name;
    }
}

TEST(ThroughCurrencyFormat, EqualsFormattingAndReadingBack) {
    std::mt19937_64 random(20050705);
    for (const char* name : {"en_US", "sr_Latn_RS", "fr_FR", "ja_JP", "ar_KW"}) {
        const LocaleScope locale(name);
        for (int i = 0; i < 40000; ++i) {
            // From a few cents to what no shop ever sees, as many small ones as large ones.
            const std::int64_t limit = std::int64_t{1} << (4 + i % 56);
            const auto scaled = std::uniform_int_distribution<std::int64_t>(-limit, limit)(random);
            ASSERT_EQ(throughCurrencyFormat(amount(scaled)).scaled(),
                      onFoot(formatCurrency(amount(scaled))).scaled())
                << name << ' ' << scaled;
            const auto single = static_cast<float>(static_cast<double>(scaled) / 10007.0);
            ASSERT_EQ(throughCurrencyFormat(single).scaled(), onFoot(formatCurrency(single)).scaled())
                << name << ' ' << single;
        }
    }
}

TEST(ThroughCurrencyFormat, LeavesSmallDebtsStanding) {
    const LocaleScope locale(kComma);
    EXPECT_EQ(throughCurrencyFormat(amount(1000)).scaled(), 1000);  // ten paras
    EXPECT_EQ(throughCurrencyFormat(amount(1049)).scaled(), 1000);
    EXPECT_EQ(throughCurrencyFormat(amount(1050)).scaled(), 1100);
    EXPECT_EQ(throughCurrencyFormat(amount(-1050)).scaled(), -1100);
}

TEST(ThroughCurrencyFormat, AnAmountThatDoesNotFitIsAnOverflow) {
    try {
        throughCurrencyFormat(3e38F);
        FAIL() << "no error";
    } catch (const dao::Error& e) {
        EXPECT_EQ(e.Number(), dao::errOverflow);
    }
}

TEST(TextOfSingle, IsTheShortestThatReadsBack) {
    const LocaleScope locale(kPoint);
    EXPECT_EQ(text(textOfSingle(18.0F)), "18");
    EXPECT_EQ(text(textOfSingle(100.0F)), "100");
    EXPECT_EQ(text(textOfSingle(101.0F)), "101");
    EXPECT_EQ(text(textOfSingle(-18.0F)), "-18");
    EXPECT_EQ(text(textOfSingle(0.1F)), "0.1");
    EXPECT_EQ(text(textOfSingle(76.5F)), "76.5");
    EXPECT_EQ(text(textOfSingle(-2.25F)), "-2.25");
    EXPECT_EQ(text(textOfSingle(0.0F)), "0");
    EXPECT_EQ(text(textOfSingle(-0.0F)), "0");
    EXPECT_EQ(text(textOfSingle(10000000.0F)), "10000000");
    EXPECT_EQ(text(textOfSingle(1e20F)), "1E+20");
    EXPECT_EQ(text(textOfDouble(1234567.891)), "1234567.891");
}

TEST(TextOfSingle, ReadsBackAsTheSameSingleUnderEveryLocale) {
    std::mt19937 random(7);
    for (const char* name : {"en_US", "sr_Latn_RS", "fr_FR", "C"}) {
        const LocaleScope locale(name);
        for (int i = 0; i < 20000; ++i) {
            const auto bits = static_cast<std::uint32_t>(random());
            float value = 0;
            static_assert(sizeof bits == sizeof value);
            std::memcpy(&value, &bits, sizeof value);
            if (std::isfinite(value)) {
                ASSERT_EQ(readSingle(textOfSingle(value)), value == 0 ? 0.0F : value)
                    << text(textOfSingle(value));
            }
        }
    }
}

TEST(TextOfSingle, HasTheLocalesSeparatorAndNoGroups) {
    const LocaleScope locale(kComma);
    EXPECT_EQ(text(textOfSingle(12345.5F)), "12345,5");
    EXPECT_EQ(text(decimalSeparator()), ",");
}

TEST(ReadingNumbers, NoExponentIsTooLongToTellLargeFromSmall) {
    const LocaleScope locale(kPoint);
    EXPECT_FALSE(readNumber("1e9223372036854775807").has_value());
    EXPECT_FALSE(readNumber("1e9223372036854775808").has_value());
    EXPECT_EQ(readNumber("0.001e-9223372036854775808"), 0.0);
    EXPECT_EQ(readNumber("0.001e-9223372036854775809"), 0.0);
}

TEST(ReadingNumbers, ASingleOverflowsWhereADoubleDoesNot) {
    const LocaleScope locale(kPoint);
    EXPECT_TRUE(isNumeric("1e39"));
    EXPECT_FALSE(readSingle("1e39").has_value());
    EXPECT_FALSE(readNumber("1e400").has_value());
    EXPECT_EQ(readSingle("1e-60"), 0.0F);
    EXPECT_EQ(readNumber("0." + QString(400, '0') + "1"), 0.0);
}
