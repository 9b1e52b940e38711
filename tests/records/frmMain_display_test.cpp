// The main window's start, piece by piece, and its end; what it remembers.

#include <QDate>
#include <QMenuBar>
#include <QScreen>

#include "common/help.h"
#include "main_window.h"
#include "platform/system/trap.h"
#include "records/main_settings.h"
#include "support/file_writes.h"
#include "support/no_room.h"

using platform::BoxIcon;

namespace {

QList<HelpCommand> helpCommands;

class Start : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        helpCommands.clear();
        setHelpViewer([](const QString&, HelpCommand command, int) {
            helpCommands.append(command);
            return true;
        });
    }
    void TearDown() override {
        MainWindow::TearDown();
        setHelpViewer(nullptr);
    }
    // A window whose step fails.
    bool displayWithout(StartStep failing) {
        make().start.onStartStep = [failing](StartStep step) {
            if (step == failing) {
                throw platform::RunError(7, "Out of memory");
            }
        };
        return win().Display();
    }
    // A clock that Display reads twice: at its beginning and when all is built.
    void displayTaking(qint64 milliseconds) {
        make().start.splash.GetTickCount = [=, reading = 0]() mutable -> qint64 {
            return 1000 + (reading++ > 0 ? milliseconds : 0);
        };
        auto splash = std::make_unique<frmSplash>();
        splash->show();
        picture = splash.get();
        win().start.splash.setSplash(std::move(splash));
        EXPECT_TRUE(win().Display());
    }
    QPointer<frmSplash> picture;
};

const QString kNumber = QStringLiteral("\n[7] Out of memory");

TEST_F(Start, StartsWithTheBuiltInValues) {
    make();
    EXPECT_EQ(win().choices.filter.DueDateDiff, 5);
    EXPECT_TRUE(win().choices.filter.ShowMsgBoxFilterResults);
    EXPECT_EQ(win().choices.DefaultGST, 0);
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(win().shop.stages.CurrentStage, 1);
    EXPECT_FALSE(win().choices.order.LVWSorted);
    EXPECT_EQ(win().choices.order.LVWSortField, "ServiceStarted");
    EXPECT_EQ(win().choices.order.LVWSortOrder, "ASC");
    EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
    EXPECT_FALSE(win().controls.Data1[0]->isOpen());
}

TEST_F(Start, WindowIsCaptionedAndReady) {
    start();
    EXPECT_EQ(win().windowTitle(), "Tarvello");
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_TRUE(win().controls.Picture1[0]->isVisible());
    EXPECT_FALSE(win().controls.Picture1[1]->isVisible());
    EXPECT_FALSE(win().controls.Picture1[2]->isVisible());
    EXPECT_NE(win().services.commands.editor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Start, PointerIsTheHourglassWhileBuilding) {
    bool hourglass = false;
    make().start.onStartStep = [&](StartStep) {
        hourglass = QGuiApplication::overrideCursor() != nullptr &&
                    QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
    };
    EXPECT_TRUE(win().Display());
    EXPECT_TRUE(hourglass);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Start, DateFieldsAreOfTodayUntilARecordIsShown) {
    make();
    win().start.onStartStep = [&](StartStep step) {
        if (step == StartStep::ServiceList) {
            for (const platform::DateField* date : win().controls.DTPicker1) {
                EXPECT_EQ(date->value(), QDate::currentDate());
            }
        }
    };
    EXPECT_TRUE(win().Display());
}

TEST_F(Start, StepsComeInTheirOrder) {
    QList<StartStep> steps;
    make().start.onStartStep = [&](StartStep step) { steps.append(step); };
    EXPECT_TRUE(win().Display());
    EXPECT_EQ(steps, QList<StartStep>({StartStep::ToolbarImages, StartStep::TabImages,
                                       StartStep::ColumnImages, StartStep::Tabs, StartStep::ServiceList,
                                       StartStep::Menus, StartStep::StatusBar, StartStep::Toolbar}));
}

TEST_F(Start, WithoutToolbarPicturesThereIsNoToolbarAndNoEntryForIt) {
    EXPECT_TRUE(displayWithout(StartStep::ToolbarImages));
    EXPECT_EQ(boxes.lastText(),
              "Error while importing images for the application. Toolbar will not be visible." + kNumber);
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_FALSE(win().controls.Toolbar1->isVisible());
    EXPECT_FALSE(win().bars.menus.entry(Command::ShowToolbar)->isVisible());
    EXPECT_FALSE(win().bars.menus.entry(Command::ShowToolbar)->isEnabled());
    EXPECT_TRUE(win().isVisible());
}

TEST_F(Start, BarThatFailedOnceIsWantedAgainTomorrow) {
    EXPECT_TRUE(displayWithout(StartStep::Toolbar));
    end();
    EXPECT_TRUE(settings::boolean(settings::ToolbarVisible));
}

TEST_F(Start, WithoutTabPicturesTheTabsHaveNone) {
    EXPECT_TRUE(displayWithout(StartStep::TabImages));
    EXPECT_EQ(boxes.lastText(),
              "An error has occured while importing images for the Tab Strip Control. Tab Strip Control "
              "will be without images." +
                  kNumber);
    EXPECT_TRUE(win().tabs.TabImagesFailed);
    win().controls.TabStrip1->setCurrentIndex(1);
    EXPECT_EQ(win().shop.stages.CurrentStage, 2);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(win().controls.TabStrip1->tabIcon(i).isNull());
    }
}

