#include "records/work_progress.h"

#include <gtest/gtest.h>

#include <QProgressBar>

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

}  // namespace
