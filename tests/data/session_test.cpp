#include "data/session.h"

#include <gmock/gmock.h>

#include <QFileInfo>

#include "common/scramble.h"
#include "data/session_fixture.h"

namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

// ----- the password

TEST(Password, HasTwelvePrintableCharacters) {
    const QString password = BuildDatabasePassword();
    ASSERT_EQ(password.size(), 12);
    for (const QChar c : password) {
        EXPECT_TRUE(c.unicode() > 32 && c.unicode() < 127) << QString(c).toStdString();
        EXPECT_NE(c, QLatin1Char(';'));  // would end the connect text
    }
    EXPECT_EQ(BuildDatabasePassword(), password);
    EXPECT_EQ(connectText(), ";pwd=" + password);
}

TEST(Password, StandsNowhereWhole) {
    const QString password = BuildDatabasePassword();
    const QString plain = ScrambleOrder(password, false);
    EXPECT_NE(plain, password);
    QFile program(QStringLiteral("/proc/self/exe"));
    ASSERT_TRUE(program.open(QIODevice::ReadOnly));
    const QByteArray bytes = program.readAll();
    const auto wide = [](const QString& text) {
        return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    };
    for (const QString& text : {password, plain}) {
        EXPECT_FALSE(bytes.contains(text.toLatin1()));
        EXPECT_FALSE(bytes.contains(wide(text)));
    }
}

// ----- finding the file

class CheckDatabaseTest : public SessionFixture {
 protected:
    bool check() { return CheckDatabase(errorText); }
    QString errorText = "left over";
};

TEST_F(CheckDatabaseTest, AFileInOrderOpensWithoutAWord) {
    EXPECT_TRUE(check());
    EXPECT_EQ(errorText, "");
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_TRUE(boxes.fileQuestions.isEmpty());
    EXPECT_EQ(platform::GetSetting("Tarvello", "Settings", "DatabasePath"), databaseFile());
}

TEST_F(CheckDatabaseTest, HoldsNoConnectionAfterwards) {
    ASSERT_TRUE(check());
    SecondProcess other([this](const SecondProcess::Side& side) {
        dao::DBEngine::OpenDatabase(file(), true, false, connect());
        side.ready();
    });
    EXPECT_TRUE(other.waitReady());
}

TEST_F(CheckDatabaseTest, LooksInTheProgramFolderUnlessTheSettingSaysOtherwise) {
    EXPECT_EQ(databasePath(), databaseFile());
    settings::setText(settings::DatabasePath, "\\srv\\shop\\Tarvello.mdb");
    EXPECT_EQ(databasePath(), platform::nativePath("/srv/shop/Tarvello.mdb"));
}

TEST_F(CheckDatabaseTest, AMissingFileIsAskedFor) {
    removeDatabase();
    check();
    ASSERT_EQ(boxes.fileQuestions.size(), 1);
    EXPECT_EQ(boxes.fileQuestions[0].title, "Find missing \"Tarvello.mdb\" database...");
    EXPECT_EQ(boxes.fileQuestions[0].filter,
              "Microsoft Access Baze Podataka (*.mdb)|*.mdb|Svi Fajlovi (*.*)|*.*");
    EXPECT_EQ(boxes.fileQuestions[0].folder, platform::nativePath(platform::programFolder()));
}

TEST_F(CheckDatabaseTest, TheChosenFileIsUsedAndRemembered) {
    const QString elsewhere = moveDatabaseTo("server", "TARVELLO.MDB");
    boxes.files = {"  " + elsewhere + " "};
    EXPECT_TRUE(check());
    EXPECT_EQ(databasePath(), elsewhere);
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(CheckDatabaseTest, AFileOfAnotherNameIsRefusedAndTheDialogComesAgain) {
    const QString elsewhere = moveDatabaseTo("server", "Tarvello.mdb");
    QFile::copy(elsewhere, path("Other.mdb"));
    boxes.files = {path("Other.mdb"), elsewhere};
    EXPECT_TRUE(check());
    expectBoxes({{"Please find 'Tarvello.mdb' database file.", BoxButtons::Ok}});
    EXPECT_EQ(boxes.fileQuestions.size(), 2);
    EXPECT_EQ(databasePath(), elsewhere);
}

TEST_F(CheckDatabaseTest, ASettingThatNamesAnotherFileIsToldFirst) {
    QFile::rename(databaseFile(), path("Shop.mdb"));
    settings::setText(settings::DatabasePath, path("Shop.mdb"));
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::No};
    EXPECT_FALSE(check());
    expectBoxes({{"Please find 'Tarvello.mdb' database file.", BoxButtons::Ok},
                 {"Do you wish to use backup database instead?", BoxButtons::YesNo}});
}

