#include <gtest/gtest.h>

#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QTest>

#include "platform/controls/status_bar.h"

namespace {

using platform::StatusBar;

// A progress bar stands in a panel's place while a list is being filled.
class StatusBarCover : public ::testing::Test {
 protected:
    void SetUp() override {
        window.setStatusBar(bar);
        window.resize(600, 200);
        bar->addPanel("Text", StatusBar::AutoSize::Spring);
        bar->addPanel("Progress", StatusBar::AutoSize::Fixed);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        progress->hide();
    }
    QMainWindow window;
    StatusBar* bar = new StatusBar;
    QProgressBar* progress = new QProgressBar(&window);
};

TEST_F(StatusBarCover, LiesOverItsPanelAndIsShown) {
    bar->coverPanel("Progress", progress);
    EXPECT_TRUE(progress->isVisible());
    EXPECT_EQ(progress->parentWidget(), bar->panel("Progress"));
    EXPECT_EQ(progress->geometry(), bar->panel("Progress")->contentsRect());
}

TEST_F(StatusBarCover, FollowsThePanelsSize) {
    bar->coverPanel("Text", progress);
    const int before = progress->width();
    window.resize(800, 200);
    QTest::qWait(1);
    EXPECT_EQ(progress->width(), before + 200);
    EXPECT_EQ(progress->geometry(), bar->panel("Text")->contentsRect());
}

TEST_F(StatusBarCover, GoesBackToItsWindowHidden) {
    bar->coverPanel("Text", progress);
    bar->uncover(progress, &window);
    EXPECT_FALSE(progress->isVisible());
    EXPECT_EQ(progress->parentWidget(), &window);
    const QRect then = progress->geometry();
    window.resize(800, 200);
    QTest::qWait(1);
    EXPECT_EQ(progress->geometry(), then) << "the panel has let it go";
}

TEST_F(StatusBarCover, CanGoFromOnePanelToAnother) {
    bar->coverPanel("Text", progress);
    bar->coverPanel("Progress", progress);
    EXPECT_EQ(progress->geometry(), bar->panel("Progress")->contentsRect());
    EXPECT_TRUE(progress->isVisible());
}

TEST_F(StatusBarCover, WithoutThePanelNothingHappens) {
    bar->coverPanel("Filter", progress);
    EXPECT_FALSE(progress->isVisible());
    EXPECT_EQ(progress->parentWidget(), &window);
}

}  // namespace
