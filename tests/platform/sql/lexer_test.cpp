#include "platform/sql/lexer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using sql::Lexer;
using sql::SyntaxError;
using sql::Token;
using Kind = sql::Token::Kind;

std::vector<Token> tokens(std::string_view text) {
    Lexer lexer(text);
    std::vector<Token> result;
    do {
        result.push_back(lexer.next());
    } while (result.back().kind != Kind::End);
    result.pop_back();
    return result;
}

double dateOf(std::string_view text) {
    const std::vector<Token> all = tokens(text);
    EXPECT_EQ(all.size(), 1U);
    EXPECT_EQ(all.at(0).kind, Kind::Date);
    return all.at(0).number;
}

std::size_t failsAt(std::string_view text) {
    try {
        tokens(text);
    } catch (const SyntaxError& error) {
        return error.position();
    }
    ADD_FAILURE() << "no error in " << text;
    return 0;
}

TEST(Lexer, DatesCountFromTheLastDayButOneOf1899) {
    EXPECT_EQ(dateOf("#12/30/1899#"), 0);
    EXPECT_EQ(dateOf("#12/31/1899#"), 1);  // the date left empty
    EXPECT_EQ(dateOf("#1/1/1900#"), 2);
    EXPECT_EQ(dateOf("#2/28/1900#"), 60);
    EXPECT_EQ(dateOf("#3/1/1900#"), 61);  // 1900 had no 29 February
    EXPECT_EQ(dateOf("#2/29/2000#"), 36585);
    EXPECT_EQ(dateOf("#12/29/1899#"), -1);
    EXPECT_EQ(dateOf("#1/1/100#"), -657434);
    EXPECT_EQ(dateOf("#12/31/9999#"), 2958465);
}

TEST(Lexer, TheMonthStandsFirst) {
    EXPECT_EQ(dateOf("#2/1/1900#") - dateOf("#1/2/1900#"), 30);
}

TEST(Lexer, ADateMayHaveATime) {
    EXPECT_EQ(dateOf("#1/1/1900 12:00#"), 2.5);
    EXPECT_EQ(dateOf("# 1/1/1900  06:00:00 #"), 2.25);
    EXPECT_DOUBLE_EQ(dateOf("#1/1/1900 23:59:59#"), 2 + 86399.0 / 86400);
    EXPECT_EQ(dateOf("#12/29/1899 06:00:00#"), -1.25);
}

TEST(Lexer, WhatIsNoDateIsRefusedWhereItBegins) {
    for (const char* text :
         {"x=#1.1.1900#", "x=#31/12/1899#", "x=#2/29/1900#", "x=#2/29/2001#", "x=#0/1/1900#", "x=#1/0/1900#",
          "x=#1/1/19000#", "x=#1/1/00#", "x=##", "x=#1/1/1900 24:00#", "x=#1/1/1900 12:60#",
          "x=#1/1/1900 12:00:60#", "x=#1/1/1900 noon#", "x=#1/1/1900"}) {
        EXPECT_EQ(failsAt(text), 2U) << text;
    }
}

TEST(Lexer, TextStandsInEitherQuotes) {
    EXPECT_EQ(tokens("'kom'")[0].value, "kom");
    EXPECT_EQ(tokens("\"kom\"")[0].value, "kom");
    EXPECT_EQ(tokens("''")[0].value, "");
    EXPECT_EQ(tokens("'O''Neil'")[0].value, "O'Neil");
    EXPECT_EQ(tokens("\"19\"\" monitor\"")[0].value, "19\" monitor");
    EXPECT_EQ(tokens("\"O'Neil\"")[0].value, "O'Neil");
    EXPECT_EQ(tokens("'19\"'")[0].value, "19\"");
    EXPECT_EQ(tokens("'line\nbreak'")[0].value, "line\nbreak");
    EXPECT_EQ(tokens("'\xC4\x8D\xC4\x87\xC5\xBE'")[0].value, "\xC4\x8D\xC4\x87\xC5\xBE");
}

TEST(Lexer, OpenOrUnstorableTextIsRefused) {
    EXPECT_EQ(failsAt("x='kom"), 2U);
    EXPECT_EQ(failsAt("x=\"kom'"), 2U);
    EXPECT_EQ(failsAt("x='kom''"), 2U);
    EXPECT_EQ(failsAt(std::string_view("x='a\0b'", 7)), 2U);
}

TEST(Lexer, NumbersHaveAPointAndAnExponent) {
    EXPECT_EQ(tokens("17")[0].kind, Kind::Integer);
    EXPECT_EQ(tokens("17")[0].integer, 17);
    EXPECT_EQ(tokens("9223372036854775807")[0].kind, Kind::Integer);
    EXPECT_EQ(tokens("9223372036854775808")[0].kind, Kind::Number);
    EXPECT_EQ(tokens("80.5")[0].number, 80.5);
    EXPECT_EQ(tokens(".5")[0].number, 0.5);
    EXPECT_EQ(tokens("5.")[0].number, 5);
    EXPECT_EQ(tokens("1e3")[0].number, 1000);
    EXPECT_EQ(tokens("1.5E-3")[0].number, 0.0015);
    EXPECT_EQ(tokens("17,5").size(), 3U);  // a decimal comma is two numbers and a comma
}

TEST(Lexer, WhatIsNoNumberIsRefused) {
    for (const char* text : {"x=1e", "x=1e+", "x=5abc", "x=1.2.3", "x=1e999", "x=1_0"}) {
        EXPECT_EQ(failsAt(text), 2U) << text;
    }
}

TEST(Lexer, BracketsHoldAnyName) {
    EXPECT_EQ(tokens("[Order By]")[0].text, "Order By");
    EXPECT_EQ(tokens("[ Price ]")[0].text, "Price");
    EXPECT_EQ(failsAt("x=[Price"), 2U);
    EXPECT_EQ(failsAt("x=[]"), 2U);
    EXPECT_EQ(failsAt("x=[[Price]"), 2U);
}

TEST(Lexer, EveryTokenKnowsItsPlace) {
    const std::vector<Token> all = tokens("a <> [b c]");
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[1].text, "<>");
    EXPECT_EQ(all[1].position, 2U);
    EXPECT_EQ(all[2].position, 5U);
    EXPECT_EQ(all[2].end, 10U);
}

TEST(Lexer, UnknownCharactersAreRefused) {
    for (const char* text : {"x=@y", "x={y", "x=y~", "x=y?", "x=`y`", "x=y|z", "x=y%z", "x=y:z"}) {
        EXPECT_GE(failsAt(text), 2U) << text;
    }
    EXPECT_EQ(failsAt(std::string_view("x=\0", 3)), 2U);
}

TEST(Lexer, AFragmentIsShortAndWholeInItsLetters) {
    EXPECT_EQ(sql::fragment("abc", 1), "bc");
    EXPECT_EQ(sql::fragment("abc", 7), "");
    const std::string letters = std::string(39, 'a') + "\xC4\x8D\xC4\x8D";
    EXPECT_EQ(sql::fragment(letters, 0), std::string(39, 'a') + "...");
}

}  // namespace
