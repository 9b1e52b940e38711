#include "records/service_values.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QLocale>

#include "platform/dao/error.h"
#include "platform/system/dates.h"

using dao::Currency;
using dao::Date;
using dao::Value;
using service_row::ScreenUnit;

namespace {

constexpr ScreenUnit kEuro{false, 80};
constexpr ScreenUnit kDinars{true, 80};

Date day(int year, int month, int dayOfMonth) {
    return platform::fromQDate(QDate(year, month, dayOfMonth));
}

Currency money(double amount) {
    return Currency::fromDouble(amount);
}

TakenText take(ServiceColumn column, const char* typed) {
    return takeTyped(serviceField(column), typed);
}

struct ServiceValuesTest : ::testing::Test {
    void SetUp() override { use("en_US"); }
    void TearDown() override { QLocale::setDefault(before_); }
    static void use(const char* locale) { QLocale::setDefault(QLocale(QLatin1String(locale))); }

 private:
    QLocale before_;
};

TEST_F(ServiceValuesTest, UnreadableFiguresAreThoseOfTheRowBefore) {
    ServiceValues before;
    before[ServiceColumn::Price] = money(10);
    before[ServiceColumn::Paid] = money(4);
    before[ServiceColumn::Discount] = 5.0F;
    before[ServiceColumn::Tax] = 18.0F;
    before[ServiceColumn::Finished] = day(2020, 2, 2);
    before[ServiceColumn::ToBeFinished] = day(2020, 1, 1);
    ServiceValues own;
    own[ServiceColumn::Paid] = money(7);
    EXPECT_FALSE(isComplete(own));
    takeFromRowAbove(own, before);
    EXPECT_TRUE(isComplete(own));
    EXPECT_EQ(own[ServiceColumn::Paid], Value(money(7)));
    EXPECT_EQ(own[ServiceColumn::Price], Value(money(10)));
    EXPECT_EQ(own[ServiceColumn::Discount], Value(5.0F));
    EXPECT_EQ(own[ServiceColumn::Tax], Value(18.0F));
    EXPECT_EQ(own[ServiceColumn::Finished], Value(day(2020, 2, 2)));
    EXPECT_EQ(own[ServiceColumn::ToBeFinished], Value(day(2020, 1, 1)));
}

TEST_F(ServiceValuesTest, StartDescriptionAndKindsAreNeverThoseOfTheRowBefore) {
    ServiceValues before;
    before[ServiceColumn::Started] = day(2020, 1, 1);
    before[ServiceColumn::Comments] = "Fan";
    before[ServiceColumn::Types] = "2";
    ServiceValues own;
    takeFromRowAbove(own, before);
    EXPECT_TRUE(own[ServiceColumn::Started].isNull());
    EXPECT_TRUE(own[ServiceColumn::Comments].isNull());
    EXPECT_TRUE(own[ServiceColumn::Types].isNull());
}

TEST_F(ServiceValuesTest, NothingStandsBeforeTheFirstRow) {
    ServiceValues values;
    countMissingAsNothing(values);
    EXPECT_EQ(values[ServiceColumn::Price], Value(Currency()));
    EXPECT_EQ(values[ServiceColumn::Tax], Value(0.0F));
    EXPECT_EQ(values[ServiceColumn::Finished], Value(Date{}));
    EXPECT_TRUE(values[ServiceColumn::Started].isNull());
}

// What stood there before does not show through.
Value shownValue(ServiceKind kind, const Value& stored, const service_row::ScreenUnit& unit) {
    Value shown("of the row before");
    showValue(kind, stored, unit, shown);
    return shown;
}

TEST_F(ServiceValuesTest, AmountsOfTheFileComeInTheUnitOnScreen) {
    EXPECT_EQ(shownValue(ServiceKind::Amount, money(2), kEuro), Value(money(2)));
    EXPECT_EQ(shownValue(ServiceKind::Amount, money(2), kDinars), Value(money(160)));
    EXPECT_EQ(shownValue(ServiceKind::Number, 2.0F, kDinars), Value(2.0F));
}

TEST_F(ServiceValuesTest, WhatCannotBeReadIsMissing) {
    EXPECT_TRUE(shownValue(ServiceKind::Amount, Value(), kEuro).isNull());
    EXPECT_TRUE(shownValue(ServiceKind::Number, "much", kEuro).isNull());
    EXPECT_TRUE(
        shownValue(ServiceKind::Amount, Currency::fromScaled(9'000'000'000'000'000'000), kDinars).isNull());
}

TEST_F(ServiceValuesTest, ADateLeftOpenIsAnEmptyCellAndAStartNeverIs) {
    EXPECT_EQ(cellOfValue(ServiceKind::OpenDate, service_row::kEmptyDate), "");
    EXPECT_EQ(cellOfValue(ServiceKind::OpenDate, day(2026, 3, 9)), "3/9/2026");
    EXPECT_EQ(cellOfValue(ServiceKind::Date, day(1989, 12, 31)), "12/31/1989");
    EXPECT_EQ(cellOfValue(ServiceKind::Date, Value()), "");
}

TEST_F(ServiceValuesTest, TypedTextIsStoredAsItsFieldHoldsIt) {
    EXPECT_EQ(storedValue(ServiceKind::OpenDate, "3/9/2026", kDinars), Value(day(2026, 3, 9)));
    EXPECT_EQ(storedValue(ServiceKind::OpenDate, "", kDinars), Value(service_row::kEmptyDate));
    EXPECT_EQ(storedValue(ServiceKind::Amount, "160", kDinars), Value(money(2)));
    EXPECT_EQ(storedValue(ServiceKind::Amount, "160", kEuro), Value(money(160)));
    EXPECT_EQ(storedValue(ServiceKind::Number, "12.5", kDinars), Value(12.5F));
    EXPECT_EQ(storedValue(ServiceKind::Text, "Fan", kDinars), Value("Fan"));
    EXPECT_THROW(storedValue(ServiceKind::Amount, "1e30", kEuro), dao::Error);
}

TEST_F(ServiceValuesTest, OnlyTheStartMustBeThere) {
    EXPECT_EQ(take(ServiceColumn::ToBeFinished, " ").refusal, "");
    EXPECT_EQ(take(ServiceColumn::Price, "").text, "0");
    EXPECT_EQ(take(ServiceColumn::Comments, "").text, "");
    EXPECT_NE(take(ServiceColumn::Started, " ").refusal, "");
}

TEST_F(ServiceValuesTest, TypedTextTakesTheProgramsForm) {
    EXPECT_EQ(take(ServiceColumn::Finished, " 2026-03-09 ").text, "3/9/2026");
    EXPECT_EQ(take(ServiceColumn::Paid, "1,234.50").text, "1234.5");
    EXPECT_EQ(take(ServiceColumn::Comments, " a\nb ").text, " a\nb ");
}

TEST_F(ServiceValuesTest, OnlyTheTaxHasALimit) {
    EXPECT_EQ(take(ServiceColumn::Tax, "99.9").text, "99.9");
    EXPECT_EQ(take(ServiceColumn::Tax, "100").refusal,
              "GST must not be a number greater then or equal to 100%.");
    EXPECT_EQ(take(ServiceColumn::Discount, "150").text, "150");
}

}  // namespace
