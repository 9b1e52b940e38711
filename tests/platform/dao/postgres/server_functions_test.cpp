#include "platform/dao/postgres/server_functions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "platform/dao/calendar.h"
#include "platform/dao/error.h"
#include "platform/dao/postgres/connection.h"
#include "platform/dao/value.h"
#include "platform/text/order.h"
#include "support/server_cluster.h"

namespace {

using dao::postgres::Connection;
using dao::postgres::Parameters;
using dao::postgres::Patience;
using dao::postgres::Result;

class ServerFunctions : public ::testing::Test {
 protected:
    void SetUp() override { connection.execute(dao::postgres::serverFunctions(), patience); }

    std::string word(const std::string& text) { return std::string(connection.run(text).text(0, 0)); }

    // What the server finds of each two texts: below, at or above 0.
    std::vector<std::int64_t> compared(const std::vector<std::string>& left,
                                       const std::vector<std::string>& right) {
        const Result result = connection.run(
            "SELECT CASE WHEN a = b COLLATE \"C\" THEN 0 WHEN a < b COLLATE \"C\" THEN -1 ELSE 1 END FROM "
            "(SELECT dao.key(l) AS a, dao.key(r) AS b, n FROM unnest($1::text[], $2::text[]) "
            "WITH ORDINALITY AS pairs(l, r, n)) AS keys ORDER BY n",
            Parameters().texts(left).texts(right), patience);
        std::vector<std::int64_t> signs;
        for (int row = 0; row < result.rows(); ++row) {
            signs.push_back(result.integer(row, 0));
        }
        return signs;
    }

    void expectTheSameOrder(const std::vector<std::string>& left, const std::vector<std::string>& right) {
        const std::vector<std::int64_t> signs = compared(left, right);
        ASSERT_EQ(signs.size(), left.size());
        int told = 0;
        for (std::size_t i = 0; i < left.size() && told < 10; ++i) {
            const int ours = alphabet::compare(left[i], right[i]);
            if ((ours > 0) - (ours < 0) != signs[i]) {
                ++told;
                ADD_FAILURE() << '"' << left[i] << "\" and \"" << right[i] << "\": " << ours
                              << ", on the server " << signs[i];
            }
        }
    }

    const Patience patience = Patience::whileTrue([] { return true; });
    tests::ServerDatabase database;
    Connection connection{database.place()};
};

const std::vector<std::string> kLetters = {
    "a",      "A",      "b",          "c",          "C",          "č", "Č", "ć",      "Ć",  "d", "đ", "Đ",
    "dž",     "Ǆ",      "ǆ",          "s",          "š",          "Š", "z", "Z",      "ž",  "Ž", "{", "~",
    "\x01",   "\x02",   "é",          "É",          "è",          "e", "ł", "Ł",      "l",  "ß", "ẞ", "ÿ",
    "Ÿ",      "ű",      "Ű",          "п",          "П",          "ђ", "Ђ", "ж",      "Ж",  "σ", "ς", "Σ",
    "ά",      "Ά",      "İ",          "ı",          " ",          "-", "'", "\"",     "\\", ".", "0", "9",
    "_",      "\t",     "\n",         "€",          "漢",         "😀", "🎉", "\u0301", "Ấ",  "ấ", "ﬁ", "K",
    "\uE000", "\uFFFD", "\U0010FFFD", "\U0010FFFE", "\U0010FFFF", ""};

std::string randomText(std::mt19937& random) {
    std::string text;
    for (unsigned length = random() % 6; length > 0; --length) {
        text += kLetters[random() % kLetters.size()];
    }
    return text;
}

TEST_F(ServerFunctions, TextsCompareAsInTheAlphabet) {
    std::mt19937 random(20051101);
    std::vector<std::string> left;
    std::vector<std::string> right;
    for (int i = 0; i < 20000; ++i) {
        left.push_back(randomText(random));
        right.push_back(randomText(random));
        // Mostly the same, so that what stands behind decides.
        if (i % 2 == 0) {
            const std::string same = randomText(random);
            left.back().insert(0, same);
            right.back().insert(0, same);
        }
    }
    expectTheSameOrder(left, right);
}

std::string utf8(unsigned code) {
    std::string text;
    const auto byte = [&text](unsigned value) { text.push_back(static_cast<char>(value)); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0 | code >> 6);
        byte(0x80 | (code & 0x3F));
    } else {
        byte(0xE0 | code >> 12);
        byte(0x80 | (code >> 6 & 0x3F));
        byte(0x80 | (code & 0x3F));
    }
    return text;
}

TEST_F(ServerFunctions, EveryLetterHasItsPlace) {
    std::vector<std::string> letters;
    std::vector<std::string> others;
    for (unsigned code = 1; code < 0x10000; ++code) {
        if (code >= 0xD800 && code < 0xE000) {
            continue;
        }
        for (const char* other : {"e", "m", "z", "č", "ж"}) {
            letters.push_back(utf8(code));
            others.push_back(other);
        }
        letters.push_back(utf8(code));
        others.push_back(utf8(code + (code == 0xD7FF ? 0x801 : code == 0xFFFF ? 0 : 1)));
    }
    expectTheSameOrder(letters, others);
}

