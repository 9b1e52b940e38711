#include "platform/system/dates.h"

#include <gtest/gtest.h>

#include "platform/system/locale_scope.h"

using namespace platform;

namespace {

std::string text(const QString& shown) {
    return shown.toStdString();
}

constexpr double kHour = 1.0 / 24;

}  // namespace

TEST(Days, CountFromTheLastDayButOneOf1899) {
    EXPECT_EQ(fromQDate(QDate(1899, 12, 30)).days, 0);
    EXPECT_EQ(fromQDate(QDate(1899, 12, 31)).days, 1);
    EXPECT_EQ(fromQDate(QDate(1990, 1, 1)).days, 32874);
    EXPECT_EQ(toQDate({32874.75}), QDate(1990, 1, 1));
    EXPECT_EQ(toQDate({-1.25}), QDate(1899, 12, 29));
    EXPECT_FALSE(toQDate({1e300}).isValid());
}

TEST(Days, KeepTheTimeOfDay) {
    const QDateTime time(QDate(2005, 7, 5), QTime(14, 30, 15));
    EXPECT_EQ(toQDateTime(fromQDateTime(time)), time);
    const QDateTime early(QDate(1890, 7, 5), QTime(6, 0));
    EXPECT_EQ(fromQDateTime(early).days, -3465.25);
    EXPECT_EQ(toQDateTime({-3465.25}).time(), QTime(6, 0));
}

TEST(ShortDate, HasFourDigitsOfTheYear) {
    const std::pair<const char*, const char*> kExpected[] = {
        {"en_US", "7/5/2005"},   {"sr_Latn_RS", "5.7.2005."}, {"de_DE", "05.07.2005"},
        {"en_GB", "05/07/2005"}, {"fr_FR", "05/07/2005"},     {"hu_HU", "2005. 07. 05."},
        {"sv_SE", "2005-07-05"}, {"C", "5 Jul 2005"}};
    for (const auto& [name, shown] : kExpected) {
        const LocaleScope locale(name);
        EXPECT_EQ(text(formatShortDate(QDate(2005, 7, 5))), shown) << name;
    }
}

TEST(ShortDate, OfNoDateIsEmpty) {
    EXPECT_EQ(text(formatShortDate(QDate())), "");
}

TEST(ShortDate, ReadsBackUnderEveryLocaleThatKnowsOurCalendar) {
    for (const QLocale& each :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
        const LocaleScope locale(each);
        for (const QDate& date :
             {QDate(2005, 7, 5), QDate(1999, 12, 31), QDate(1931, 1, 2), QDate(1899, 12, 31)}) {
            const QString shown = formatShortDate(date);
            const auto read = readDate(shown);
            ASSERT_TRUE(read.has_value()) << each.name().toStdString() << ' ' << text(shown);
            ASSERT_EQ(toQDate(*read), date) << each.name().toStdString() << ' ' << text(shown);
        }
    }
}

TEST(TextOfDate, ShowsTheTimeOnlyWhereThereIsOne) {
    {
        const LocaleScope locale("en_US");
        EXPECT_EQ(text(textOfDate({32874.0})), "1/1/1990");
        EXPECT_EQ(text(textOfDate({32874.0 + 14.5 * kHour})), "1/1/1990 2:30:00 PM");
        EXPECT_EQ(text(textOfDate({0.0})), "12:00:00 AM");
        EXPECT_EQ(text(textOfDate({0.75})), "6:00:00 PM");
        EXPECT_EQ(text(textOfDate({1.0})), "12/31/1899");
    }
    {
        const LocaleScope locale("sr_Latn_RS");
        EXPECT_EQ(text(textOfDate({32874.0 + 14.5 * kHour})), "1.1.1990. 14:30:00");
        EXPECT_EQ(text(textOfDate({0.25})), "06:00:00");
    }
}

TEST(TextOfDate, RoundsToWholeSecondsAlsoOverMidnight) {
    const LocaleScope locale("sr_Latn_RS");
    EXPECT_EQ(text(textOfDate({32874.0 + 14.5 * kHour + 1e-7})), "1.1.1990. 14:30:00");
    EXPECT_EQ(text(textOfDate({32874.9999999})), "2.1.1990.");
}

TEST(TextOfDate, OfADayThatWasWrittenBeforeFollowsTheLocale) {
    for (const auto& [name, shown] :
         {std::pair{"en_US", "7/5/2005"}, {"de_DE", "05.07.2005"}, {"en_US", "7/5/2005"}}) {
        const LocaleScope locale(name);
        EXPECT_EQ(text(textOfDate(fromQDate(QDate(2005, 7, 5)))), shown) << name;
    }
}

TEST(TextOfDate, ReadsBack) {
    for (const char* name : {"en_US", "sr_Latn_RS", "de_DE", "hu_HU", "da_DK", "fi_FI", "en_GB", "C"}) {
        const LocaleScope locale(name);
        for (const double days : {32874.0, 38538.604166666664, 0.25, 0.0, 1.0, 38538.0 + 1.0 / 86400}) {
            const QString shown = textOfDate({days});
            const auto read = readDate(shown);
            ASSERT_TRUE(read.has_value()) << name << ' ' << text(shown);
            EXPECT_NEAR(read->days, days, 1e-6) << name << ' ' << text(shown);
        }
    }
}

TEST(LongDate, NamesTheMonth) {
    const LocaleScope locale("en_US");
    EXPECT_EQ(text(formatLongDate(QDate(2005, 7, 5))), "Tuesday, July 5, 2005");
}

TEST(LongDate, IsInLatinLettersAlsoWhereTheDesktopSaysCyrillic) {
    for (const char* name : {"sr_RS", "sr_RS@latin", "sr_Latn_RS"}) {
        const LocaleScope locale(name);
        EXPECT_EQ(text(formatLongDate(QDate(2005, 7, 5))), "utorak, 5. jul 2005.") << name;
    }
}
