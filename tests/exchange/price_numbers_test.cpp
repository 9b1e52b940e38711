#include "exchange/price_numbers.h"

#include <gtest/gtest.h>

namespace {

using exchange::DecimalMark;
using exchange::markIn;
using exchange::Money;
using exchange::numberUnder;
using exchange::typedNumber;

std::string digitsOf(const char* text) {
    const auto number = typedNumber(text);
    return number ? number->digits : "none";
}

TEST(PriceNumbers, WhatStandsAroundADigitIsTakenOff) {
    EXPECT_EQ(digitsOf(" 1 234,50 "), "1234,50");
    EXPECT_EQ(digitsOf("1\u00A0234,50 \u20ac"), "1234,50");
    EXPECT_EQ(digitsOf("1'234.50"), "1234.50");
    EXPECT_EQ(digitsOf("1.200,-"), "1.200");
    EXPECT_EQ(digitsOf("-7"), "-7");
    for (const char* const text : {"", "na upit", "12 kom", "EUR", "-", ",", "1e3", "1-2"}) {
        EXPECT_EQ(digitsOf(text), "none") << text;
    }
}

TEST(PriceNumbers, TheCurrencyBesideItIsKnown) {
    for (const char* const text : {"\u20ac 12", "12 EUR", "EUR12", "12 euro"}) {
        EXPECT_EQ(typedNumber(text)->money, Money::Euro) << text;
        EXPECT_EQ(digitsOf(text), "12");
    }
    for (const char* const text : {"12 din.", "12 RSD", "rsd 12", "12din", "12 dinara"}) {
        EXPECT_EQ(typedNumber(text)->money, Money::Dinars) << text;
        EXPECT_EQ(digitsOf(text), "12");
    }
    EXPECT_FALSE(typedNumber("12")->money);
}

TEST(PriceNumbers, SomeNumbersTellTheirMark) {
    for (const char* const comma :
         {"12,5", "12,50", "1.234,5", "1.234.567", "0,125", "1234,567", ",5", ",500", "-,125"}) {
        EXPECT_EQ(markIn(comma), DecimalMark::Comma) << comma;
    }
    for (const char* const point : {"12.5", "1,234.5", "1,234,567", "0.125", "12.5000"}) {
        EXPECT_EQ(markIn(point), DecimalMark::Point) << point;
    }
    for (const char* const either : {"7", "1.234", "12,500", "999.999", "-1,234"}) {
        EXPECT_EQ(markIn(either), DecimalMark::Unknown) << either;
    }
}

TEST(PriceNumbers, UnderAMarkTheOtherPartsThousands) {
    EXPECT_EQ(numberUnder(DecimalMark::Comma, "1.234,5"), 1234.5);
    EXPECT_EQ(numberUnder(DecimalMark::Point, "1,234.5"), 1234.5);
    EXPECT_EQ(numberUnder(DecimalMark::Comma, "1.234"), 1234);
    EXPECT_EQ(numberUnder(DecimalMark::Point, "1.234"), 1.234);
    EXPECT_EQ(numberUnder(DecimalMark::Comma, "1.234.567,25"), 1234567.25);
    EXPECT_EQ(numberUnder(DecimalMark::Comma, ",5"), 0.5);
    EXPECT_EQ(numberUnder(DecimalMark::Point, "-7"), -7);
    for (const char* const wrong : {"1.23,5", "1234.567,5", "1,2,3", ".123", "1..234", "1.234.56"}) {
        EXPECT_FALSE(numberUnder(DecimalMark::Comma, wrong)) << wrong;
    }
}

}  // namespace
