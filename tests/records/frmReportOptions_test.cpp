#include "records/frmReportOptions.h"

#include <gtest/gtest.h>

#include <QTest>

#include "common/help.h"
#include "common/window_places.h"
#include "records/frmMain.h"
#include "records/main_window.h"
#include "support/modal.h"

namespace {

struct HelpCall {
    HelpCommand command;
    int context;
};
QList<HelpCall> helpCalls;

bool noteHelp(const QString&, HelpCommand command, int context) {
    helpCalls.append({command, context});
    return true;
}

constexpr bool ReportChoices::*kOrder[] = {
    &ReportChoices::IncludeClients,           &ReportChoices::ShowOnlySelectedClient,
    &ReportChoices::PrintBirthDetails,        &ReportChoices::PrintPIDCardDetails,
    &ReportChoices::PrintAddressDetails,      &ReportChoices::PrintContactDetails,
    &ReportChoices::PrintClientComments,      &ReportChoices::IncludeComputers,
    &ReportChoices::ShowOnlySelectedComputer, &ReportChoices::PrintMemoryDetails,
    &ReportChoices::PrintStorageDetails,      &ReportChoices::PrintPheriperalDetails,
    &ReportChoices::PrintOSDetails,           &ReportChoices::PrintComputerComments,
    &ReportChoices::IncludeServices,          &ReportChoices::ShowOnlySelectedService,
};

class ReportOptions : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        helpCalls.clear();
        setHelpViewer(noteHelp);
    }
    void TearDown() override {
        options_.reset();
        setHelpViewer(nullptr);
        MainWindow::TearDown();
    }
    frmReportOptions& options() {
        if (!options_) {
            options_ = std::make_unique<frmReportOptions>();
        }
        return *options_;
    }
    void show(const std::function<void()>& work) {
        inModal<frmReportOptions>([this] { options().Display(); }, [&](frmReportOptions&) { work(); });
    }
    QCheckBox* check(int index) { return options().Check1[static_cast<size_t>(index)]; }
    void click(int index) {
        QTest::mouseClick(check(index), Qt::LeftButton, {}, QPoint(5, check(index)->height() / 2));
    }
    void press(size_t button) { QTest::mouseClick(options().Command1[button], Qt::LeftButton); }
    void set(std::initializer_list<int> off) {
        for (const int index : off) {
            options().*kOrder[index] = false;
        }
    }
    // Of the enabled boxes.
    QList<int> usable() {
        QList<int> indices;
        for (int i = 0; i < frmReportOptions::kChoices; ++i) {
            if (check(i)->isEnabled()) {
                indices.append(i);
            }
        }
        return indices;
    }

 private:
    std::unique_ptr<frmReportOptions> options_;
};

TEST_F(ReportOptions, NamesItsWindowItsBoxesAndItsButtons) {
    show([&] {
        EXPECT_EQ(options().windowTitle(), "Report Options");
        const char* captions[] = {"In&clude Client data in the report",
                                  "&Show data only for selected client",
                                  "Print &birth details",
                                  "&Print PID card details",
                                  "Print &address details",
                                  "Print c&ontact details",
                                  "Print co&mments",
                                  "Incl&ude Computer data in the report",
                                  "Sho&w data only for selected computer",
                                  "Pri&nt processor and memory details",
                                  "Print stora&ge devices details",
                                  "Print p&eripheral devices details",
                                  "Print operating s&ystem details",
                                  "Prin&t comments",
                                  "Include Ser&vice data in the report",
                                  "Show &data only for selected service"};
        for (int i = 0; i < frmReportOptions::kChoices; ++i) {
            EXPECT_EQ(check(i)->text(), captions[i]);
            EXPECT_EQ(check(i)->objectName(), QStringLiteral("Check1(%1)").arg(i));
            EXPECT_FALSE(check(i)->accessibleName().isEmpty());
        }
        EXPECT_EQ(options().Command1[0]->text(), "OK");
        EXPECT_EQ(options().Command1[1]->text(), "Cancel");
        EXPECT_EQ(options().Command1[2]->text(), "&Help");
        press(1);
    });
}

TEST_F(ReportOptions, ShowsEachChoiceInItsBox) {
    for (int off = 0; off < frmReportOptions::kChoices; ++off) {
        static_cast<ReportChoices&>(options()) = {};
        set({off});
        show([&] {
            for (int i = 0; i < frmReportOptions::kChoices; ++i) {
                EXPECT_EQ(check(i)->isChecked(), i != off) << off << " " << i;
            }
            press(1);
        });
    }
}

TEST_F(ReportOptions, OkTakesEveryBoxIntoItsChoice) {
    for (const int changed : {0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 11, 12, 13, 14, 15, 7}) {
        static_cast<ReportChoices&>(options()) = {};
        show([&] {
            click(changed);
            press(0);
        });
        EXPECT_FALSE(options().Cancelled());
        for (int i = 0; i < frmReportOptions::kChoices; ++i) {
            EXPECT_EQ(options().*kOrder[i], i != changed) << changed << " " << i;
        }
    }
}

TEST_F(ReportOptions, CancelLeavesTheChoicesAndClosesTheHelp) {
    show([&] {
        click(3);
        press(1);
    });
    EXPECT_TRUE(options().Cancelled());
    EXPECT_TRUE(options().PrintPIDCardDetails);
    ASSERT_EQ(helpCalls.size(), 1);
    EXPECT_EQ(helpCalls.first().command, HELP_QUIT);
}

TEST_F(ReportOptions, EscapeCancels) {
    show([&] { QTest::keyClick(&options(), Qt::Key_Escape); });
    EXPECT_TRUE(options().Cancelled());
}

