#include "platform/controls/splitter.h"

#include <gtest/gtest.h>

#include <QTest>

namespace {

using platform::Splitter;

class SplitterTest : public ::testing::Test {
 protected:
    explicit SplitterTest(Qt::Orientation direction = Qt::Horizontal) : splitter(direction) {
        splitter.setPanes(new QWidget, new QWidget);
        splitter.setLimits(30, 70);
        splitter.resize(400 + splitter.handleWidth(), 300 + splitter.handleWidth());
    }
    void show() {
        splitter.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&splitter));
    }
    // A hand pulls the bar by that many pixels.
    void pull(int pixels) {
        QWidget* bar = splitter.handle(1);
        const QPoint from = bar->rect().center();
        QTest::mousePress(bar, Qt::LeftButton, {}, from);
        const QPoint to = from + QPoint(pixels, 0);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), QPointF(bar->mapToGlobal(to)), Qt::LeftButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(bar, &move);
        QTest::mouseRelease(bar, Qt::LeftButton, {}, to);
    }
    Splitter splitter;
};

TEST_F(SplitterTest, ThePositionIsInPercentOfTheRoom) {
    show();
    EXPECT_EQ(splitter.position(), 50);
    EXPECT_EQ(splitter.sizes(), QList<int>({200, 200}));
    splitter.setPosition(40);
    EXPECT_EQ(splitter.sizes(), QList<int>({160, 240}));
}

TEST_F(SplitterTest, ThePositionKeepsWithinItsLimits) {
    splitter.setPosition(5);
    EXPECT_EQ(splitter.position(), 30);
    splitter.setPosition(95);
    EXPECT_EQ(splitter.position(), 70);
    show();
    EXPECT_EQ(splitter.sizes(), QList<int>({280, 120}));
    splitter.setLimits(10, 60);
    EXPECT_EQ(splitter.position(), 60) << "new limits hold at once";
}

TEST_F(SplitterTest, TheShareStaysWhenTheWindowGrows) {
    splitter.setPosition(40);
    show();
    splitter.resize(800 + splitter.handleWidth(), 300);
    EXPECT_EQ(splitter.sizes(), QList<int>({320, 480}));
    EXPECT_EQ(splitter.position(), 40);
}

TEST_F(SplitterTest, APositionSetBeforeItIsShownHolds) {
    splitter.setPosition(65);
    show();
    EXPECT_EQ(splitter.position(), 65);
    EXPECT_EQ(splitter.sizes(), QList<int>({260, 140}));
}

TEST_F(SplitterTest, TheHandMovesTheBarButNotPastTheLimits) {
    show();
    pull(40);
    EXPECT_EQ(splitter.position(), 60);
    EXPECT_EQ(splitter.sizes(), QList<int>({240, 160}));
    pull(120);
    EXPECT_EQ(splitter.position(), 70);
    EXPECT_EQ(splitter.sizes(), QList<int>({280, 120}));
    pull(-390);
    EXPECT_EQ(splitter.position(), 30);
    EXPECT_EQ(splitter.sizes(), QList<int>({120, 280}));
}

class UprightSplitter : public SplitterTest {
 protected:
    UprightSplitter() : SplitterTest(Qt::Vertical) {}
};

TEST_F(UprightSplitter, OneAboveTheOtherGoesByTheHeight) {
    splitter.setPosition(60);
    show();
    EXPECT_EQ(splitter.sizes(), QList<int>({180, 120}));
}

TEST(Splitter, WithoutPanesAndRoomNothingHappens) {
    Splitter bare(Qt::Horizontal);
    bare.setPosition(20);
    EXPECT_EQ(bare.position(), 20);
    bare.resize(0, 0);
    bare.setPanes(new QWidget, new QWidget);
    EXPECT_EQ(bare.position(), 20);
}

}  // namespace
