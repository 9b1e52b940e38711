#include "shell/tip_list.h"

#include "support/fixture.h"

namespace {

class TipListTest : public DeliveredFixture {
 protected:
    bool load(const QByteArray& bytes) {
        QFile file(path("tips.txt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        return tips.load(file.fileName(), errorText);
    }
    TipList tips;
    QString errorText;
};

TEST_F(TipListTest, BeforeAFileIsReadThereIsNone) {
    EXPECT_EQ(tips.count(), 0);
    EXPECT_EQ(tips.current, 0);
    EXPECT_EQ(tips.text(), "");
}

TEST_F(TipListTest, TheFirstTipComesFirstAndTheLastOneLeadsToIt) {
    ASSERT_TRUE(load("one\n\nthree\n"));
    EXPECT_EQ(tips.count(), 3);
    EXPECT_EQ(tips.text(), "one");
    tips.next();
    EXPECT_EQ(tips.current, 2);
    EXPECT_EQ(tips.text(), "");
    tips.next();
    EXPECT_EQ(tips.text(), "three");
    tips.next();
    EXPECT_EQ(tips.current, 1);
    tips.previous();
    EXPECT_EQ(tips.text(), "three");
    tips.previous();
    EXPECT_EQ(tips.current, 2);
}

TEST_F(TipListTest, ByChanceEveryStepDrawsOne) {
    ShowTipsAtRandom = true;
    QList<double> chances = {0.0, 0.9999999, 0.5};
    tips.chance = [&] { return chances.takeFirst(); };
    ASSERT_TRUE(load("one\ntwo\nthree\nfour\n"));
    EXPECT_EQ(tips.current, 1);
    tips.next();
    EXPECT_EQ(tips.current, 4);
    tips.previous();
    EXPECT_EQ(tips.current, 3);
}

TEST_F(TipListTest, AFileThatIsNotThereLeavesNoTipsAndNoReason) {
    ASSERT_TRUE(load("one\n"));
    errorText = "before";
    EXPECT_FALSE(tips.load(path("nowhere.txt"), errorText));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(tips.count(), 0);
    EXPECT_EQ(tips.current, 0);
    EXPECT_FALSE(tips.load({}, errorText));
}

TEST_F(TipListTest, AFileThatCannotBeReadSaysWhy) {
    if (!QFile::exists("/proc/self/mem")) {
        GTEST_SKIP() << "no file here that opens and cannot be read";
    }
    ASSERT_TRUE(load("one\n"));
    EXPECT_FALSE(tips.load("/proc/self/mem", errorText));
    EXPECT_TRUE(errorText.startsWith("[57] Device I/O error in line: ")) << errorText.toStdString();
    EXPECT_EQ(tips.count(), 0);
}

TEST_F(TipListTest, AnEmptyFileIsReadAndHoldsNone) {
    EXPECT_TRUE(load(""));
    EXPECT_EQ(tips.count(), 0);
    EXPECT_EQ(tips.text(), "");
}

}  // namespace
