#include "platform/text/order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

Names sorted(Names names) {
    std::reverse(names.begin(), names.end());
    std::stable_sort(names.begin(), names.end(),
                     [](const std::string& a, const std::string& b) { return alphabet::compare(a, b) < 0; });
    return names;
}

// Stands in the order given, one before the other, by comparing as well as by the bytes of the keys.
void expectOrder(const Names& names) {
    EXPECT_EQ(sorted(names), names);
    for (size_t i = 1; i < names.size(); ++i) {
        EXPECT_LT(alphabet::compare(names[i - 1], names[i]), 0) << names[i - 1] << " " << names[i];
        EXPECT_GT(alphabet::compare(names[i], names[i - 1]), 0) << names[i - 1] << " " << names[i];
        EXPECT_LT(alphabet::orderKey(names[i - 1]), alphabet::orderKey(names[i]))
            << names[i - 1] << " " << names[i];
    }
}

void expectSame(const std::string& a, const std::string& b) {
    EXPECT_EQ(alphabet::compare(a, b), 0) << a << " " << b;
    EXPECT_TRUE(alphabet::same(a, b)) << a << " " << b;
    EXPECT_EQ(alphabet::orderKey(a), alphabet::orderKey(b)) << a << " " << b;
}

TEST(OrderTest, OurLettersStandBehindTheirPlainOnes) {
    expectOrder({"a", "b", "c", "cz", "č", "ča", "ć", "ćz", "d", "dz", "đ", "e", "s", "sz", "š", "t", "z",
                 "zz", "ž"});
}

TEST(OrderTest, OurLettersDecideWithinAWordToo) {
    expectOrder({"Bacić", "Bačić", "Baćić", "Badić", "Bađić"});
}

TEST(OrderTest, NamesWithForeignMarksStandBesideTheirPlainLetter) {
    expectOrder({"Lazar", "Łukasz", "Mika", "Ødegaard", "Pera", "Zoran", "Žika"});
    expectOrder({"Eva", "Éva", "Ezra"});
    expectOrder({"Muller", "Müller", "Mullerova"});
}

TEST(OrderTest, MarksDecideWhereAllElseIsTheSame) {
    expectOrder({"resume", "resumé", "résume", "résumé", "resumes"});
    expectOrder({"Ljubav", "ǉubav", "Mir"});
}

TEST(OrderTest, CaseMakesNoDifference) {
    expectSame("MONITOR", "monitor");
    expectSame("ČĆĐŠŽ", "čćđšž");
    expectSame("ÉØŁŸ", "éøłÿ");
    expectSame("ЖЂЉ", "жђљ");
    expectSame("ΣΆΏς", "σάώσ");
    expectSame("ẞ", "ß");
    expectSame("ǄǅǇǈǊǋ", "ǆǆǉǉǌǌ");
}

TEST(OrderTest, SignsWithoutACaseStayApart) {
    EXPECT_NE(alphabet::compare("×", "÷"), 0);
    EXPECT_NE(alphabet::compare("@", "`"), 0);
    EXPECT_NE(alphabet::compare("[", "{"), 0);
}

TEST(OrderTest, AMarkIsADifference) {
    EXPECT_FALSE(alphabet::same("Éva", "Eva"));
    EXPECT_FALSE(alphabet::same("Saša", "Sasa"));
    EXPECT_FALSE(alphabet::same("Éva", "Êva"));
}

TEST(OrderTest, ABeginningStandsBeforeTheWhole) {
    expectOrder({"", " ", "Ana", "Ana ", "Ana B", "Anab"});
}

TEST(OrderTest, DigitsAndSignsStandByTheirCodes) {
    expectOrder({"!", "10", "9", "_x", "a", "~"});
}

TEST(OrderTest, OtherAlphabetsStandBehindOurs) {
    expectOrder({"zz", "Žž", "Αθήνα", "Жика", "日本", "\xF0\x9F\x98\x80"});
}