TEST_F(CheckDatabaseTest, CancellingTheDialogOffersTheBackupAndNoEndsIt) {
    removeDatabase();
    boxes.answers = {BoxAnswer::No};
    EXPECT_FALSE(check());
    EXPECT_EQ(errorText, "User abort.");
    expectBoxes({{"Do you wish to use backup database instead?", BoxButtons::YesNo}});
}

TEST_F(CheckDatabaseTest, TheBackupTakesTheMissingFilesPlace) {
    makeBackupWithClient("Sacuvan");
    removeDatabase();
    boxes.answers = {BoxAnswer::Yes};
    EXPECT_TRUE(check());
    expectBoxes({{"Do you wish to use backup database instead?", BoxButtons::YesNo}});  // and not 1036
    EXPECT_EQ(clientsNamed("Sacuvan"), 1);
}

// Whatever was looked at in the dialog before: the backup comes back under the path of the settings.
TEST_F(CheckDatabaseTest, AFileThatWasRefusedIsNotProvedInTheBackupsPlace) {
    makeBackupWithClient("Sacuvan");
    removeDatabase();
    write(path("Other.mdb"), "no database");
    boxes.files = {path("Other.mdb")};  // then the dialog is cancelled
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes};
    EXPECT_TRUE(check()) << errorText.toStdString();
    expectBoxes({{"Please find 'Tarvello.mdb' database file.", BoxButtons::Ok},
                 {"Do you wish to use backup database instead?", BoxButtons::YesNo}});
    EXPECT_EQ(bytesOf(path("Other.mdb")), "no database");
    EXPECT_EQ(clientsNamed("Sacuvan"), 1);
}

TEST_F(CheckDatabaseTest, NoBackupToTakeIsTold) {
    removeDatabase();
    boxes.answers = {BoxAnswer::Yes};
    EXPECT_FALSE(check());
    EXPECT_EQ(errorText, "Failed to use backup database.\n\nCouldn't find the backup database " +
                             platform::nativePath(path("Tarvello.bkp")));
}

// ----- proving the file

TEST_F(CheckDatabaseTest, DamageIsRepairedAfterANotice) {
    fillWithClients(400);
    damageAPage();
    ASSERT_FALSE(opens());
    EXPECT_TRUE(check()) << errorText.toStdString();
    expectBoxes({{"Database needs to be reapired.", BoxButtons::Ok}});
    EXPECT_TRUE(opens());
    EXPECT_GE(countRows("Customers"), 350);
}

TEST_F(CheckDatabaseTest, AFolderThatTakesNoFilesCountsAsDamage) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs to become somebody else";
    }
    const QString server = moveDatabaseTo("server", "Tarvello.mdb");
    settings::setText(settings::DatabasePath, server);
    const QByteArray before = bytesOf(server);
    shareFolder(path("server"), 0555);
    const QString answer = asAnotherUser([&](QString& reason) {
        boxes.answers = {BoxAnswer::Ok, BoxAnswer::No};
        const bool done = CheckDatabase(reason);
        reason += "\n" + boxes.lastText();
        return done;
    });
    EXPECT_TRUE(
        answer.startsWith("User abort.\nRepair database failed\nError(s) occured while Repairing and "
                          "Compacting database:\n[3050] "))
        << answer.toStdString();
    EXPECT_EQ(bytesOf(server), before);
}

class UnrepairableTest : public CheckDatabaseTest, public testing::WithParamInterface<const char*> {
 protected:
    void spoil() { spoilFile(databaseFile(), GetParam()); }
};