TEST_F(ServerFunctions, ATextOfPlainLettersNeedsNoTable) {
    EXPECT_EQ(word("SELECT dao.key('Peric 12')"), "peric 12");
    EXPECT_TRUE(connection.run("SELECT dao.key(NULL)").isNull(0, 0));
}

TEST_F(ServerFunctions, NumbersAreWrittenAsTheEngineWritesThem) {
    for (const double number :
         {0.0, -0.0, 1.0, -1.5, 0.1, 1e15, 999999999999999.0, 1e-5, 0.00001234, 0.0001, 9.99e-6, 123456.789,
          -0.00002, 1.0 / 3, 1e300, -4.9e-324, 1234567890123456.7, 1e14, 0.00009999999999999999}) {
        const Result result = connection.run("SELECT dao.digits($1::float8)", Parameters().real8(number));
        EXPECT_EQ(result.text(0, 0), dao::Value(number).asText());
    }
    EXPECT_EQ(word("SELECT dao.digits(NULL::float8)"), "");
    EXPECT_EQ(word("SELECT dao.digits(NULL::float4)"), "");
    EXPECT_EQ(word("SELECT dao.digits(0.1::float4)"), "0.1");
    EXPECT_EQ(word("SELECT dao.digits(16777216::float4)"), "16777220");
    connection.execute("SET extra_float_digits = 0");
    EXPECT_EQ(word("SELECT dao.digits(0.1::float8 + 0.2::float8)"), "0.30000000000000004");
}

TEST_F(ServerFunctions, HalvesAreRoundedAwayFromZero) {
    const std::vector<std::pair<double, std::int64_t>> numbers = {{0.5, 1},
                                                                  {-0.5, -1},
                                                                  {1.5, 2},
                                                                  {2.5, 3},
                                                                  {-2.5, -3},
                                                                  {2.4, 2},
                                                                  {-2.4, -2},
                                                                  {0, 0},
                                                                  {1e19, INT64_MAX},
                                                                  {-1e19, INT64_MIN},
                                                                  {1e15, 1'000'000'000'000'000}};
    for (const auto& [number, rounded] : numbers) {
        EXPECT_EQ(connection.run("SELECT dao.round($1::float8)", Parameters().real8(number)).integer(0, 0),
                  rounded)
            << number;
    }
}

// The engine's calendar, by its own words: how many borders lie before a moment.
std::int64_t floored(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

std::int64_t borders(const std::string& unit, double date, int firstDay) {
    const std::int64_t seconds = std::llround(dao::linearDays(date) * 86400);
    const std::int64_t day = floored(seconds, 86400);
    const dao::CivilDay civil = dao::civilFromDays(day);
    if (unit == "yyyy") {
        return civil.year;
    }
    if (unit == "q") {
        return civil.year * 4 + (civil.month - 1) / 3;
    }
    if (unit == "m") {
        return civil.year * 12 + civil.month;
    }
    if (unit == "ww") {
        return floored(day + 6 - (firstDay - 1), 7);
    }
    if (unit == "d" || unit == "y") {
        return day;
    }
    return floored(seconds, unit == "h" ? 3600 : unit == "n" ? 60 : 1);
}

TEST_F(ServerFunctions, DatesDifferAsInTheCalendar) {
    std::mt19937 random(18991230);
    std::uniform_real_distribution<double> near(-3000, 60000);
    std::uniform_real_distribution<double> far(-650000, 2900000);
    for (const std::string unit : {"yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s"}) {
        for (int i = 0; i < 60; ++i) {
            double from = i % 2 == 0 ? near(random) : far(random);
            double to = i % 3 == 0 ? near(random) : far(random);
            if (i % 5 == 0) {
                from = std::floor(from);
                to = from + i % 4;
            }
            const int firstDay = 1 + i % 7;
            const Result result =
                connection.run("SELECT dao.datediff($1::text, $2::float8, $3::float8, $4::float8)",
                               Parameters().text(unit).real8(from).real8(to).real8(firstDay));
            const std::int64_t expected = unit == "w"
                                              ? (borders("d", to, 1) - borders("d", from, 1)) / 7
                                              : borders(unit, to, firstDay) - borders(unit, from, firstDay);
            EXPECT_EQ(result.integer(0, 0), expected) << unit << " " << from << " " << to << " " << firstDay;
        }
    }
    EXPECT_EQ(connection.run("SELECT dao.datediff('YYYY', 1, 400)").integer(0, 0), 2);
    EXPECT_TRUE(connection.run("SELECT dao.datediff('d', NULL, 1)").isNull(0, 0));
    EXPECT_TRUE(connection.run("SELECT dao.datediff(NULL, 1, 1)").isNull(0, 0));
    EXPECT_THROW(connection.run("SELECT dao.datediff('fortnight', 1, 1)"), dao::Error);
    EXPECT_THROW(connection.run("SELECT dao.datediff('d', 1, 1e9)"), dao::Error);
}

TEST_F(ServerFunctions, DomainsRefuseWhatTheirTypeDoesNotHold) {
    connection.execute(dao::postgres::createTextDomain(3));
    EXPECT_EQ(word("SELECT 'šđž'::" + dao::postgres::textDomain(3)), "šđž");
    EXPECT_THROW(connection.run("SELECT 'abcd'::dao.text_3"), dao::Error);
    EXPECT_THROW(connection.run("SELECT 1::dao.yesno"), dao::Error);
}

}  // namespace
