#include <limits>

#include "platform/dao/dao_shop.h"
#include "platform/dao/value.h"

using namespace dao;
using daotest::errorOf;

namespace {

TEST(ValueTest, NullReadsAsEmptyTextAndAsNothingElse) {
    const Value null;
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(null.type(), dao::Type::Null);
    EXPECT_EQ(null.asText(), "");
    EXPECT_EQ(null.textRef(), "");
    EXPECT_EQ(errorOf([&] { null.asBool(); }), errInvalidUseOfNull);
    EXPECT_EQ(errorOf([&] { null.asLong(); }), errInvalidUseOfNull);
    EXPECT_EQ(errorOf([&] { null.asSingle(); }), errInvalidUseOfNull);
    EXPECT_EQ(errorOf([&] { null.asDouble(); }), errInvalidUseOfNull);
    EXPECT_EQ(errorOf([&] { null.asCurrency(); }), errInvalidUseOfNull);
    EXPECT_EQ(errorOf([&] { null.asDate(); }), errInvalidUseOfNull);
}

TEST(ValueTest, ANumberHasItsShortestText) {
    EXPECT_EQ(Value(0.1F).asText(), "0.1");
    EXPECT_EQ(Value(100000.0).asText(), "100000");
    EXPECT_EQ(Value(-2.5).asText(), "-2.5");
    EXPECT_EQ(Value(0.0).asText(), "0");
    EXPECT_EQ(Value(1e20).asText(), "1E+20");
    EXPECT_EQ(Value(16777216.0F).asText(), "16777216");
    EXPECT_EQ(Value(-17).asText(), "-17");
    EXPECT_EQ(Value(Currency::fromScaled(123400)).asText(), "12.34");
    EXPECT_EQ(Value(Currency::fromScaled(-1)).asText(), "-0.0001");
    EXPECT_EQ(Value(Currency::fromScaled(50000)).asText(), "5");
    EXPECT_EQ(Value(Currency::fromScaled(INT64_MIN)).asText(), "-922337203685477.5808");
    EXPECT_EQ(Value(true).asText(), "True");
    EXPECT_EQ(Value(false).asText(), "False");
}

TEST(ValueTest, ADateHasItsDayFirstOfAll) {
    EXPECT_EQ(Value(Date{1.0}).asText(), "1899-12-31");
    EXPECT_EQ(Value(Date{0.0}).asText(), "1899-12-30");
    EXPECT_EQ(Value(Date{36526.5}).asText(), "2000-01-01 12:00:00");
    EXPECT_EQ(Value(Date{-1.25}).asText(), "1899-12-29 06:00:00");
    EXPECT_EQ(Value(Date{36525.999999999}).asText(), "2000-01-01");
    EXPECT_EQ(Value(Date{36585.0}).asText(), "2000-02-29");
}

TEST(ValueTest, NumbersConvertIntoEachOther) {
    EXPECT_EQ(Value(2.5).asLong(), 2);
    EXPECT_EQ(Value(3.5).asLong(), 4);
    EXPECT_EQ(Value(-2.6).asLong(), -3);
    EXPECT_EQ(Value(true).asLong(), -1);
    EXPECT_TRUE(Value(7).asBool());
    EXPECT_FALSE(Value(0.0).asBool());
    EXPECT_EQ(Value(Currency::fromScaled(15000)).asDouble(), 1.5);
    EXPECT_EQ(Value(3).asDate().days, 3.0);
    EXPECT_EQ(Value(Date{2.5}).asDouble(), 2.5);
}

TEST(ValueTest, TextsConvertWhereTheyReadAsNumbers) {
    EXPECT_EQ(Value("12").asLong(), 12);
    EXPECT_EQ(Value(" 12.5 ").asDouble(), 12.5);
    EXPECT_EQ(Value("+3").asLong(), 3);
    EXPECT_EQ(Value("1.00005").asCurrency().scaled(), 10001);
    EXPECT_TRUE(Value("true").asBool());
    for (const char* text : {"", " ", "x", "12,5", "1.2.3", "--1", "+-1", "12 3", "inf", "nan", "0x10"}) {
        EXPECT_EQ(errorOf([&] { Value(text).asDouble(); }), errTypeMismatch) << text;
    }
    EXPECT_EQ(errorOf([&] { Value("1e999").asDouble(); }), errOverflow);
}

TEST(ValueTest, WhatDoesNotFitIsAnOverflow) {
    EXPECT_EQ(Value(2147483647.0).asLong(), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(errorOf([] { Value(2147483648.0).asLong(); }), errOverflow);
    EXPECT_EQ(errorOf([] { Value(-2147483649.0).asLong(); }), errOverflow);
    EXPECT_EQ(errorOf([] { Value(1e300).asSingle(); }), errOverflow);
    EXPECT_EQ(errorOf([] { Value(922337203685478.0).asCurrency(); }), errOverflow);
    EXPECT_EQ(errorOf([] { Value(std::numeric_limits<double>::quiet_NaN()).asCurrency(); }), errOverflow);
    EXPECT_EQ(errorOf([] { Value(std::numeric_limits<double>::quiet_NaN()).asLong(); }), errOverflow);
}

TEST(ValueTest, MoneyRoundsHalfAwayFromZeroOnTheShortestDecimal) {
    EXPECT_EQ(Currency::fromDouble(0.00005).scaled(), 1);
    EXPECT_EQ(Currency::fromDouble(-0.00005).scaled(), -1);
    EXPECT_EQ(Currency::fromDouble(1.00015).scaled(), 10002);
    EXPECT_EQ(Currency::fromDouble(1.000149999).scaled(), 10001);
    EXPECT_EQ(Currency::fromDouble(1e-9).scaled(), 0);
    EXPECT_EQ(Currency::fromDouble(922337203685477.0).scaled(), 9223372036854770000);
    EXPECT_EQ(Value(0.335F).asCurrency().scaled(), 3350);
    EXPECT_EQ(Value(19.99F).asCurrency().scaled(), 199900);
}

TEST(Currency, RoundsEveryNumberByItsDecimal) {
    for (const std::int64_t whole : {0, 1, 8191, 99'999, 12'345'678, 99'999'999}) {
        for (std::int64_t fraction = 0; fraction < 100'000; fraction += fraction % 10 == 5 ? 4 : 1) {
            std::string places = std::to_string(fraction);
            places.insert(0, 5 - places.size(), '0');
            const std::string text = std::to_string(whole) + "." + places;
            const std::int64_t rounded = (whole * 100'000 + fraction + 5) / 10;
            ASSERT_EQ(Currency::fromDouble(std::stod(text)).scaled(), rounded) << text;
            ASSERT_EQ(Currency::fromDouble(-std::stod(text)).scaled(), -rounded) << text;
        }
    }
}

}  // namespace