TEST_P(UnrepairableTest, NoEndsIt) {
    spoil();
    const QByteArray before = bytesOf(databaseFile());
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::No};
    EXPECT_FALSE(check());
    EXPECT_EQ(errorText, "User abort.");
    ASSERT_EQ(boxes.asked.size(), 2);
    expectBox(0, "Database needs to be reapired.", BoxButtons::Ok);
    const QString& question = boxes.asked[1].text;
    EXPECT_TRUE(question.startsWith(
        "Repair database failed\nError(s) occured while Repairing and Compacting database:\n["))
        << question.toStdString();
    EXPECT_TRUE(question.endsWith("\nDo you wish to use backup database instead?"));
    EXPECT_EQ(boxes.asked[1].buttons, BoxButtons::YesNo);
    EXPECT_EQ(boxes.asked[1].icon, BoxIcon::Exclamation);
    EXPECT_EQ(bytesOf(databaseFile()), before);
}

TEST_P(UnrepairableTest, YesTakesTheBackupAndTestsAgain) {
    makeBackupWithClient("Sacuvan");
    QString reason;  // since then compacted: the backup tells nothing of this file any more
    ASSERT_TRUE(RepairAndCompactDatabase(reason, true)) << reason.toStdString();
    spoil();
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes};
    EXPECT_TRUE(check()) << errorText.toStdString();
    EXPECT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(clientsNamed("Sacuvan"), 1);
}

TEST_P(UnrepairableTest, YesWithoutABackupIsTold) {
    spoil();
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes};
    EXPECT_FALSE(check());
    EXPECT_EQ(errorText, "Failed to use backup database.\n\nCouldn't find the backup database " +
                             platform::nativePath(path("Tarvello.bkp")));
}

TEST_P(UnrepairableTest, ABackupThatIsDamagedTooEndsWithTheEnginesErrors) {
    spoil();
    ASSERT_TRUE(QFile::copy(databaseFile(), path("Tarvello.bkp")));
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes};
    EXPECT_FALSE(check());
    EXPECT_EQ(boxes.asked.size(), 2);  // the repair is not tried twice
    EXPECT_EQ(errorText, "Error(s) occured while accessing the database:\n" + GetDAOErrors());
    EXPECT_TRUE(errorText.contains("\n["));
}

INSTANTIATE_TEST_SUITE_P(EveryKind, UnrepairableTest,
                         testing::Values("no database", "empty", "first page zeroed",
                                         "first page overwritten", "cut in the first page",
                                         "another password"),
                         [](const auto& kind) {
                             std::string name = kind.param;
                             std::replace(name.begin(), name.end(), ' ', '_');
                             return name;
                         });

TEST_F(CheckDatabaseTest, ADamagedFileThatAnotherWorkstationHasOpenIsNotTakenFromIt) {
    makeBackupWithClient("Sacuvan");
    SecondProcess other([this](const SecondProcess::Side& side) {
        dao::Database database = dao::DBEngine::OpenDatabase(file(), true, false, connect());
        side.ready();
        side.untilReleased();
        dao::Recordset rows = database.OpenRecordset("Customers");
        rows.AddNew();
        rows.Fields("Surname") = "Kasniji";
        rows.Update();
        rows.Close();
        database.Close();
        side.ready();
    });
    ASSERT_TRUE(other.waitReady());
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes};
    EXPECT_FALSE(check());
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_TRUE(boxes.asked[1].text.contains("[3356] ") || boxes.asked[1].text.contains("[3045] "))
        << boxes.asked[1].text.toStdString();
    EXPECT_TRUE(
        errorText.startsWith("Failed to use backup database.\n\nAn unexpected error has occured while "
                             "reverting to backup database:\n[3"))
        << errorText.toStdString();
    other.release();
    ASSERT_TRUE(other.waitReady());
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(clientsNamed("Kasniji"), 1);  // what the other wrote meanwhile is in the shop's file
}

TEST_F(CheckDatabaseTest, AnotherWorkstationInTheFileDoesNotDisturb) {
    SecondProcess other([this](const SecondProcess::Side& side) {
        dao::Database database = dao::DBEngine::OpenDatabase(file(), false, false, connect());
        side.ready();
        side.untilReleased();
    });
    ASSERT_TRUE(other.waitReady());
    EXPECT_TRUE(check());
    EXPECT_TRUE(boxes.asked.isEmpty());
}

}  // namespace
