// The small windows that the main window opens: where they stand, and which topic of the help they open.

#include <QPushButton>

#include "main_window.h"
#include "records/frmLegend.h"
#include "records/frmReportOptions.h"
#include "support/modal.h"
#include "support/topics.h"

namespace {

class Windows : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        addService(addComputer(addClient("Anic", "Vesna"), "Desk"));
    }
    // Opens the legend, from the help menu or by a right click, and leaves it at `place`.
    QPoint legend(bool fromHelp, const QPoint& place) {
        QPoint found;
        inModal<frmLegend>([&] { fromHelp ? give(Command::Legend) : giveInPopup(Command::Legend); },
                           [&](frmLegend& window) {
                               found = window.pos();
                               window.move(place);
                               by_hand::click(window.Command1);
                           });
        return found;
    }
    AskedTopics topics;
};

TEST_F(Windows, LegendComesUpWhereItWasLeft) {
    start();
    tab(3);
    EXPECT_EQ(legend(true, {240, 60}), QPoint(100, 100)) << "the place of the first time";
    EXPECT_EQ(platform::GetSetting("Tarvello", "Settings", "LegendPosition", ""), "3600;900");
    EXPECT_EQ(legend(false, {33, 44}), QPoint(240, 60));
    end();
    start();
    tab(3);
    EXPECT_EQ(legend(true, {0, 0}), QPoint(33, 44));
}

TEST_F(Windows, ReportOptionsComeUpWhereTheyWereLeft) {
    start();
    QPoint found;
    const auto visit = [&](const QPoint& place) {
        inModal<frmReportOptions>([&] { give(Command::ReportOptions); },
                                  [&](frmReportOptions& window) {
                                      found = window.pos();
                                      window.move(place);
                                      QTest::keyClick(&window, Qt::Key_Escape);
                                  });
        return found;
    };
    EXPECT_EQ(visit({160, 80}), QPoint(33, 33));
    EXPECT_EQ(visit({160, 80}), QPoint(160, 80));
}

TEST_F(Windows, ReportOptionsChangeWhatIsReportedUnlessCancelled) {
    start();
    const auto untick = [&](int choice, int button) {
        inModal<frmReportOptions>([&] { give(Command::ReportOptions); },
                                  [&](frmReportOptions& window) {
                                      EXPECT_EQ(window.parentWidget(), &win());
                                      by_hand::click(window.Check1[static_cast<size_t>(choice)]);
                                      by_hand::click(window.Command1[static_cast<size_t>(button)]);
                                  });
    };
    untick(4, 1);
    EXPECT_TRUE(win().choices.report.PrintAddressDetails);
    untick(4, 0);
    EXPECT_FALSE(win().choices.report.PrintAddressDetails);
    EXPECT_TRUE(win().choices.report.PrintContactDetails);
    EXPECT_TRUE(win().choices.report.PrintPIDCardDetails);
}

TEST_F(Windows, HelpButtonsOpenTheirOwnTopic) {
    start();
    inModal<frmReportOptions>([&] { give(Command::ReportOptions); },
                              [&](frmReportOptions& window) {
                                  by_hand::click(window.Command1[2]);
                                  QTest::keyClick(&window, Qt::Key_Escape);
                              });
    EXPECT_EQ(topics.all(), QList<int>({7010}));
    topics.clear();
    tab(3);
    inModal<frmDetails>([&] { tool("EditRecord"); },
                        [&](frmDetails& window) {
                            by_hand::click(window.findChild<QPushButton*>("Command1(2)"));
                            QTest::keyClick(&window, Qt::Key_Escape);
                        });
    EXPECT_EQ(topics.all(), QList<int>({7002}));
}

}  // namespace