TEST_F(Start, WithoutColumnPicturesTheListStillWorks) {
    EXPECT_TRUE(displayWithout(StartStep::ColumnImages));
    EXPECT_EQ(
        boxes.lastText(),
        "An error has occured while importing images for the Column Header of List View control." + kNumber);
}

TEST_F(Start, WithoutMenusTheMenuBarIsHidden) {
    EXPECT_TRUE(displayWithout(StartStep::Menus));
    EXPECT_EQ(
        boxes.lastText(),
        "An error has occured while creating menus for this application. Menu bar will not be visible." +
            kNumber);
    EXPECT_FALSE(win().menuBar()->isVisible());
    EXPECT_TRUE(win().controls.Toolbar1->isVisible());
}

TEST_F(Start, WithoutStatusBarTheProgramRuns) {
    EXPECT_TRUE(displayWithout(StartStep::StatusBar));
    EXPECT_EQ(boxes.lastText(),
              "An error has occured while creating status bar for this application. Status bar will not be "
              "visible." +
                  kNumber);
    EXPECT_EQ(win().controls.StatusBar1, nullptr);
    EXPECT_FALSE(win().bars.menus.entry(Command::ShowStatusBar)->isEnabled());
    EXPECT_FALSE(win().bars.menus.entry(Command::ShowStatusBar)->isChecked());
    tool("NewRecord");
    EXPECT_TRUE(win().shop.editing.AddNewMode);
}

TEST_F(Start, WithoutToolbarTheProgramRuns) {
    EXPECT_TRUE(displayWithout(StartStep::Toolbar));
    EXPECT_EQ(boxes.lastText(),
              "Error while creating toolbar for the application. Toolbar will not be visible." + kNumber);
    EXPECT_FALSE(win().bars.menus.entry(Command::ShowToolbar)->isEnabled());
    win().commands.mnuDatabase_Click(0);
    EXPECT_TRUE(win().shop.editing.AddNewMode);
}

TEST_F(Start, WithoutTabsTheProgramEnds) {
    EXPECT_FALSE(displayWithout(StartStep::Tabs));
    EXPECT_EQ(boxes.lastText(),
              "An unexpected error has occured while creating Tab Strip Control. Application will "
              "terminate." +
                  kNumber);
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_TRUE(win().isUnloaded());
    EXPECT_FALSE(win().isVisible());
    EXPECT_FALSE(QFile::exists(path("Tarvello.bkp")));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Start, WithoutServiceListTheProgramEnds) {
    EXPECT_FALSE(displayWithout(StartStep::ServiceList));
    EXPECT_EQ(boxes.lastText(),
              "An unexpected error has occured while creating ListView Control. Application will "
              "terminate." +
                  kNumber);
    EXPECT_TRUE(win().isUnloaded());
}

