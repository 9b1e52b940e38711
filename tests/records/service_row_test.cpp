#include "records/service_row.h"

#include <gtest/gtest.h>

#include <QLocale>

#include "platform/dao/error.h"
#include "platform/system/dates.h"

using dao::Currency;
using dao::Date;
using service_row::Figures;
using service_row::ScreenUnit;

namespace {

Currency money(double amount) {
    return Currency::fromDouble(amount);
}

Date day(int year, int month, int dayOfMonth) {
    return platform::fromQDate(QDate(year, month, dayOfMonth));
}

Figures job(double price, double paid, float discount = 0, float gst = 0) {
    Figures figures;
    figures.price = money(price);
    figures.paid = money(paid);
    figures.discount = discount;
    figures.gst = gst;
    return figures;
}

bool paid(const Figures& figures) {
    return service_row::isPaid(service_row::remainder(figures), figures.price > Currency());
}

struct ServiceRow : ::testing::Test {
    void SetUp() override { use("en_US"); }
    void TearDown() override { QLocale::setDefault(before_); }
    static void use(const char* locale) { QLocale::setDefault(QLocale(QLatin1String(locale))); }

 private:
    QLocale before_;
};

}  // namespace

TEST_F(ServiceRow, FivePenniesBelowTheToleranceArePaid) {
    EXPECT_EQ(service_row::remainder(job(100, 106.15, 10, 18)), Currency());
    EXPECT_TRUE(paid(job(100, 106.15, 10, 18)));
}

TEST_F(ServiceRow, TenPenniesAreNotBelowTheTolerance) {
    EXPECT_EQ(service_row::remainder(job(100, 106.10, 10, 18)), money(0.10));
    EXPECT_FALSE(paid(job(100, 106.10, 10, 18)));
}

TEST_F(ServiceRow, OverpaymentIsPaidAndNotNegative) {
    EXPECT_EQ(service_row::remainder(job(100, 500)), Currency());
    EXPECT_TRUE(paid(job(100, 500)));
}

TEST_F(ServiceRow, PaidJobNeedsAPrice) {
    EXPECT_FALSE(paid(job(0, 0)));
    EXPECT_FALSE(paid(job(0, 50)));
    EXPECT_FALSE(paid(job(-10, 0)));
    EXPECT_TRUE(paid(job(0.01, 0.01)));
}

TEST_F(ServiceRow, RemainderRoundsToFourDecimalsAtEachStep) {
    // The discount amount of 0.00005 rounds up to 0.0001 before it is taken off: 0.0099, and not 0.00995. A
    // thousand times the figures would show it; here the price is large enough to carry the difference to the
    // surface. 1.0001 * 50 % = 0.50005 -> 0.5001; net 0.5000; at 99 % GST: 0.9950.
    EXPECT_EQ(service_row::remainder(job(1.0001, 0, 50, 99)), money(1.00));
    // A discount of a third of the price, in full decimals: 33.3333 % of 99.99 is 33.32996667 -> 33.3300.
    EXPECT_EQ(service_row::remainder(job(99.99, 0, 33.3333F, 0)), money(66.66));
}

TEST_F(ServiceRow, RemainderTakesTheCurrencyDecimalsOfTheLocale) {
    EXPECT_EQ(service_row::remainder(job(0.1049, 0)), money(0.10));
    EXPECT_EQ(service_row::remainder(job(0.0951, 0)),
              money(0.10));  // 0.10 after rounding: not below the tolerance
    EXPECT_EQ(service_row::remainder(job(0.0949, 0)), Currency());
    use("sr_Latn_RS");
    EXPECT_EQ(service_row::remainder(job(0.4, 0)), money(0.40)) << "a small debt in dinars stays a debt";
    use("ja_JP");
    EXPECT_EQ(service_row::remainder(job(0.4, 0)), Currency()) << "a currency without decimals";
    EXPECT_EQ(service_row::remainder(job(0.6, 0)), money(1));
}

TEST_F(ServiceRow, ToleranceAppliesToTheUnitOnScreen) {
    const ScreenUnit dinars{true, 80};
    const ScreenUnit euro{false, 80};
    const auto debt = [](const ScreenUnit& unit) {
        Figures figures;
        figures.price = unit.toScreen(money(10));
        figures.paid = unit.toScreen(money(9.98));
        return service_row::remainder(figures);
    };
    EXPECT_EQ(debt(euro), Currency());
    EXPECT_EQ(debt(dinars), money(1.60));
}

TEST_F(ServiceRow, AmountsInDinarsAreRoundedToFourDecimals) {
    const ScreenUnit unit{true, 76.5F};
    EXPECT_EQ(unit.toScreen(money(117.2)), money(8965.8));
    EXPECT_EQ(unit.toScreen(Currency::fromScaled(1)), money(0.0077));  // 0.00765
    EXPECT_EQ(ScreenUnit{}.toScreen(money(117.2)), money(117.2));
}

TEST_F(ServiceRow, RateMeansTheDecimalThatWasTyped) {
    // 117.2 is 117.19999... as a Single; ten thousand euro must not lose three paras over it.
    EXPECT_EQ((ScreenUnit{true, 117.2F}.toScreen(money(10000))), money(1172000));
}

