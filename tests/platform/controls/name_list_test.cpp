#include "platform/controls/name_list.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <random>

namespace {

using platform::NameList;

NameList listOf(std::initializer_list<NameList::Name> names) {
    NameList list;
    for (const NameList::Name& name : names) {
        list.add(name);
    }
    list.sort();
    return list;
}

TEST(NameList, SortsOnceAndKeepsTheNumbers) {
    const NameList list = listOf({{"Zorić", 7}, {"antić", 3}, {"", 9}});
    ASSERT_EQ(list.size(), 3);
    EXPECT_EQ(list.at(0).number, 9);
    EXPECT_EQ(list.at(0).text, "");
    EXPECT_EQ(list.text(1), QString("antić"));
    EXPECT_EQ(list.at(2).number, 7);
}

TEST(NameList, ManyNamesThatCameFromTheLastToTheFirstStandTheOtherWayRound) {
    NameList list;
    for (int number = 99; number >= 10; --number) {
        list.add({std::to_string(number), number});
    }
    list.sort();
    ASSERT_EQ(list.size(), 90);
    for (int place = 0; place < 90; ++place) {
        EXPECT_EQ(list.at(place).text, std::to_string(place + 10));
        EXPECT_EQ(list.at(place).number, place + 10);
        EXPECT_EQ(list.placeFor(list.at(place).text), place + 1);
    }
}

TEST(NameList, APlaceInTheOrderIsBehindTheNamesakes) {
    NameList list = listOf({{"Cvetić", 3}, {"Babić", 1}, {"BABIĆ", 2}});
    EXPECT_EQ(list.placeFor("babić"), 2);
    EXPECT_EQ(list.placeFor("Aa"), 0);
    EXPECT_EQ(list.placeFor("Žika"), 3);
    list.insert(2, {"babić", 8});
    EXPECT_EQ(list.at(2).number, 8);
    EXPECT_EQ(list.at(3).text, "Cvetić");
    list.remove(0);
    EXPECT_EQ(list.at(0).number, 2);
}

TEST(NameList, AReplacedNameIsSortedAsTheOneBeforeIt) {
    NameList list = listOf({{"A", 1}, {"B", 2}, {"C", 3}});
    list.replace(1, "Zoran, who is longer than the name before");
    EXPECT_EQ(list.text(1), "Zoran, who is longer than the name before");
    EXPECT_EQ(list.at(1).number, 2);
    EXPECT_EQ(list.placeFor("Bb"), 2);
    EXPECT_EQ(list.findPrefix("zoran, WHO"), 1);
    EXPECT_EQ(list.findPrefix("b"), -1);
}

// Also those that are the same only in another alphabet's eyes: the sign for kelvin is a small k.
TEST(NameList, ABeginningIsFoundWhateverItsLetters) {
    const NameList list = listOf({{"Kosta", 1}, {"Čola", 2}, {"kČ", 3}, {"\xE2\x84\xAAim", 4}, {"ko", 5}});
    EXPECT_EQ(list.at(list.findPrefix("KO")).number, 5);
    EXPECT_EQ(list.at(list.findPrefix("kos")).number, 1);
    EXPECT_EQ(list.at(list.findPrefix("čo")).number, 2);
    EXPECT_EQ(list.at(list.findPrefix("Kč")).number, 3);
    EXPECT_EQ(list.at(list.findPrefix("KI")).number, 4);
    EXPECT_EQ(list.at(list.findPrefix("\u212AOST")).number, 1);
    EXPECT_EQ(list.findPrefix("kostaa"), -1);
    EXPECT_EQ(list.findPrefix(""), 0);
    EXPECT_EQ(NameList().findPrefix(""), -1);
}

// As whoever reads from the top would find it.
int firstThatBegins(const NameList& list, const QString& text) {
    for (int place = 0; place < list.size(); ++place) {
        if (list.text(place).startsWith(text, Qt::CaseInsensitive)) {
            return place;
        }
    }
    return -1;
}

TEST(NameList, TheFirstThatBeginsSoIsFoundAmongMany) {
    const QStringList parts{"a", "A", "b", "c", "č", "Č", "ć", "d", "đ", "l", "ł", "Ł", "s",
                            "š", "ſ", "z", "ž", "ß", "K", "µ", "μ", "и", "И", "1", " ", ""};
    std::minstd_rand random(11);
    const auto word = [&](int most) {
        QString text;
        for (auto letters = random() % (most + 1); letters > 0; --letters) {
            text += parts.at(static_cast<qsizetype>(random()) % parts.size());
        }
        return text;
    };
    NameList list;
    for (int number = 0; number < 400; ++number) {
        list.add({word(4).toStdString(), number});
    }
    list.sort();
    for (int turn = 0; turn < 3000; ++turn) {
        const QString text = word(3);
        ASSERT_EQ(list.findPrefix(text), firstThatBegins(list, text)) << text.toStdString();
        if (turn % 50 == 0) {
            list.replace(static_cast<int>(random() % 400), word(4).toStdString());
        }
        if (turn % 70 == 0) {
            list.remove(static_cast<int>(random() % 400));
            const std::string name = word(4).toStdString();
            list.insert(list.placeFor(name), {name, turn});
        }
    }
}

}  // namespace