TEST_F(Start, FailedStartTakesTheSplashWindowAway) {
    make().start.onStartStep = [](StartStep step) {
        if (step == StartStep::Tabs) {
            throw platform::RunError(7, "Out of memory");
        }
    };
    auto splash = std::make_unique<frmSplash>();
    splash->show();
    picture = splash.get();
    win().start.splash.setSplash(std::move(splash));
    EXPECT_FALSE(win().Display());
    EXPECT_EQ(win().start.splash.window(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(picture.isNull());
}

TEST_F(Start, WithoutDatabaseTheProgramEnds) {
    QFile::remove(databaseFile());
    make();
    boxes.answers << platform::BoxAnswer::Ok << platform::BoxAnswer::No;
    EXPECT_FALSE(win().Display());
    EXPECT_EQ(boxes.lastText(), "User abort.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_TRUE(win().isUnloaded());
}

// --- The seven seconds of the splash window.

TEST_F(Start, SplashStaysForTheRestOfSevenSeconds) {
    displayTaking(1200);
    ASSERT_NE(win().start.splash.window(), nullptr);
    EXPECT_TRUE(picture->isVisible());
    EXPECT_EQ(picture->timerInterval(), 5800);
    EXPECT_TRUE(picture->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(Start, SplashGoesAtOnceAfterSevenSeconds) {
    displayTaking(7000);
    EXPECT_EQ(win().start.splash.window(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(picture.isNull());
}

TEST_F(Start, SplashOneMillisecondBeforeTheTime) {
    displayTaking(6999);
    ASSERT_NE(win().start.splash.window(), nullptr);
    EXPECT_EQ(picture->timerInterval(), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return picture.isNull(); }));
    EXPECT_EQ(win().start.splash.window(), nullptr);
}

TEST_F(Start, ClickTakesTheSplashAway) {
    displayTaking(10);
    QTest::mouseClick(picture, Qt::LeftButton);
    EXPECT_EQ(win().start.splash.window(), nullptr);
}

// --- What is remembered.

TEST_F(Start, SettingsMakeTheRoundTrip) {
    start();
    win().move(120, 90);
    win().choices.filter.DueDateDiff = 12;
    win().choices.DefaultGST = 20;
    win().choices.filter.ShowMsgBoxFilterResults = false;
    win().choices.session.AlwaysCreateBackupDB = false;
    win().choices.report.PrintOSDetails = false;
    win().choices.report.IncludeServices = false;
    win().choices.report.ShowOnlySelectedClient = false;
    win().controls.ListView1->columns().setWidth(columnNumber(ServiceColumn::ToBeFinished), 2100);
    win().controls.ListView1->columns().setPosition(columnNumber(ServiceColumn::Paid), 1);
    const QPoint place = win().pos();
    end();
    EXPECT_EQ(settings::text(settings::DueDateDiff), "12");
    EXPECT_EQ(settings::text(settings::DefaultGST), "20");
    EXPECT_EQ(settings::text(settings::ShowFilterStatistics), "False");
    EXPECT_EQ(settings::text(settings::LVWColumnPositions), "2;3;4;5;6;7;1");
    EXPECT_EQ(settings::text(settings::MainPosition), "1800;1350");
    start();
    EXPECT_EQ(win().pos(), QPoint(0, place.y())) << "the window is wider than this screen";
    EXPECT_EQ(win().choices.filter.DueDateDiff, 12);
    EXPECT_EQ(win().choices.DefaultGST, 20);
    EXPECT_FALSE(win().choices.filter.ShowMsgBoxFilterResults);
    EXPECT_FALSE(win().choices.session.AlwaysCreateBackupDB);
    EXPECT_FALSE(win().choices.report.PrintOSDetails);
    EXPECT_FALSE(win().choices.report.IncludeServices);
    EXPECT_FALSE(win().choices.report.ShowOnlySelectedClient);
    EXPECT_TRUE(win().choices.report.PrintComputerComments);
    EXPECT_EQ(win().controls.ListView1->columns().width(columnNumber(ServiceColumn::ToBeFinished)), 2100);
    EXPECT_EQ(win().controls.ListView1->columns().position(columnNumber(ServiceColumn::Paid)), 1);
}

TEST_F(Start, UntouchedListKeepsItsColumnsInTheSettings) {
    start();
    end();
    EXPECT_EQ(settings::text(settings::LVWColumnWidths), "1440;1440;1440;1440;1440;1440;1440");
    EXPECT_EQ(settings::text(settings::LVWColumnPositions), "1;2;3;4;5;6;7");
}

TEST_F(Start, MinimisedWindowKeepsTheOldPlace) {
    start();
    win().move(120, 90);
    end();
    const QString place = settings::text(settings::MainPosition);
    start();
    win().move(300, 200);
    win().setWindowState(Qt::WindowMinimized);
    end();
    EXPECT_EQ(settings::text(settings::MainPosition), place);
}

TEST_F(Start, SettingsThatCannotBeWrittenAreToldWithTheLine) {
    start();
    platform::setSettingsFolder(path("Tarvello.mdb") + "/nowhere");
    win().choices.session.AlwaysCreateBackupDB = false;
    end();
    ASSERT_FALSE(boxes.asked.isEmpty());
    EXPECT_TRUE(boxes.lastText().startsWith(
        "An unexpected error has occured while saving application settings to the Registry database:\n["))
        << boxes.lastText().toStdString();
    EXPECT_TRUE(boxes.lastText().contains(" in line ")) << boxes.lastText().toStdString();
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
}

TEST_F(Start, ClosingWritesTheSettingsFileOnce) {
    start();
    win().choices.filter.DueDateDiff = 12;
    win().choices.report.PrintOSDetails = false;
    FileWrites writes(platform::settingsFile("Tarvello"));
    end();
    EXPECT_EQ(writes.count(), 1);
    EXPECT_EQ(settings::text(settings::DueDateDiff), "12");
    EXPECT_FALSE(settings::boolean(settings::PrintOSDetails));
}

TEST_F(Start, ClosingWithEverythingAsItWasLeavesTheSettingsFileAlone) {
    start();
    end();
    start();
    FileWrites writes(platform::settingsFile("Tarvello"));
    end();
    EXPECT_EQ(writes.count(), 0);
}

TEST_F(Start, TheLineToldIsThatOfTheFirstSettingThatHadToBeWritten) {
    start();
    SaveSettings(win(), win().choices, *win().controls.ListView1);
    win().choices.filter.DueDateDiff = 12;
    win().choices.order.LVWSortOrder = "DESC";
    {
        const NoRoom full;
        SaveSettings(win(), win().choices, *win().controls.ListView1);
    }
    EXPECT_TRUE(boxes.lastText().endsWith(" in line 24")) << boxes.lastText().toStdString();
}

TEST_F(Start, SortedListComesUpSortedWithItsIcon) {
    const int desk = addComputer(addClient("Anic", "Vesna"), "Desk");
    addService(desk, {{"Price", dao::Currency::fromScaled(10000)}});
    addService(desk, {{"Price", dao::Currency::fromScaled(90000)}});
    CeneDinarske = false;
    settings::setBoolean(settings::LVWSorted, true);
    settings::setText(settings::LVWSortField, "Price");
    settings::setText(settings::LVWSortOrder, "DESC");
    start();
    EXPECT_EQ(win().controls.Data1[2]->RecordSource(), "SELECT * FROM QDServices0")
        << "sorted when it is shown";
    tab(3);
    EXPECT_EQ(win().controls.ListView1->columns().icon(columnNumber(ServiceColumn::Price)), "SortDown");
    EXPECT_EQ(cellOf(win().controls.ListView1->item(1), ServiceColumn::Price), "9.00");
    end();
    settings::setText(settings::LVWSortOrder, "ASC");
    start();
    tab(3);
    EXPECT_EQ(win().controls.ListView1->columns().icon(columnNumber(ServiceColumn::Price)), "SortUp");
    EXPECT_EQ(cellOf(win().controls.ListView1->item(1), ServiceColumn::Price), "1.00");
}

TEST_F(Start, UnsortedListHasNoIcon) {
    start();
    for (int column = 1; column <= 7; ++column) {
        EXPECT_EQ(win().controls.ListView1->columns().icon(column), "");
    }
}

TEST_F(Start, SortFieldThatIsNoColumnIsForgotten) {
    settings::setBoolean(settings::LVWSorted, true);
    settings::setText(settings::LVWSortField, "Nonsense");
    addService(addComputer(addClient("Anic", "Vesna"), "Desk"));
    start();
    tab(3);
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(win().controls.ListView1->count(), 1);
    EXPECT_FALSE(win().choices.order.LVWSorted);
    EXPECT_EQ(win().choices.order.LVWSortField, "ServiceStarted");
}

// --- The end.

TEST_F(Start, ClosingClosesTheHelpAndTheEditor) {
    start();
    win().close();
    EXPECT_EQ(win().services.commands.editor(), nullptr);
    EXPECT_EQ(helpCommands, QList<HelpCommand>({HELP_QUIT}));
    EXPECT_FALSE(win().controls.Data1[0]->isOpen());
}

TEST_F(Start, ClosingHappensOnce) {
    start();
    int times = 0;
    QObject::connect(&win(), &frmMain::unloaded, [&] { ++times; });
    win().close();
    win().unload();
    EXPECT_EQ(times, 1);
    EXPECT_EQ(helpCommands.size(), 1);
}

TEST_F(Start, WindowFitsASmallScreen) {
    addClient("Anic", "Vesna");
    start();
    const QSize least = win().minimumSizeHint();
    EXPECT_LE(least.width(), 1024);
    EXPECT_LE(least.height(), 560) << "a screen of 1366 x 768 at 125 % has 614 for it and its frame";
    EXPECT_LE(win().width(), 1024);
    EXPECT_LE(win().height(), 768);
}

TEST_F(Start, EveryEntryFieldHasItsTopicAndItsName) {
    make();
    const auto check = [](const QWidget* widget, int from, int to) {
        ASSERT_NE(widget, nullptr);
        const int context = widget->property("HelpContextID").toInt();
        EXPECT_TRUE(context >= from && context <= to) << widget->objectName().toStdString() << " " << context;
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
    };
    for (int i = 0; i < EntryFields::kCount; ++i) {
        if (i <= 18) {
            check(field(i), 501, 528);
        } else if (i == 37 || i == 38) {
            check(field(i), 701, 703);
        } else {
            check(field(i), 601, 621);
        }
        EXPECT_EQ(field(i)->objectName(), QString("Text1(%1)").arg(i));
    }
    check(win().controls.Check1, 501, 528);
    check(win().controls.ListView1, 701, 703);
    for (size_t i = 0; i < 3; ++i) {
        check(win().controls.DTPicker1[i], 501, 528);
    }
}

}  // namespace