TEST_F(ServiceRow, ShownAmountsGoBackToEuro) {
    EXPECT_EQ((ScreenUnit{true, 76.5F}.toStored(8965.8F)), money(117.2));
    EXPECT_EQ((ScreenUnit{true, 76.5F}.toStored(944443.76F)), money(12345.67));
    EXPECT_EQ((ScreenUnit{false, 76.5F}.toStored(12345.67F)), money(12345.67));
    EXPECT_THROW((ScreenUnit{true, 0}.toStored(1)), dao::Error);
}

TEST_F(ServiceRow, FinishedFromTheFirstDayOf1990On) {
    EXPECT_TRUE(service_row::isFinished(day(1990, 1, 1)));
    EXPECT_FALSE(service_row::isFinished(day(1989, 12, 31)));
    EXPECT_FALSE(service_row::isFinished(Date{day(1989, 12, 31).days + 0.99})) << "whole days count";
    EXPECT_FALSE(service_row::isFinished(day(1900, 1, 1)));
    EXPECT_FALSE(service_row::isFinished(service_row::kEmptyDate));
    EXPECT_EQ(service_row::kFirstRealDate, day(1990, 1, 1));
}

TEST_F(ServiceRow, StateFollowsFromTheTwoAnswers) {
    EXPECT_EQ(service_row::stateKey(true, true), "FinishedPayed");
    EXPECT_EQ(service_row::stateKey(false, false), "NotFinishedNotPayed");
    EXPECT_EQ(service_row::stateKey(false, true), "NotFinishedPayed");
    EXPECT_EQ(service_row::stateKey(true, false), "FinishedNotPayed");
}

TEST_F(ServiceRow, RepricingKeepsTheFinishHalfOfTheIcon) {
    const Currency debt = money(1);
    const Currency nothing;
    EXPECT_EQ(service_row::repricedState("NotFinishedPayed", debt, 10), "NotFinishedNotPayed");
    EXPECT_EQ(service_row::repricedState("NotFinishedNotPayed", debt, 10), "NotFinishedNotPayed");
    EXPECT_EQ(service_row::repricedState("FinishedPayed", debt, 10), "FinishedNotPayed");
    EXPECT_EQ(service_row::repricedState("FinishedNotPayed", nothing, 10), "FinishedPayed");
    EXPECT_EQ(service_row::repricedState("FinishedPayed", nothing, 10), "FinishedPayed");
    EXPECT_EQ(service_row::repricedState("NotFinishedNotPayed", nothing, 10), "NotFinishedPayed");
    EXPECT_EQ(service_row::repricedState("FinishedPayed", nothing, 0), "FinishedNotPayed") << "no price";
    EXPECT_EQ(service_row::repricedState("NotFinishedPayed", nothing, 0), "NotFinishedNotPayed");
}

TEST_F(ServiceRow, EditorCountsInSinglesAndIsNotCutAtNothing) {
    EXPECT_NEAR(service_row::editorRemainder(100, 10, 18, 106.15F), 0.05F, 0.00001F);
    EXPECT_FLOAT_EQ(service_row::editorRemainder(100, 150, 0, 0), -50.0F);
    EXPECT_EQ(service_row::settledRemainder(-50), Currency());
    EXPECT_EQ(service_row::settledRemainder(0.09F), Currency());
    EXPECT_EQ(service_row::settledRemainder(0.1F), money(0.1));
    EXPECT_EQ(service_row::settledRemainder(8965.8F), money(8965.8));
}

TEST_F(ServiceRow, DateThatIsNoneIsStoredAsTheEmptyOne) {
    EXPECT_EQ(service_row::typedDate("3/9/2026"), day(2026, 3, 9));
    EXPECT_EQ(service_row::typedDate(""), service_row::kEmptyDate);
    EXPECT_EQ(service_row::typedDate("soon"), service_row::kEmptyDate);
}

TEST_F(ServiceRow, KeyAndTagAreTakenApartAtTheirMarks) {
    EXPECT_EQ(service_row::keyOf(123), "K123");
    EXPECT_EQ(service_row::idOfKey("K123"), 123);
    EXPECT_EQ(service_row::idOfKey("K"), 0);
    const QString tag = service_row::tagOf("2|3", "one##two");
    EXPECT_EQ(service_row::storedTag("2|3", "one##two"), tag);
    EXPECT_EQ(service_row::storedTag("", "Zamena ležaja"), QStringLiteral("##Zamena ležaja"));
    EXPECT_EQ(service_row::typesOfTag(tag), "2|3");
    EXPECT_EQ(service_row::commentsOfTag(tag), "one##two") << "only the first mark divides";
    EXPECT_EQ(service_row::commentsOfTag("2##"), "");
}

TEST_F(ServiceRow, UnknownKindAddsNoName) {
    const QStringList names{"", "Other", "Cleaning", "Repair"};
    EXPECT_EQ(service_row::typeNames("2|3", names), "Cleaning\nRepair");
    EXPECT_EQ(service_row::typeNames("0|2|9|x", names), "Cleaning");
    EXPECT_EQ(service_row::typeNames("", names), "");
    EXPECT_EQ(service_row::typeNames("1", {}), "");
}
