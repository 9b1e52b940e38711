#include "exchange/plain_values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using dao::Currency;
using dao::Date;
using dao::Value;
using exchange::plainText;
using exchange::plainValue;

std::string refusal(std::string_view text, dao::FieldType type) {
    try {
        plainValue(text, type);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return {};
}

TEST(PlainValues, AmountsToTheLastTenThousandth) {
    EXPECT_EQ(plainText(Currency::fromScaled(123450)), "12.345");
    EXPECT_EQ(plainText(Currency::fromScaled(-1)), "-0.0001");
    EXPECT_EQ(plainText(Currency::fromScaled(70000)), "7");
    EXPECT_EQ(plainText(Currency::fromScaled(0)), "0");
    for (const std::int64_t scaled : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-10000},
                                      std::int64_t{99}, std::numeric_limits<std::int64_t>::max()}) {
        const Value amount = Currency::fromScaled(scaled);
        EXPECT_EQ(plainValue(plainText(amount), dao::dbCurrency), amount) << scaled;
    }
    for (const char* const text :
         {"", "-", "1,5", "1.", ".5", "1.23456", "1e3", " 1", "1.-5", "922337203685477.5808"}) {
        EXPECT_NE(refusal(text, dao::dbCurrency), "") << text;
    }
}

TEST(PlainValues, DatesAreIsoAndTheEmptyDateIsTheDayOne) {
    EXPECT_EQ(plainText(Date{1}), "1899-12-31");
    EXPECT_EQ(plainText(Date{0}), "1899-12-30");
    EXPECT_EQ(plainText(Date{46348}), "2026-11-22");
    EXPECT_EQ(plainText(Date{46348.5}), "2026-11-22T12:00:00");
    EXPECT_EQ(plainText(Date{46348 + 50700 / 86400.0}), "2026-11-22T14:05:00");
    // Before the first day the time still goes forward.
    EXPECT_EQ(plainText(Date{-1.25}), "1899-12-29T06:00:00");
    EXPECT_EQ(plainValue("2026-11-22 14:05:00", dao::dbDate), Value(Date{46348 + 50700 / 86400.0}));
    EXPECT_EQ(plainValue("46348.5", dao::dbDate), Value(Date{46348.5}));
    for (const char* const text : {"", "22.11.2026", "2026-13-01", "2026-02-29", "2026-11-22T24:00:00",
                                   "2026-11-22T", "2026-11-2", "2026/11/22", "yesterday"}) {
        EXPECT_EQ(refusal(text, dao::dbDate), "is no date such as 2026-11-22 or 2026-11-22T14:05:00") << text;
    }
}

TEST(PlainValues, EveryDateReadsBackToTheLastBit) {
    std::mt19937_64 any(7);
    std::uniform_real_distribution<double> days(-50000, 120000);
    for (int i = 0; i < 20000; ++i) {
        const double rough = days(any);
        const double second =
            std::trunc(rough) + std::floor(std::fabs(rough - std::trunc(rough)) * 86400) / 86400;
        for (const double moment : {rough, second, std::trunc(rough)}) {
            EXPECT_EQ(plainValue(plainText(Date{moment}), dao::dbDate), Value(Date{moment})) << moment;
        }
    }
    for (const double odd : {-0.0, -0.25, 1e300, -4e6, 0.1, std::nextafter(1.0, 2.0), 2958465.0, 2958466.0}) {
        const Value back = plainValue(plainText(Date{odd}), dao::dbDate);
        EXPECT_EQ(back.asDate().days, odd);
        EXPECT_EQ(std::signbit(back.asDate().days), std::signbit(odd));
    }
}

TEST(PlainValues, SinglesAreTheirShortestDecimal) {
    EXPECT_EQ(plainText(0.1F), "0.1");
    EXPECT_EQ(plainText(12.5F), "12.5");
    std::mt19937 any(7);
    for (int i = 0; i < 20000; ++i) {
        const auto number = std::bit_cast<float>(static_cast<std::uint32_t>(any()));
        if (std::isfinite(number)) {
            EXPECT_EQ(plainValue(plainText(number), dao::dbSingle), Value(number));
        }
    }
    EXPECT_NE(refusal("1,5", dao::dbSingle), "");
    EXPECT_NE(refusal("1.5 kom", dao::dbSingle), "");
    EXPECT_NE(refusal("1e99", dao::dbSingle), "");
}

TEST(PlainValues, WholeNumbersAndTruth) {
    EXPECT_EQ(plainText(std::int32_t{-7}), "-7");
    EXPECT_EQ(plainValue("2147483647", dao::dbLong), Value(std::int32_t{2147483647}));
    EXPECT_NE(refusal("2147483648", dao::dbLong), "");
    EXPECT_NE(refusal("7.0", dao::dbLong), "");
    EXPECT_EQ(plainText(true), "true");
    EXPECT_EQ(plainValue("False", dao::dbBoolean), Value(false));
    EXPECT_EQ(plainValue("1", dao::dbBoolean), Value(true));
    EXPECT_NE(refusal("da", dao::dbBoolean), "");
}

}  // namespace
