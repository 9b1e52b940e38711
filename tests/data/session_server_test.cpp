#include <QFileInfo>

#include "data/schema.h"
#include "data/session_fixture.h"
#include "platform/dao/moving.h"
#include "platform/dao/postgres/connection.h"
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
        dao::moveToServer(file(), connect(), tests::placeWords(database.place()));
        ASSERT_TRUE(dao::DBEngine::IsOnServer(file()));
    }

    int clientsInBackup(const std::string& surname) {
        dao::Database copy = dao::DBEngine::OpenDatabase(backup().toStdString(), false, true, connect());
        return static_cast<int>(
            copy.OpenRecordset("SELECT * FROM Customers WHERE Surname='" + surname + "'").RecordCount());
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

TEST_F(SessionOnServerTest, ABackupIsMadeOnlyWhenSomethingHasChanged) {
    makeBackup();
    const QByteArray first = bytesOf(backup());
    const int suffix = CreateWorkQueries(openDatabase());
    DropWorkQueries(openDatabase(), suffix);
    closeDatabases();
    EXPECT_TRUE(BackupDatabase(errorText));
    EXPECT_TRUE(bytesOf(backup()) == first) << "the queries of a day's work are no change";
    addClient("Jovic");
    closeDatabases();
    EXPECT_TRUE(BackupDatabase(errorText));
    EXPECT_EQ(clientsInBackup("Jovic"), 1);
    const QByteArray second = bytesOf(backup());
    EXPECT_TRUE(BackupDatabase(errorText));
    EXPECT_TRUE(bytesOf(backup()) == second);
}

TEST_F(SessionOnServerTest, ABackupThatIsNotTheOneThatWasMadeIsMadeAnew) {
    makeBackup();
    const QByteArray first = bytesOf(backup());
    for (const std::function<void()>& spoil : std::initializer_list<std::function<void()>>{
             [&] { QFile::remove(backup()); },
             [&] { write(backup(), "yesterday's"); },
             [&] { write(backup(), first); },  // an earlier backup, put back
             [&] { overwrite(backup(), kPage, rubbish(1)); },
             [&] { QFile::remove(backup() + ".note"); },
             [&] { write(backup() + ".note", "Tarvello backup 1\n\n"); },
         }) {
        addClient("Jovic");
        closeDatabases();
        ASSERT_TRUE(BackupDatabase(errorText));
        const QByteArray sound = bytesOf(backup());
        spoil();
        EXPECT_TRUE(BackupDatabase(errorText)) << errorText.toStdString();
        EXPECT_FALSE(bytesOf(backup()) == sound) << "it was written anew";
        EXPECT_EQ(clientsInBackup("Peric"), 1);
    }
}

TEST_F(SessionOnServerTest, TheBackupOfAnotherShopIsNotTakenForOnesOwn) {
    makeBackup();
    const QByteArray first = bytesOf(backup());
    const tests::ServerDatabase twin;
    const QString second = path("Second.mdb");
    ASSERT_TRUE(QFile::copy(path("Tarvello.before-server.mdb"), second));
    dao::moveToServer(second.toStdString(), connect(), tests::placeWords(twin.place()));
    ASSERT_TRUE(QFile::remove(databaseFile()));
    ASSERT_TRUE(QFile::copy(second, databaseFile()));
    makeBackup();
    EXPECT_FALSE(bytesOf(backup()) == first);
}

TEST_F(SessionOnServerTest, ABackupTellsHowFarItIs) {
    ASSERT_TRUE(CheckDatabase(errorText));
    std::int64_t last = 0;
    std::int64_t all = 0;
    int times = 0;
    const auto watch = [&](std::int64_t done, std::int64_t total) {
        EXPECT_GE(done, last);
        last = done;
        all = total;
        ++times;
    };
    EXPECT_TRUE(BackupDatabase(errorText, watch));
    EXPECT_GT(times, 2);
    EXPECT_GT(last, 0);
    EXPECT_EQ(last, all);
    times = 0;
    EXPECT_TRUE(BackupDatabase(errorText, watch));
    EXPECT_EQ(times, 0) << "nothing was to be done";
}

TEST_F(SessionOnServerTest, WithoutItsServerTheFormerBackupStays) {
    makeBackup();
    const QByteArray before = bytesOf(backup());
    loseServer();
    EXPECT_FALSE(BackupDatabase(errorText));
    EXPECT_EQ(errorText,
              "Database is opened in multiuser environment and at least one user is on line thus it is "
              "impossible to create backup database.");
    EXPECT_TRUE(bytesOf(backup()) == before);
}

TEST_F(SessionOnServerTest, ANoteThatCannotBeWrittenMakesNoBackupFail) {
    ASSERT_TRUE(QDir().mkpath(backup() + ".note"));
    makeBackup();
    const QByteArray first = bytesOf(backup());
    EXPECT_TRUE(BackupDatabase(errorText)) << errorText.toStdString();
    EXPECT_FALSE(bytesOf(backup()) == first);
    EXPECT_EQ(clientsInBackup("Peric"), 1);
}

TEST_F(SessionOnServerTest, AShopOfANewerProgramIsNeitherOpenedNorMended) {
    const QString before = signpostText();
    openDatabase().setForm(data::kShopForm + 1);
    closeDatabases();
    EXPECT_FALSE(CheckDatabase(errorText));
    EXPECT_EQ(errorText, newerDatabaseText());
    EXPECT_TRUE(boxes.asked.isEmpty()) << "there is nothing to ask";
    EXPECT_EQ(signpostText(), before);
    EXPECT_FALSE(QFileInfo::exists(backup()));
}

// While the server was away another copy of the program came in and was given our number.
TEST_F(SessionOnServerTest, ANumberThatWasTakenMeanwhileIsAnothersForGood) {
    dao::Database db = openDatabase();
    const int number = CreateWorkQueries(db);
    dao::postgres::Connection keeper(database.place());
    const auto lock = [&](const char* function) {
        constexpr int kNumbers = 76002;
        return keeper
            .run(std::string("SELECT ") + function + "($1, $2)::text <> 'false'",
                 dao::postgres::Parameters().integer4(kNumbers).integer4(number))
            .boolean(0, 0);
    };
    keeper.run(
        "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity"
        " WHERE datname = current_database() AND pid <> pg_backend_pid()");
    ASSERT_TRUE(lock("pg_try_advisory_lock"));
    EXPECT_FALSE(WorkNumberLost()) << "nobody has looked yet";
    const auto refused = [&](const std::function<void()>& body) {
        try {
            body();
        } catch (const dao::Error& error) {
            EXPECT_EQ(error.Number(), dao::errLocked);
            EXPECT_EQ(
                error.Description(),
                "While the server was away another copy of the program has taken this one's number; the "
                "database has to be opened anew.");
            return true;
        }
        return false;
    };
    EXPECT_TRUE(refused([&] { db.OpenRecordset("Customers"); }));
    EXPECT_TRUE(WorkNumberLost());
    lock("pg_advisory_unlock");
    EXPECT_TRUE(refused([&] { db.OpenRecordset("Customers"); })) << "the other has made the queries its own";
    EXPECT_TRUE(refused([&] { DropWorkQueries(db, number + 1); })) << "nor are they ours to take away";
    lock("pg_try_advisory_lock");
    EXPECT_EQ(CreateWorkQueries(db), number + 1);
    EXPECT_FALSE(WorkNumberLost());
    EXPECT_EQ(db.OpenRecordset("QDCustomers" + std::to_string(number + 1)).RecordCount(), 1);
    DropWorkQueries(db, number + 1);
    EXPECT_NO_THROW(db.QueryDefs()["QDCustomers" + std::to_string(number)]) << "the other's are still there";
}

TEST_F(SessionOnServerTest, ACopyThatLostItsNumberGoesWithoutTouchingTheOthersQueries) {
    dao::Database db = openDatabase();
    const int number = CreateWorkQueries(db);
    dao::postgres::Connection keeper(database.place());
    keeper.run(
        "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity"
        " WHERE datname = current_database() AND pid <> pg_backend_pid()");
    keeper.run("SELECT pg_advisory_lock(76002, $1)", dao::postgres::Parameters().integer4(number));
    EXPECT_THROW(DropWorkQueries(db, number), dao::Error);
    EXPECT_FALSE(WorkNumberLost()) << "it has let go";
    EXPECT_NO_THROW(db.QueryDefs()["QDCustomers" + std::to_string(number)]);
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
