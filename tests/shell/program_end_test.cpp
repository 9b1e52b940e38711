#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QThread>
#include <csignal>

#include "platform/controls/long_wait.h"
#include "platform/dao/breaking_off.h"
#include "platform/dao/error.h"
#include "shell/program_end.h"
#include "support/fixture.h"

namespace {

constexpr int kPatience = 120000;  // milliseconds; the machine may have other things to do

// The program itself, on a shop with one client, one computer and one service, walked to a place where it is
// asked to end. QEvent::Quit is how a desktop's log-out arrives.
class EndFromOutside : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        ASSERT_TRUE(QFile::copy(buildFolder() + "/Tarvello", path("Tarvello")));
        addService(addComputer(addClient()));
        closeDatabases();
    }
    void TearDown() override {
        program.kill();
        program.waitForFinished(kPatience);
        DeliveredFixture::TearDown();
    }
    static QString buildFolder() { return QFileInfo(QLatin1String(tests::kDeliveredFolder)).path(); }

    QProcessEnvironment surroundings(const QString& where) const {
        QProcessEnvironment given = QProcessEnvironment::systemEnvironment();
        given.remove("LC_ALL");
        given.insert("LANG", "C.UTF-8");
        given.insert("HOME", path(""));
        given.insert("XDG_CONFIG_HOME", path("config"));
        given.insert("XDG_RUNTIME_DIR", path(""));
        given.insert("QT_QPA_PLATFORM", "offscreen");
        given.insert("QT_PLUGIN_PATH", buildFolder() + "/walk");
        given.insert("QT_QPA_GENERIC_PLUGINS", QStringLiteral("walk:ending-%1:%2:1").arg(where, path("")));
        return given;
    }
    // True when it stands there.
    bool startUntil(const QString& where) {
        program.setProcessEnvironment(surroundings(where));
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(path("Tarvello"), QStringList());
        while (!said.contains("ready") && program.waitForReadyRead(kPatience)) {
            said += program.readAll();
        }
        return said.contains("ready");
    }
    void signal(int number) { ::kill(static_cast<pid_t>(program.processId()), number); }
    void expectClosed() {
        ASSERT_TRUE(program.waitForFinished(kPatience)) << "the program goes on";
        said += program.readAll();
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << said.toStdString();
        EXPECT_EQ(program.exitCode(), 0) << said.toStdString();
    }
    // Its queries are gone, the backup is the file as it was left, the settings are kept.
    void expectLeftInOrder() {
        QFile backup(path("Tarvello.bkp"));
        QFile database(databaseFile());
        ASSERT_TRUE(backup.open(QIODevice::ReadOnly)) << "no backup";
        ASSERT_TRUE(database.open(QIODevice::ReadOnly));
        EXPECT_EQ(backup.readAll(), database.readAll());
        EXPECT_EQ(openDatabase().QueryDefs().Count(), 1);
        QFile settings(path("config/Tarvello/Tarvello.ini"));
        ASSERT_TRUE(settings.open(QIODevice::ReadOnly)) << "no settings";
        EXPECT_TRUE(settings.readAll().contains("MainPosition="));
    }
    void expectNothingWritten() {
        EXPECT_EQ(countRows("Customers"), 1);
        EXPECT_EQ(countRows("Services"), 1);
        EXPECT_EQ(countRows("InvoiceData"), 0);
    }

    QProcess program;
    QByteArray said;
};

// A filter of a large shop, say: nobody is there to wait for it.
TEST(EndDuringAWait, TheWorkThatGoesOnIsLeft) {
    ProgramEnd end;
    end.ask();
    const platform::LongWait wait(QStringLiteral("Filtering data... Please wait..."));
    QElapsedTimer since;
    since.start();
    const auto work = [&] {
        while (since.elapsed() < kPatience) {
            dao::needGoingOn();
            QThread::msleep(5);
        }
    };
    EXPECT_THROW(platform::LongWait::run(work), dao::Error);
    EXPECT_TRUE(wait.isLeft());
}

class EndBySignal : public EndFromOutside, public ::testing::WithParamInterface<int> {};

TEST_P(EndBySignal, ClosesAsTheCloseButtonDoes) {
    ASSERT_TRUE(startUntil("tip")) << said.toStdString();
    signal(GetParam());
    expectClosed();
    expectLeftInOrder();
    expectNothingWritten();
}

INSTANTIATE_TEST_SUITE_P(Each, EndBySignal, ::testing::Values(SIGTERM, SIGHUP, SIGINT));

TEST_F(EndFromOutside, WhatIsBeingTypedIsNeitherAskedAboutNorSaved) {
    ASSERT_TRUE(startUntil("typing")) << said.toStdString();
    signal(SIGTERM);
    expectClosed();
    expectLeftInOrder();
    expectNothingWritten();
}

TEST_F(EndFromOutside, ABoxIsAnsweredByNobodyAndToldToTheLog) {
    ASSERT_TRUE(startUntil("box")) << said.toStdString();
    signal(SIGTERM);
    expectClosed();
    expectLeftInOrder();
    expectNothingWritten();
    EXPECT_TRUE(said.contains("Missing Client's Address - Street Name & Number.")) << said.toStdString();
}

TEST_F(EndFromOutside, TheServiceEditorIsCancelled) {
    ASSERT_TRUE(startUntil("editor")) << said.toStdString();
    signal(SIGTERM);
    expectClosed();
    expectLeftInOrder();
    expectNothingWritten();
}

TEST_F(EndFromOutside, WindowsOverWindowsAreCancelledOneByOne) {
    ASSERT_TRUE(startUntil("quantity")) << said.toStdString();
    signal(SIGTERM);
    expectClosed();
    expectLeftInOrder();
    expectNothingWritten();
}

TEST_F(EndFromOutside, TheDesktopsLogOutClosesItToo) {
    ASSERT_TRUE(startUntil("logout")) << said.toStdString();
    expectClosed();
    expectLeftInOrder();
    expectNothingWritten();
}

// Asked by the session manager to commit its data, it neither asks back nor saves.
TEST_F(EndFromOutside, TheSessionManagersQuestionAtALogOutClosesIt) {
    ASSERT_TRUE(startUntil("commit-typing")) << said.toStdString();
    expectClosed();
    expectLeftInOrder();
    expectNothingWritten();
}

TEST_F(EndFromOutside, TheSessionManagersQuestionCancelsWhatIsOpen) {
    ASSERT_TRUE(startUntil("commit-editor")) << said.toStdString();
    expectClosed();
    expectLeftInOrder();
    expectNothingWritten();
}

// Before there is a window, the questions of the start are all there is to end.
TEST_F(EndFromOutside, AQuestionOfTheStartEndsWithTheProgram) {
    ASSERT_TRUE(QFile::remove(path("Tarvello.hlp")));
    ASSERT_TRUE(startUntil("start")) << said.toStdString();
    signal(SIGTERM);
    expectClosed();
}

}  // namespace
