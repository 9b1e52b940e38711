#include "platform/controls/selector.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QListView>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <algorithm>
#include <random>

#include "support/wheel.h"

namespace {

using platform::Selector;

QStringList textsOf(const Selector& selector) {
    QStringList texts;
    for (int i = 0; i < selector.entryCount(); ++i) {
        texts.append(selector.entryText(i));
    }
    return texts;
}

void fill(Selector& selector, const QStringList& texts) {
    QList<Selector::Entry> entries;
    for (const QString& text : texts) {
        entries.append({text, static_cast<qint32>(100 + entries.size())});
    }
    selector.setEntries(entries);
}

TEST(Selector, KeepsItselfInAlphabeticalOrder) {
    Selector selector;
    fill(selector, {"Zoric", "antic", "Babic", "Antonic"});
    EXPECT_EQ(textsOf(selector), QStringList({"antic", "Antonic", "Babic", "Zoric"}));
    EXPECT_EQ(selector.entryData(0), 101);
    EXPECT_EQ(selector.entryData(3), 100);
}

TEST(Selector, AccentedLettersComeRightBehindTheirPlainOnes) {
    Selector selector;
    fill(selector, {"Žika", "Zvonko", "Đorđe", "Evica", "Dušan", "Ćira", "Čeda", "Cveta", "Šaban", "Svetlana",
                    "Tanja", "čuvar"});
    EXPECT_EQ(textsOf(selector), QStringList({"Cveta", "Čeda", "čuvar", "Ćira", "Dušan", "Đorđe", "Evica",
                                              "Svetlana", "Šaban", "Tanja", "Zvonko", "Žika"}));
}

TEST(Selector, NamesFromAbroadStandBesideTheirPlainLetter) {
    Selector selector;
    fill(selector, {"Zoran", "Ødegaard", "Mika", "Łukasz", "Lazar", "Éva", "Ezra", "Eva"});
    EXPECT_EQ(textsOf(selector),
              QStringList({"Eva", "Éva", "Ezra", "Lazar", "Łukasz", "Mika", "Ødegaard", "Zoran"}));
}

// Filled at once or entry by entry, and wherever two names begin to differ.
TEST(Selector, FillingAtOnceGivesTheOrderOfAddingOneByOne) {
    QStringList names = {"",
                         "J",
                         "Jovan",
                         "Jov",
                         "Jova",
                         "Jovanovi",
                         "Jovanovic",
                         "Jovanović",
                         "Jovanovic, A",
                         "Jovanovic, Ž",
                         "jovanovic, B",
                         "Jovb",
                         "Jovanz",
                         "Jovanoviz",
                         "Đ",
                         "Zz",
                         "[x]"};
    for (int turn = 0; turn < 20; ++turn) {
        std::rotate(names.begin(), names.begin() + 5, names.end());
        std::swap(names[turn % 7], names[7 + turn % 9]);
        Selector atOnce;
        fill(atOnce, names);
        Selector oneByOne;
        for (const QString& name : names) {
            oneByOne.addEntry(name, 0);
        }
        ASSERT_EQ(textsOf(atOnce), textsOf(oneByOne));
    }
}

TEST(Selector, EqualTextsKeepTheOrderInWhichTheyCame) {
    Selector selector;
    selector.setEntries({{"Peric, Pera", 7}, {"PERIC, PERA", 3}, {"Peric, Pera", 5}});
    EXPECT_EQ(selector.entryData(0), 7);
    EXPECT_EQ(selector.entryData(1), 3);
    EXPECT_EQ(selector.entryData(2), 5);
    EXPECT_EQ(selector.addEntry("peric, pera", 9), 3);
    QList<Selector::Entry> namesakes;
    for (int i = 0; i < 500; ++i) {
        namesakes.append({i % 2 == 0 ? "Peric, Pera" : "peric, pera", i});
    }
    selector.setEntries(namesakes);
    for (int i = 0; i < 500; ++i) {
        ASSERT_EQ(selector.entryData(i), i);
    }
}

TEST(Selector, FillingSelectsNothingAndSaysNothing) {
    Selector selector;
    QSignalSpy changed(&selector, &QComboBox::currentIndexChanged);
    fill(selector, {"B", "A"});
    EXPECT_EQ(selector.currentIndex(), -1);
    selector.setCurrentIndex(1);
    EXPECT_EQ(changed.count(), 1);
    fill(selector, {"C", "D", "E"});
    EXPECT_EQ(selector.currentIndex(), -1);
    EXPECT_EQ(selector.currentText(), "");
    selector.clearEntries();
    EXPECT_EQ(selector.entryCount(), 0);
    EXPECT_EQ(changed.count(), 1);
}

TEST(Selector, AddingKeepsTheSelectionOnItsEntry) {
    Selector selector;
    QSignalSpy changed(&selector, &QComboBox::currentIndexChanged);
    EXPECT_EQ(selector.addEntry("M", 1), 0);
    EXPECT_EQ(selector.currentIndex(), -1) << "the first entry is not selected by itself";
    selector.setCurrentIndex(0);
    changed.clear();
    EXPECT_EQ(selector.addEntry("A", 2), 0);
    EXPECT_EQ(selector.addEntry("Z", 3), 2);
    EXPECT_EQ(selector.currentIndex(), 1);
    EXPECT_EQ(selector.currentText(), "M");
    EXPECT_EQ(changed.count(), 0);
}

TEST(Selector, RemovingTheSelectedEntryLeavesNothingSelected) {
    Selector selector;
    fill(selector, {"A", "B", "C"});
    selector.setCurrentIndex(1);
    QSignalSpy changed(&selector, &QComboBox::currentIndexChanged);
    selector.removeEntry(1);
    EXPECT_EQ(selector.currentIndex(), -1);
    EXPECT_EQ(textsOf(selector), QStringList({"A", "C"}));
    selector.removeEntry(5);
    selector.removeEntry(-1);
    EXPECT_EQ(selector.entryCount(), 2);
    EXPECT_EQ(changed.count(), 0);
    selector.setCurrentIndex(1);
    EXPECT_EQ(changed.count(), 1) << "and selecting the same place again is a choice";
}

TEST(Selector, RemovingAnotherEntryKeepsTheSelectionOnItsEntry) {
    Selector selector;
    fill(selector, {"A", "B", "C"});
    selector.setCurrentIndex(2);
    selector.removeEntry(0);
    EXPECT_EQ(selector.currentText(), "C");
    EXPECT_EQ(selector.currentIndex(), 1);
    selector.setCurrentIndex(-1);
    selector.removeEntry(0);
    EXPECT_EQ(selector.currentIndex(), -1);
}

TEST(Selector, ARenamedEntryKeepsItsPlaceAndItsNumber) {
    Selector selector;
    fill(selector, {"A", "B", "C"});
    selector.setCurrentIndex(1);
    QSignalSpy changed(&selector, &QComboBox::currentIndexChanged);
    selector.replaceText(1, "Zzz");
    EXPECT_EQ(textsOf(selector), QStringList({"A", "Zzz", "C"}));
    EXPECT_EQ(selector.entryData(1), 101);
    EXPECT_EQ(selector.currentText(), "Zzz");
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(selector.addEntry("Bb", 9), 2) << "the others stay where the alphabet has them";
    EXPECT_EQ(selector.findPrefix("zz"), 1);
}

TEST(Selector, OutOfRangeReadsAsNothing) {
    Selector selector;
    fill(selector, {"A"});
    EXPECT_EQ(selector.entryText(1), QString());
    EXPECT_EQ(selector.entryText(-1), QString());
    EXPECT_EQ(selector.entryData(1), -1);
    EXPECT_EQ(selector.entryData(-1), -1);
    selector.replaceText(4, "X");
    EXPECT_EQ(selector.entryText(0), "A");
}

TEST(Selector, FindsTheFirstEntryThatBeginsWithTheText) {
    Selector selector;
    fill(selector, {"Antic, Mara", "Antonic, Pera", "Čolić, Zdravko", "antonic, mile"});
    EXPECT_EQ(selector.findPrefix("ANTO"), 1);
    EXPECT_EQ(selector.findPrefix("antonic, p"), 2);
    EXPECT_EQ(selector.findPrefix("čOL"), 3);
    EXPECT_EQ(selector.findPrefix("col"), -1) << "č is a letter of its own";
    EXPECT_EQ(selector.findPrefix("ntic"), -1);
    EXPECT_EQ(selector.findPrefix(""), 0);
    selector.clearEntries();
    EXPECT_EQ(selector.findPrefix(""), -1);
}

class ShownSelector : public ::testing::Test {
 protected:
    void SetUp() override {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(&other);
        layout->addWidget(&selector);
        fill(selector, {"Antic", "Babic", "Cvetic"});
        selector.setCurrentIndex(0);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    QWidget window;
    QWidget other;
    Selector selector;
};

TEST_F(ShownSelector, TheWheelChangesNothingUnlessItHasTheFocus) {
    other.setFocusPolicy(Qt::StrongFocus);
    other.setFocus();
    rollOver(&selector);
    EXPECT_EQ(selector.currentText(), "Antic");
    EXPECT_TRUE(other.hasFocus());
    QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    ASSERT_TRUE(selector.hasFocus());
    rollOver(&selector);
    EXPECT_EQ(selector.currentText(), "Babic");
}

TEST_F(ShownSelector, AChoiceFromTheListIsSignalledOnce) {
    QSignalSpy changed(&selector, &QComboBox::currentIndexChanged);
    selector.showPopup();
    QTest::keyClick(selector.view(), Qt::Key_Down);
    QTest::keyClick(selector.view(), Qt::Key_Down);
    QTest::keyClick(selector.view(), Qt::Key_Return);
    EXPECT_EQ(selector.currentText(), "Cvetic");
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).toInt(), 2);
}