TEST_F(ReportOptions, TheCloseBoxCancels) {
    show([&] { options().close(); });
    EXPECT_TRUE(options().Cancelled());
    EXPECT_FALSE(options().isVisible());
}

TEST_F(ReportOptions, OkAfterACancelCounts) {
    show([&] { press(1); });
    show([&] { press(0); });
    EXPECT_FALSE(options().Cancelled());
    ASSERT_EQ(helpCalls.size(), 2);
    EXPECT_EQ(helpCalls.last().command, HELP_QUIT);
}

TEST_F(ReportOptions, HelpOpensThePageOfTheReport) {
    if (!QFile::exists(path("Tarvello.hlp"))) {
        QFile page(path("Tarvello.hlp"));
        ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    }
    show([&] {
        press(2);
        EXPECT_TRUE(options().isVisible());
        QTest::keyClick(check(4), Qt::Key_F1);
        press(1);
    });
    ASSERT_EQ(helpCalls.size(), 3) << boxes.lastText().toStdString();
    for (const int call : {0, 1}) {
        EXPECT_EQ(helpCalls.at(call).command, HELP_CONTEXT);
        EXPECT_EQ(helpCalls.at(call).context, 7010);
    }
}

TEST_F(ReportOptions, EnterPressesTheButtonWithTheFocusAndElsewhereOk) {
    const auto enterOn = [&](QWidget* widget) {
        widget->setFocus(Qt::TabFocusReason);
        QTest::keyClick(options().windowHandle(), Qt::Key_Return);
    };
    show([&] {
        click(3);
        enterOn(options().Command1[2]);
        ASSERT_EQ(helpCalls.size(), 1);
        EXPECT_EQ(helpCalls[0].context, 7010);
        enterOn(options().Command1[1]);
    });
    EXPECT_TRUE(options().Cancelled());
    show([&] {
        click(3);
        enterOn(check(4));
    });
    EXPECT_FALSE(options().Cancelled());
    EXPECT_FALSE(options().PrintPIDCardDetails);
    EXPECT_TRUE(options().PrintAddressDetails) << "Enter ticks nothing";
}

TEST_F(ReportOptions, TheClientsBoxRulesOverTheClientsDetails) {
    show([&] {
        click(0);
        EXPECT_EQ(usable(), QList<int>({0, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
        click(0);
        EXPECT_EQ(usable().size(), 16);
        press(1);
    });
}

TEST_F(ReportOptions, TheComputersBoxRulesOverTheServicesToo) {
    show([&] {
        click(7);
        EXPECT_EQ(usable(), QList<int>({0, 1, 2, 3, 4, 5, 6, 7}));
        click(7);
        EXPECT_EQ(usable().size(), 16);
        press(1);
    });
}

TEST_F(ReportOptions, TickingTheComputersBoxFreesTheServiceEvenWithItsOwnBoxOff) {
    set({14});
    show([&] {
        EXPECT_FALSE(check(15)->isEnabled());
        click(7);
        click(7);
        EXPECT_FALSE(check(14)->isChecked());
        EXPECT_TRUE(check(15)->isEnabled());
        press(1);
    });
}

TEST_F(ReportOptions, TheThreeHeadsRuleInTheirOrderAtTheOpening) {
    set({0, 7});
    show([&] {
        EXPECT_EQ(usable(), QList<int>({0, 7, 15}));  // the services' box comes last, and is ticked
        press(1);
    });
    set({14});
    show([&] {
        EXPECT_EQ(usable(), QList<int>({0, 7}));
        press(1);
    });
}

TEST_F(ReportOptions, KeepsItsPlace) {
    settings::setText(settings::ReportOptionsPosition, "1500;750");
    show([&] {
        EXPECT_EQ(placeOf(&options()), "1500;750");
        options().move(200, 120);
        press(1);
    });
    options().Unload();
    EXPECT_EQ(settings::text(settings::ReportOptionsPosition), "3000;1800");
}

TEST_F(ReportOptions, StandsAtItsUsualPlaceTheFirstTime) {
    EXPECT_EQ(settings::text(settings::ReportOptionsPosition), "500;500");
}

TEST_F(ReportOptions, TheMainWindowsChoicesGoInAndComeBack) {
    addClient();
    start();
    win().choices.report.PrintOSDetails = false;
    inModal<frmReportOptions>([this] { give(Command::ReportOptions); },
                              [&](frmReportOptions& window) {
                                  EXPECT_EQ(window.parentWidget(), &win());
                                  EXPECT_FALSE(window.PrintOSDetails);
                                  EXPECT_FALSE(window.Check1[12]->isChecked());
                                  window.Check1[10]->setChecked(false);
                                  QTest::mouseClick(window.Command1[0], Qt::LeftButton);
                              });
    EXPECT_FALSE(win().choices.report.PrintOSDetails);
    EXPECT_FALSE(win().choices.report.PrintStorageDetails);
    EXPECT_TRUE(win().choices.report.PrintMemoryDetails);
    end();
    start();  // the next day
    EXPECT_FALSE(win().choices.report.PrintOSDetails);
    EXPECT_FALSE(win().choices.report.PrintStorageDetails);
    EXPECT_TRUE(win().choices.report.PrintMemoryDetails);
}

TEST_F(ReportOptions, ACancelledWindowChangesNothingInTheMainWindow) {
    addClient();
    start();
    inModal<frmReportOptions>([this] { give(Command::ReportOptions); },
                              [&](frmReportOptions& window) {
                                  window.Check1[10]->setChecked(false);
                                  QTest::mouseClick(window.Command1[1], Qt::LeftButton);
                              });
    EXPECT_TRUE(win().choices.report.PrintStorageDetails);
}

}  // namespace
