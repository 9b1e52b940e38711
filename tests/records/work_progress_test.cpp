#include "records/work_progress.h"

#include <gtest/gtest.h>

#include <QProgressBar>
#include <QTimer>

#include "platform/controls/status_bar.h"

namespace {

TEST(WorkProgress, ShowsNothingOfWhatIsSoonDone) {
    QWidget window;
    platform::StatusBar bar(&window);
    bar.addClock(QStringLiteral("Time"));
    const auto shown = [&] { return window.findChild<QProgressBar*>(QStringLiteral("ProgressBar1")); };
    {
        constexpr int kAnHour = 3'600'000;
        WorkProgress soonDone(&window, &bar, QStringLiteral("Backup"), 0, kAnHour);
        soonDone.tell(1, 2);
        EXPECT_EQ(shown(), nullptr);
        WorkProgress slow(&window, &bar, QStringLiteral("Backup"), kAnHour, 0);
        slow.tell(1, 2);
        ASSERT_NE(shown(), nullptr);
        EXPECT_EQ(shown()->accessibleName(), "Backup");
        EXPECT_EQ(shown()->value() * 2, shown()->maximum());
        slow.tell(2, 2);
        EXPECT_EQ(shown()->value() * 2, shown()->maximum()) << "its next turn has not come";
    }
    EXPECT_EQ(shown(), nullptr);
}

// The windows have their turns from the beginning; what takes a while is shown when it has taken one.
TEST(WorkProgress, LetsTheWindowsTurnBeforeItShowsAnything) {
    constexpr int kAnHour = 3'600'000;
    QWidget window;
    platform::StatusBar bar(&window);
    bar.addClock(QStringLiteral("Time"));
    WorkProgress progress(&window, &bar, QStringLiteral("Backup"), 0, kAnHour);
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++turns; });
    timer.start(0);
    progress.tell(1, 2);
    progress.tell(2, 2);
    EXPECT_EQ(turns, 2);
    EXPECT_EQ(window.findChild<QProgressBar*>(QStringLiteral("ProgressBar1")), nullptr);
}

}  // namespace