TEST_F(ShownSelector, ArrowsAndLettersChooseWithoutOpeningTheList) {
    selector.setFocus();
    QTest::keyClick(&selector, Qt::Key_Down);
    EXPECT_EQ(selector.currentText(), "Babic");
    QTest::keyClick(&selector, Qt::Key_C);
    EXPECT_EQ(selector.currentText(), "Cvetic");
}

TEST_F(ShownSelector, HoldsAHundredThousandEntries) {
    constexpr int kEntries = 100000;
    std::mt19937 random(7);
    QList<Selector::Entry> entries;
    for (int i = 0; i < kEntries; ++i) {
        entries.append({QString("Client %1, %2").arg(random() % kEntries).arg(i), i});
    }
    selector.setEntries(entries);
    ASSERT_EQ(selector.entryCount(), kEntries);
    for (int i = 1; i < kEntries; ++i) {
        ASSERT_LE(selector.entryText(i - 1), selector.entryText(i));
    }
    const int last = selector.findPrefix(selector.entryText(kEntries - 1));
    EXPECT_GT(last, kEntries - 5);
    selector.setCurrentIndex(last);
    selector.showPopup();
    EXPECT_LE(selector.view()->height(), window.screen()->availableGeometry().height() / 2)
        << "a few lines that scroll, not a menu of the whole shop";
    EXPECT_TRUE(selector.view()->viewport()->rect().intersects(
        selector.view()->visualRect(selector.model()->index(last, 0))));
    selector.hidePopup();
    EXPECT_LT(selector.sizeHint().width(), 600);
}

}  // namespace
