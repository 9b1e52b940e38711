#include <QFileInfo>

#include "data/session_fixture.h"
#include "platform/dao/moving.h"
#include "platform/dao/postgres/signpost.h"
#include "support/server_cluster.h"

namespace {

using platform::BoxAnswer;
using platform::BoxButtons;

// The day's beginning and end with a shop that was moved to a server.
class SessionOnServerTest : public SessionFixture {
 protected:
    void SetUp() override {
        SessionFixture::SetUp();
        addClient("Peric");
        closeDatabases();
        const dao::postgres::Address place = database.place();
        dao::moveToServer(
            file(), connect(),
            "host='" + place.host + "' dbname='" + place.dbname + "' user='" + place.user + "'");
        ASSERT_TRUE(dao::DBEngine::IsOnServer(file()));
    }

    QString backup() { return path("Tarvello.bkp"); }
    QString signpostText() { return QString::fromUtf8(bytesOf(databaseFile())); }
    void makeBackup() {
        ASSERT_TRUE(CheckDatabase(errorText));
        ASSERT_TRUE(BackupDatabase(errorText)) << errorText.toStdString();
    }
    // As if the server had gone: the signpost leads to nobody.
    void loseServer() {
        dao::postgres::Address nowhere;
        nowhere.host = "/nowhere";
        nowhere.dbname = "shop";
        dao::postgres::writeSignpost(file(), nowhere);
    }

    tests::ServerDatabase database;
    QString errorText;
};

TEST_F(SessionOnServerTest, TheDayBeginsWithoutAWord) {
    EXPECT_TRUE(CheckDatabase(errorText)) << errorText.toStdString();
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(clientsNamed("Peric"), 1);
    addClient("Jovic");
    EXPECT_EQ(clientsNamed("Jovic"), 1);
}

TEST_F(SessionOnServerTest, TheBackupIsAFileThatOpensByItself) {
    makeBackup();
    EXPECT_FALSE(dao::DBEngine::IsOnServer(backup().toStdString()));
    dao::Database copy = dao::DBEngine::OpenDatabase(backup().toStdString(), false, true, connect());
    EXPECT_EQ(copy.OpenRecordset("SELECT * FROM Customers WHERE Surname='Peric'").RecordCount(), 1);
}

TEST_F(SessionOnServerTest, WithoutItsServerNothingIsRepaired) {
    makeBackup();
    loseServer();
    const QString before = signpostText();
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::No};
    EXPECT_FALSE(CheckDatabase(errorText));
    EXPECT_EQ(errorText, "User abort.");
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_TRUE(boxes.asked[0].text.contains("/nowhere")) << boxes.asked[0].text.toStdString();
    expectBox(1, "Do you wish to use backup database instead?", BoxButtons::YesNo);
    EXPECT_EQ(signpostText(), before);
}

TEST_F(SessionOnServerTest, AWorkstationWorksOnAloneAndIsToldSo) {
    makeBackup();
    loseServer();
    const QString before = signpostText();
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes, BoxAnswer::Ok};
    EXPECT_TRUE(CheckDatabase(errorText)) << errorText.toStdString();
    ASSERT_EQ(boxes.asked.size(), 3);
    const QString told = boxes.asked[2].text;
    EXPECT_TRUE(told.startsWith("From now on this workstation works alone, with its backup of "))
        << told.toStdString();
    EXPECT_TRUE(told.contains("The server gets nothing of what is written here.")) << told.toStdString();
    EXPECT_FALSE(dao::DBEngine::IsOnServer(file()));
    EXPECT_EQ(clientsNamed("Peric"), 1);
    EXPECT_EQ(QString::fromUtf8(bytesOf(path("Tarvello.server.mdb"))), before) << "the way back is kept";
}

TEST_F(SessionOnServerTest, WithoutABackupTheSignpostStays) {
    loseServer();
    const QString before = signpostText();
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes};
    EXPECT_FALSE(CheckDatabase(errorText));
    EXPECT_TRUE(errorText.startsWith("Failed to use backup database.")) << errorText.toStdString();
    EXPECT_EQ(signpostText(), before);
    EXPECT_FALSE(QFileInfo::exists(path("Tarvello.server.mdb")));
}

TEST_F(SessionOnServerTest, ABackupThatCannotBeCopiedPutsTheSignpostBack) {
    makeBackup();
    loseServer();
    const QString before = signpostText();
    QFile::remove(backup());
    QDir().mkpath(backup());  // something is there, and no file
    boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes, BoxAnswer::Ok};
    EXPECT_FALSE(CheckDatabase(errorText));
    EXPECT_EQ(signpostText(), before);
}

TEST_F(SessionOnServerTest, RepairAndCompactionLeaveTheServerAlone) {
    ASSERT_TRUE(CheckDatabase(errorText));
    const QString before = signpostText();
    EXPECT_TRUE(RepairAndCompactDatabase(errorText, true)) << errorText.toStdString();
    EXPECT_EQ(signpostText(), before);
    EXPECT_EQ(clientsNamed("Peric"), 1);
}

TEST_F(SessionOnServerTest, TheWholeServerIsSetBackOnlyWhenAsked) {
    makeBackup();
    addClient("Jovic");
    closeDatabases();
    boxes.answers = {BoxAnswer::No};
    EXPECT_FALSE(UseBackupDatabase(errorText, false));
    EXPECT_EQ(errorText, "");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(
        boxes.asked[0].text.startsWith("Do you wish to set the whole server back, for every workstation"));
    EXPECT_EQ(clientsNamed("Jovic"), 1);
    boxes.answers = {BoxAnswer::Yes};
    EXPECT_TRUE(UseBackupDatabase(errorText, false)) << errorText.toStdString();
    EXPECT_EQ(clientsNamed("Jovic"), 0);
    EXPECT_EQ(clientsNamed("Peric"), 1);
    EXPECT_TRUE(dao::DBEngine::IsOnServer(file()));
}

}  // namespace
