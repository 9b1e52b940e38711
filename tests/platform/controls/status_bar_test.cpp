#include "platform/controls/status_bar.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDateTime>
#include <QLabel>
#include <QLocale>
#include <QMainWindow>
#include <QSignalSpy>
#include <QStatusTipEvent>
#include <QTest>
#include <QTimer>

#include "platform/system/dates.h"

namespace {

using platform::StatusBar;

class StatusBarTest : public ::testing::Test {
 protected:
    void SetUp() override {
        window.setStatusBar(bar);
        window.resize(700, 200);
        bar->addPanel("Text", StatusBar::AutoSize::Spring);
        bar->addClock("Time");
    }
    void show() {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    QMainWindow window;
    StatusBar* bar = new StatusBar;
};

TEST_F(StatusBarTest, PanelsAreFoundByTheirKeys) {
    EXPECT_TRUE(bar->hasPanel("Text"));
    EXPECT_FALSE(bar->hasPanel("Filter"));
    EXPECT_EQ(bar->panel("Filter"), nullptr);
    EXPECT_EQ(bar->panel("Text")->objectName(), "Panel(Text)");
    EXPECT_FALSE(bar->panel("Text")->accessibleName().isEmpty());
    EXPECT_EQ(bar->panelText("Filter"), "");
    bar->setPanelText("Filter", "nobody there");
    bar->setPanelText("Text", "Ready");
    EXPECT_EQ(bar->panelText("Text"), "Ready");
}

TEST_F(StatusBarTest, PanelsStandInTheirOrder) {
    bar->addPanel("Filter", StatusBar::AutoSize::Contents, 1);
    bar->setPanelText("Filter", "Finished");
    bar->addPanel("End", StatusBar::AutoSize::Fixed);
    show();
    EXPECT_EQ(bar->firstPanelKey(), "Filter");
    QList<int> places;
    for (const char* key : {"Filter", "Text", "Time", "End"}) {
        places.append(bar->panel(key)->x());
    }
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    EXPECT_EQ(bar->panel("End")->width(), 96);
}

TEST_F(StatusBarTest, ARemovedPanelIsGone) {
    bar->addPanel("Filter", StatusBar::AutoSize::Contents, 1);
    bar->removePanel("Filter");
    bar->removePanel("Filter");
    EXPECT_FALSE(bar->hasPanel("Filter"));
    EXPECT_EQ(bar->firstPanelKey(), "Text");
    bar->removePanel("Text");
    bar->removePanel("Time");
    EXPECT_EQ(bar->firstPanelKey(), "");
}

TEST_F(StatusBarTest, TheSpringTakesTheRoomThatIsLeft) {
    show();
    const int before = bar->panel("Text")->width();
    const int clock = bar->panel("Time")->width();
    EXPECT_GT(before, 400);
    window.resize(900, 200);
    QTest::qWait(1);
    EXPECT_EQ(bar->panel("Text")->width(), before + 200);
    EXPECT_EQ(bar->panel("Time")->width(), clock);
}

TEST_F(StatusBarTest, ALongTextDoesNotWidenTheWindow) {
    show();
    const int before = window.minimumSizeHint().width();
    bar->setPanelText("Text", QString(5000, 'W'));
    QTest::qWait(1);
    EXPECT_EQ(window.minimumSizeHint().width(), before);
    EXPECT_EQ(window.width(), 700);
}

TEST_F(StatusBarTest, ATextIsShownAtOnceAndAsItStands) {
    show();
    bar->panel("Text")->setAttribute(Qt::WA_OpaquePaintEvent, false);
    int painted = 0;
    struct Counter : QObject {
        int* painted;
        bool eventFilter(QObject*, QEvent* event) override {
            *painted += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } counter;
    counter.painted = &painted;
    bar->panel("Text")->installEventFilter(&counter);
    bar->setPanelText("Text", "Working... Please Wait...");
    EXPECT_GT(painted, 0) << "without a turn of the event loop";
    EXPECT_EQ(bar->panel("Text")->textFormat(), Qt::PlainText);
}

TEST_F(StatusBarTest, AMenusHintDoesNotPushThePanelsAway) {
    show();
    QStatusTipEvent hint("Adds a record");
    QApplication::sendEvent(&window, &hint);
    EXPECT_TRUE(bar->panel("Text")->isVisible());
    EXPECT_TRUE(bar->panel("Time")->isVisible());
}

TEST_F(StatusBarTest, TheClockShowsTheShortTimeAndTheLongDateAsItsTip) {
    const QDateTime evening(QDate(2026, 3, 4), QTime(19, 5, 59));
    bar->showClock("Time", evening);
    EXPECT_EQ(bar->panelText("Time"), QLocale().toString(evening.time(), QLocale::ShortFormat));
    EXPECT_EQ(bar->panel("Time")->toolTip(), platform::formatLongDate(evening.date()));
    EXPECT_TRUE(bar->panel("Time")->alignment() & Qt::AlignHCenter);
}

TEST_F(StatusBarTest, TheClockMovesOnByItself) {
    auto* timer = bar->findChild<QTimer*>("ClockTimer");
    ASSERT_NE(timer, nullptr);
    EXPECT_TRUE(timer->isActive());
    EXPECT_LE(timer->interval(), 60000);
    bar->setPanelText("Time", "stopped");
    timer->start(0);
    const QTime before = QTime::currentTime();
    QTest::qWait(20);
    const QTime after = QTime::currentTime();
    const auto shown = [](const QTime& time) { return QLocale().toString(time, QLocale::ShortFormat); };
    EXPECT_TRUE(bar->panelText("Time") == shown(before) || bar->panelText("Time") == shown(after));
    EXPECT_TRUE(timer->isActive()) << "and goes on";
}

TEST_F(StatusBarTest, ARemovedClockStops) {
    bar->removePanel("Time");
    EXPECT_EQ(bar->findChild<QTimer*>("ClockTimer"), nullptr);
}

TEST_F(StatusBarTest, ADoubleClickTellsItsPanel) {
    show();
    QSignalSpy twice(bar, &StatusBar::panelDoubleClicked);
    QTest::mouseDClick(bar->panel("Time"), Qt::LeftButton);
    ASSERT_EQ(twice.count(), 1);
    EXPECT_EQ(twice.at(0).at(0).toString(), "Time");
    QTest::mouseDClick(bar->panel("Time"), Qt::RightButton);
    EXPECT_EQ(twice.count(), 1);
}

TEST_F(StatusBarTest, AClickAnywhereOnTheBarIsOneClick) {
    bar->addPanel("Filter", StatusBar::AutoSize::Contents, 1);
    show();
    QSignalSpy clicked(bar, &StatusBar::barClicked);
    QTest::mouseClick(bar->panel("Text"), Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
    QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(1, bar->height() - 1));
    EXPECT_EQ(clicked.count(), 2);
    QTest::mouseClick(bar->panel("Text"), Qt::RightButton);
    EXPECT_EQ(clicked.count(), 2);
    QTest::mouseClick(bar->panel("Text"), Qt::LeftButton);
    QTest::mouseDClick(bar->panel("Text"), Qt::LeftButton);
    QTest::mouseRelease(bar->panel("Text"), Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 3) << "a double click begins with one click and does not end with another";
    QTest::mouseClick(bar->panel("Text"), Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 4);
}

}  // namespace