TEST(OrderTest, BytesThatAreNoTextStandBehindAllAndApart) {
    expectOrder(
        {"a", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF", "\x80", "\xC4", "\xC5(", "\xF4\x90\x80\x80", "\xFF"});
    EXPECT_NE(alphabet::compare("a\xC4", "a"), 0);
    EXPECT_NE(alphabet::compare("\xC4z", "\xC4\x8D"), 0);
}

// What the two ways of comparing have to agree on, whatever the texts.
TEST(OrderTest, KeysOrderAsTextsDo) {
    const Names letters = {"a", "A", "b", "c", "C", "č", "Č", "ć", "d",  "đ",    "Đ",
                           "e", "é", "É", "ê", "l", "ł", "o", "ø", "s",  "š",    "ß",
                           "z", "ž", "Ж", "ж", "1", " ", "-", "~", "日", "\x80", "\xFE"};
    std::mt19937 random(7);
    const auto word = [&] {
        std::string made;
        for (auto left = random() % 5; left > 0; --left) {
            made += letters[random() % letters.size()];
        }
        return made;
    };
    for (int i = 0; i < 20000; ++i) {
        const std::string a = word();
        const std::string b = word();
        const int keys = alphabet::orderKey(a).compare(alphabet::orderKey(b));
        const int texts = alphabet::compare(a, b);
        ASSERT_EQ(keys < 0, texts < 0) << a << " " << b;
        ASSERT_EQ(keys > 0, texts > 0) << a << " " << b;
    }
}

TEST(OrderTest, ComparingIsAnOrder) {
    const Names words = {"Eva", "Éva", "Ezra", "čz", "cz", "cž", "c", "\xC4", "Ж", "eve", "évé", "eVé"};
    for (const std::string& a : words) {
        for (const std::string& b : words) {
            for (const std::string& c : words) {
                if (alphabet::compare(a, b) <= 0 && alphabet::compare(b, c) <= 0) {
                    EXPECT_LE(alphabet::compare(a, c), 0) << a << " " << b << " " << c;
                }
            }
        }
    }
}

TEST(OrderTest, AFrontStandsWhereTheTextsThatBeginWithItDo) {
    EXPECT_EQ(alphabet::compareFront("anything", ""), 0);
    EXPECT_EQ(alphabet::compareFront("", ""), 0);
    EXPECT_LT(alphabet::compareFront("", "a"), 0);
    EXPECT_LT(alphabet::compareFront("Bab", "babi"), 0);
    EXPECT_EQ(alphabet::compareFront("BABIĆ", "babić"), 0);
    EXPECT_EQ(alphabet::compareFront("Babićev", "BABI"), 0);
    EXPECT_GT(alphabet::compareFront("Babić", "babic"), 0);
    EXPECT_LT(alphabet::compareFront("Babčev", "Babić"), 0);
    EXPECT_GT(alphabet::compareFront("c\xFF", "cž"), 0);
}

TEST(OrderTest, MarksAreNothingToAFront) {
    EXPECT_EQ(alphabet::compareFront("Łukasz", "lu"), 0);
    EXPECT_EQ(alphabet::compareFront("lukasz", "ŁU"), 0);
}

// What stands before a front stands before all that begins with it, and what stands behind, behind.
TEST(OrderTest, AFrontCutsAnOrderIntoThree) {
    const Names letters{"a", "C", "č", "ć", "l", "ł", "z", "ž", "я", "1", "\xC3"};
    std::minstd_rand random(3);
    const auto word = [&](unsigned most) {
        std::string text;
        for (auto more = random() % (most + 1); more > 0; --more) {
            text += letters[random() % letters.size()];
        }
        return text;
    };
    for (int turn = 0; turn < 20'000; ++turn) {
        const std::string front = word(3);
        const std::string text = word(4);
        const std::string longer = front + word(2);
        const int side = alphabet::compareFront(text, front);
        if (side != 0) {
            ASSERT_EQ(side < 0, alphabet::compare(text, longer) < 0) << text << " " << front << " " << longer;
        }
        ASSERT_EQ(alphabet::compareFront(longer, front), 0) << longer << " " << front;
    }
}

}  // namespace
