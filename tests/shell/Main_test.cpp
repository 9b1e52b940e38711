#include "shell/Main.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "platform/system/trap.h"
#include "records/frmDetails.h"
#include "records/frmMain.h"
#include "shell/frmSplash.h"
#include "support/fixture.h"

using platform::BoxAnswer;
using platform::BoxIcon;

namespace {

class ProgramStart : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        if (!QFile::exists(path("Tarvello.hlp"))) {
            QFile help(path("Tarvello.hlp"));
            ASSERT_TRUE(help.open(QIODevice::WriteOnly));
        }
    }
    void TearDown() override {
        window.reset();
        DeliveredFixture::TearDown();
    }
    static int splashWindows() {
        int count = 0;
        const auto all = QApplication::topLevelWidgets();
        for (const QWidget* widget : all) {
            count += qobject_cast<const frmSplash*>(widget) != nullptr && widget->isVisible() ? 1 : 0;
        }
        return count;
    }
    static QString stored(const char* key) {
        return platform::GetSetting("Tarvello", "Settings", key, "(none)");
    }
    std::unique_ptr<frmMain> window;
};

TEST_F(ProgramStart, ShowsTheMainWindowUnderTheSplash) {
    window = Main();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(splashWindows(), 1);
    EXPECT_GT(window->start.splash.window()->timerInterval(), 0);
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(ProgramStart, SplashIsThereBeforeTheDatabaseIsTouched) {
    QFile::remove(path("Tarvello.mdb"));
    int splashes = -1;
    boxes.onBox = [&](const platform::Box&) { splashes = splashWindows(); };
    boxes.answers << BoxAnswer::No;
    window = Main();
    EXPECT_EQ(splashes, 1);
}

TEST_F(ProgramStart, FirstStartUsesTheDefaults) {
    KursKupovni = 1;
    CeneDinarske = AskBeforeDelete = MakeProperCase = ShowTipsAtStartup = false;
    ShowTipsAtRandom = true;
    window = Main();
    EXPECT_EQ(KursKupovni, 80.0F);
    EXPECT_TRUE(CeneDinarske);
    EXPECT_TRUE(AskBeforeDelete);
    EXPECT_TRUE(MakeProperCase);
    EXPECT_TRUE(ShowTipsAtStartup);
    EXPECT_FALSE(ShowTipsAtRandom);
}

TEST_F(ProgramStart, SaysWhereTheRecordsWereCopiedThatWorkGoesOnWith) {
    platform::setProgramFolder(platform::programFolder(), true);
    window = Main();
    ASSERT_NE(window, nullptr);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(
        boxes.asked[0].text,
        "The program's folder cannot be written. From now on you work with a copy of the records of your "
        "own, " +
            databaseFile() + ". The records in the program's folder stay as they are.");
    EXPECT_EQ(boxes.asked[0].icon, BoxIcon::Information);
    EXPECT_EQ(boxes.asked[0].title, "Tarvello");
}

TEST_F(ProgramStart, KeepsStillAboutACopyThatNobodyWorksWith) {
    QTemporaryDir other;
    platform::setProgramFolder(other.path(), true);
    settings::setText(settings::DatabasePath, databaseFile());
    window = Main();
    for (const platform::Box& box : boxes.asked) {
        EXPECT_FALSE(box.text.contains("copy of the records")) << box.text.toStdString();
    }
}

TEST_F(ProgramStart, PreferencesAreReadInEitherForm) {
    settings::setText(settings::CeneDinarske, "0");
    settings::setText(settings::AskBeforeDelete, "False");
    settings::setText(settings::ShowTipsAtRandom, "True");
    window = Main();
    EXPECT_FALSE(CeneDinarske);
    EXPECT_FALSE(AskBeforeDelete);
    EXPECT_TRUE(ShowTipsAtRandom);
}

TEST_F(ProgramStart, RateWithAnotherSeparatorIsReadAndRewritten) {
    settings::setText(settings::KursKupovni, "76,5");
    window = Main();
    EXPECT_EQ(KursKupovni, 76.5F);
    EXPECT_EQ(stored("KursKupovni"), "76.5");
}

TEST_F(ProgramStart, DeclinedHelpFileHoldsNothingUp) {
    QFile::remove(path("Tarvello.hlp"));
    boxes.answers << BoxAnswer::No;
    window = Main();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Help file is missing. Would you like to try to find it?");
}

TEST_F(ProgramStart, FailedCheckOfTheDatabaseEndsTheProgram) {
    QFile::remove(path("Tarvello.mdb"));
    boxes.answers << BoxAnswer::No;
    bool built = false;
    window = Main([&](frmMain&) { built = true; });
    EXPECT_EQ(window, nullptr);
    EXPECT_FALSE(built);
    EXPECT_EQ(splashWindows(), 0);
    EXPECT_EQ(boxes.lastText(), "Error(s) encountered while accessing the client's database.\nUser abort.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_EQ(boxes.asked.last().title, "Tarvello");
    EXPECT_EQ(stored("MainPosition"), "(none)");
    EXPECT_EQ(stored("ProperlyClosed"), "(none)");
}

TEST_F(ProgramStart, FailedMainWindowEndsTheProgram) {
    window = Main([](frmMain& main) {
        main.start.onStartStep = [](StartStep step) {
            if (step == StartStep::Tabs) {
                throw platform::RunError(7, "Out of memory");
            }
        };
    });
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(splashWindows(), 0);
}

TEST_F(ProgramStart, SettingsAreTouchedOnlyAsFarAsTheStartGoes) {
    QFile::remove(path("Tarvello.mdb"));
    boxes.answers << BoxAnswer::No;
    window = Main();
    for (const settings::Setting& setting : settings::all()) {
        const QString key = setting.key;
        if (QString(setting.section) == "Settings" && key != "KursKupovni" && key != "HelpFilePath" &&
            key != "DatabasePath") {
            EXPECT_EQ(stored(setting.key), "(none)") << setting.key;
        }
    }
}

TEST_F(ProgramStart, ClosingLeavesNoWindowBehind) {
    window = Main();
    window->close();
    EXPECT_EQ(splashWindows(), 0);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(stored("ToolbarVisible"), "True");
}

TEST_F(ProgramStart, SecondDayFindsWhatTheFirstLeft) {
    addClient("Anic", "Vesna");
    closeDatabases();
    window = Main();
    window->choices.filter.DueDateDiff = 9;
    window->close();
    window = Main();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->choices.filter.DueDateDiff, 9);
    EXPECT_EQ(window->controls.Combo1[0]->entryCount(), 1);
    EXPECT_EQ(window->shop.stages.QuerySuffix, 0);
}

}  // namespace
