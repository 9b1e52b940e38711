#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <vector>

#include "data/session.h"
#include "data/session_fixture.h"
#include "support/left_wait.h"

namespace {

using platform::BoxAnswer;
using platform::BoxButtons;

constexpr rlim_t kSmall = 40000;  // far less than the delivered database, far more than a line of text

class MaintenanceTest : public SessionFixture {
 protected:
    QString backup() const { return platform::nativePath(path("Tarvello.bkp")); }
    QString temporary() const { return platform::nativePath(path("Tarvello.$$1")); }

    // On a workstation whose disk takes only small files.
    QString withASmallDisk(bool (*routine)(QString&)) {
        return elsewhere([] { limitFiles(kSmall); }, routine);
    }
    static bool backUp(QString& reason) { return BackupDatabase(reason); }
    bool isWhole(const QString& name) {
        // Under a name of its own, so that it shares no lock file with the shop's database.
        const QString probe = path("probe_" + QString::number(++probes_) + ".mdb");
        EXPECT_TRUE(QFile::copy(name, probe));
        dao::DBEngine::RepairDatabase(probe.toStdString(), connect());
        return !dao::DBEngine::LastRepair().damaged;
    }

    QString errorText = "left over";

 private:
    int probes_ = 0;
};

// ----- BackupDatabase

TEST_F(MaintenanceTest, ABackupIsACopyThatOpens) {
    addClient("Sacuvan");
    closeDatabases();
    EXPECT_TRUE(BackupDatabase(errorText));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(bytesOf(backup()), bytesOf(databaseFile()));
    EXPECT_FALSE(QFile::exists(temporary()));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(MaintenanceTest, ABackupReplacesTheFormerOne) {
    write(backup(), "yesterday's");
    write(temporary(), "left by a crash");
    EXPECT_TRUE(BackupDatabase(errorText));
    EXPECT_EQ(bytesOf(backup()), bytesOf(databaseFile()));
    EXPECT_FALSE(QFile::exists(temporary()));
}

// The former backup is saved first, the database copied, and the copy read again.
TEST_F(MaintenanceTest, ABackupTellsHowFarItIs) {
    dao::DBEngine::OpenDatabase(file(), false, false, connect()).Close();  // the program knows its password
    for (const bool hasFormer : {false, true}) {
        SCOPED_TRACE(hasFormer);
        std::vector<double> parts;
        EXPECT_TRUE(BackupDatabase(errorText, [&](std::int64_t done, std::int64_t total) {
            parts.push_back(static_cast<double>(done) / static_cast<double>(total));
        }));
        ASSERT_EQ(parts.size(), hasFormer ? 3U : 2U) << "less than a piece is copied here at one time";
        EXPECT_TRUE(std::is_sorted(parts.begin(), parts.end()));
        EXPECT_NEAR(parts.front(), hasFormer ? 1.0 / 3 : 0.5, 0.001);
        EXPECT_EQ(parts.back(), 1.0);
    }
}

TEST_F(MaintenanceTest, TheBackupStaysWithTheWorkstation) {
    const QString server = moveDatabaseTo("server", "Tarvello.mdb");
    settings::setText(settings::DatabasePath, server);
    EXPECT_TRUE(BackupDatabase(errorText));
    EXPECT_TRUE(QFile::exists(backup()));
    EXPECT_FALSE(QFile::exists(path("server/Tarvello.bkp")));
}

TEST_F(MaintenanceTest, ABackupOfAMissingDatabaseIsRefused) {
    removeDatabase();
    write(backup(), "yesterday's");
    EXPECT_FALSE(BackupDatabase(errorText));
    EXPECT_EQ(errorText, "Couldn't find the original database " + platform::nativePath(databaseFile()) +
                             " in order to backup it.");
    EXPECT_EQ(bytesOf(backup()), "yesterday's");
}

TEST_F(MaintenanceTest, ABackupThatFailsLeavesTheFormerOne) {
    write(backup(), "yesterday's");
    EXPECT_EQ(withASmallDisk(&backUp),
              "Database is opened in multiuser environment and at least one user is on line thus it is "
              "impossible to "
              "create backup database.");
    EXPECT_EQ(bytesOf(backup()), "yesterday's");
    EXPECT_TRUE(opens());
}

// The page is none that closing the program would ever read; but the backup is all that the shop has of it.
TEST_F(MaintenanceTest, ADamagedDatabaseNeverReplacesASoundBackup) {
    makeBackupWithClient("Sacuvan");
    const QByteArray sound = bytesOf(backup());
    const qint64 last = bytesOf(databaseFile()).size() / kPage - 1;
    overwrite(databaseFile(), last * kPage, QByteArray(kPage, '\0'));
    ASSERT_TRUE(opens());

    EXPECT_FALSE(BackupDatabase(errorText));
    EXPECT_EQ(errorText,
              "Database is opened in multiuser environment and at least one user is on line thus it is "
              "impossible to create backup database.");
    EXPECT_EQ(bytesOf(backup()), sound);

    // The next start finds the damage, wherever it is, and repairs it.
    EXPECT_TRUE(CheckDatabase(errorText)) << errorText.toStdString();
    expectBoxes({{"Database needs to be reapired.", BoxButtons::Ok}});
    EXPECT_TRUE(isWhole(databaseFile()));
    EXPECT_TRUE(QFile::exists(path("Tarvello.damaged.mdb")));
    EXPECT_TRUE(BackupDatabase(errorText));
}

TEST_F(MaintenanceTest, AFileWithoutItsFirstPageIsRepairedWithEveryRow) {
    const bool byBackup[] = {true, false};
    for (const bool backupKnows : byBackup) {
        SCOPED_TRACE(backupKnows ? "by the backup" : "by the workstation's notes");
        addClient(backupKnows ? "Prvi" : "Drugi");
        closeDatabases();
        if (backupKnows) {
            ASSERT_TRUE(BackupDatabase(errorText));
        } else {
            ASSERT_TRUE(CheckDatabase(errorText));
            QFile::remove(backup());
        }
        boxes.asked.clear();
        overwrite(databaseFile(), 0, rubbish(kPage));
        EXPECT_TRUE(CheckDatabase(errorText)) << errorText.toStdString();
        expectBoxes({{"Database needs to be reapired.", BoxButtons::Ok}});
        EXPECT_EQ(clientsNamed("Prvi"), 1);
        EXPECT_EQ(clientsNamed("Drugi"), backupKnows ? 0 : 1);
        QFile::remove(path("Tarvello.notes"));
    }
}

TEST_F(MaintenanceTest, AFirstBackupThatFailsLeavesNone) {
    EXPECT_TRUE(withASmallDisk(&backUp).startsWith("Database is opened in multiuser environment"));
    EXPECT_FALSE(QFile::exists(backup()));
}

TEST_F(MaintenanceTest, AFormerBackupThatCannotBeSavedIsTold) {
    const QByteArray former = rubbish(2 * kSmall);
    write(backup(), former);
    const QString answer = withASmallDisk(&backUp);
    EXPECT_TRUE(answer.startsWith("Couldn't initiate database backup process:\n[")) << answer.toStdString();
    EXPECT_EQ(bytesOf(backup()), former);
}

TEST_F(MaintenanceTest, ABackupIsConsistentWhileAnotherWorkstationWrites) {
    constexpr int kClients = 1500;
    fillWithClients(kClients, 8000);
    // Every statement of the other changes every row of a large file, so that a copy that does not wait for
    // it is all but sure to hold two moments.
    SecondProcess other([this](const SecondProcess::Side& side) {
        dao::Database database = dao::DBEngine::OpenDatabase(file(), false, false, connect());
        for (int i = 1;; ++i) {
            database.Execute("UPDATE Customers SET ICQ='" + std::to_string(i) + "'");
            if (i == 1) {
                side.ready();
            }
        }
    });
    ASSERT_TRUE(other.waitReady());
    std::set<std::string> moments;
    for (int i = 0; i < 12; ++i) {
        ASSERT_TRUE(BackupDatabase(errorText)) << errorText.toStdString();
        ASSERT_TRUE(isWhole(backup()));
        const QString copy = path("backup" + QString::number(i) + ".mdb");
        ASSERT_TRUE(QFile::copy(backup(), copy));
        dao::Database database = dao::DBEngine::OpenDatabase(copy.toStdString(), false, false, connect());
        dao::Recordset rows = database.OpenRecordset("Customers", dao::dbOpenSnapshot);
        ASSERT_EQ(rows.RecordCount(), kClients);
        std::set<std::string> values;
        for (; !rows.EOF(); rows.MoveNext()) {
            values.insert(rows["ICQ"].asText());
        }
        EXPECT_EQ(values.size(), 1U);
        moments.insert(values.begin(), values.end());
        rows.Close();
        database.Close();
    }
    EXPECT_GT(moments.size(), 1U);  // the other one did get to write between the copies
    other.kill();
}

// ----- UseBackupDatabase

bool useBackupSilently(QString& errorText) {
    return UseBackupDatabase(errorText, true);
}

TEST_F(MaintenanceTest, RevertingNeedsABackup) {
    EXPECT_FALSE(UseBackupDatabase(errorText, false));
    EXPECT_EQ(errorText, "Couldn't find the backup database " + backup());
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_TRUE(opens());
}

TEST_F(MaintenanceTest, RevertingAsksFirstAndNoChangesNothing) {
    makeBackupWithClient("Sacuvan");
    const QByteArray before = bytesOf(databaseFile());
    boxes.answers = {BoxAnswer::No};
    EXPECT_FALSE(UseBackupDatabase(errorText, false));
    EXPECT_EQ(errorText, "");
    expectBoxes(
        {{"You're about to delete the original database and use backup one. Are you sure you want to "
          "proceed?",
          BoxButtons::YesNo}});
    EXPECT_EQ(bytesOf(databaseFile()), before);
}

TEST_F(MaintenanceTest, RevertingPutsTheBackupInTheDatabasesPlace) {
    makeBackupWithClient("Sacuvan");
    boxes.answers = {BoxAnswer::Yes};
    EXPECT_TRUE(UseBackupDatabase(errorText, false)) << errorText.toStdString();
    EXPECT_EQ(bytesOf(databaseFile()), bytesOf(backup()));
    EXPECT_FALSE(QFile::exists(temporary()));
    EXPECT_EQ(clientsNamed("Sacuvan"), 1);
}

TEST_F(MaintenanceTest, RevertingSilentlyAsksNothing) {
    makeBackupWithClient("Sacuvan");
    EXPECT_TRUE(UseBackupDatabase(errorText, true));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(MaintenanceTest, RevertingTakesTheUnfinishedWorkOfTheOldFileAway) {
    makeBackupWithClient("Sacuvan");
    spoilFile(databaseFile(), "first page overwritten");
    write(databaseFile() + "-journal", rubbish(9000));
    EXPECT_TRUE(UseBackupDatabase(errorText, true));
    EXPECT_FALSE(QFile::exists(databaseFile() + "-journal"));
    EXPECT_FALSE(QFile::exists(temporary() + "-journal"));
    EXPECT_EQ(clientsNamed("Sacuvan"), 1);
}

TEST_F(MaintenanceTest, ARevertThatFailsPutsTheDatabaseBack) {
    write(backup(), rubbish(2 * kSmall));
    write(databaseFile(), "what is left of the shop");
    const QString answer = withASmallDisk(&useBackupSilently);
    EXPECT_TRUE(answer.startsWith("An unexpected error has occured while reverting to backup database:\n["))
        << answer.toStdString();
    EXPECT_EQ(bytesOf(databaseFile()), "what is left of the shop");
    EXPECT_FALSE(QFile::exists(temporary()));
}

TEST_F(MaintenanceTest, RevertingFailsWhileAnotherWorkstationHasTheFile) {
    makeBackupWithClient("Sacuvan");
    SecondProcess other([this](const SecondProcess::Side& side) {
        dao::Database database = dao::DBEngine::OpenDatabase(file(), false, false, connect());
        side.ready();
        side.untilReleased();
    });
    ASSERT_TRUE(other.waitReady());
    EXPECT_FALSE(UseBackupDatabase(errorText, true));
    EXPECT_TRUE(
        errorText.startsWith("An unexpected error has occured while reverting to backup database:\n[3045] "))
        << errorText.toStdString();
    EXPECT_EQ(clientsNamed("Sacuvan"), 0);
    EXPECT_FALSE(QFile::exists(temporary()));
    other.kill();
    EXPECT_TRUE(UseBackupDatabase(errorText, true));  // a crashed workstation holds nobody up
}

// ----- RepairAndCompactDatabase

bool repairWithPassword(QString& errorText) {
    return RepairAndCompactDatabase(errorText, true);
}

TEST_F(MaintenanceTest, ARepairNeedsTheFile) {
    removeDatabase();
    EXPECT_FALSE(RepairAndCompactDatabase(errorText, true));
    EXPECT_EQ(errorText, "Couldn't find the original database " + platform::nativePath(databaseFile()) +
                             " in order to repair it.");
}

TEST_F(MaintenanceTest, CompactingKeepsTheRowsAndGivesBackTheSpace) {
    fillWithClients(500);
    openDatabase().Execute("DELETE * FROM Customers WHERE CustID>10");
    closeDatabases();
    const qint64 before = QFile(databaseFile()).size();
    write(temporary(), "left by a crash");
    chmod(file().c_str(), 0664);
    EXPECT_TRUE(RepairAndCompactDatabase(errorText, true)) << errorText.toStdString();
    EXPECT_EQ(errorText, "");
    EXPECT_LT(QFile(databaseFile()).size(), before);
    EXPECT_FALSE(QFile::exists(temporary()));
    EXPECT_EQ(countRows("Customers"), 10);
    EXPECT_EQ(countRows("OpremaGrupe"), countRows("Oprema"));
    EXPECT_EQ(openDatabase().Relations().size(), 5U);
    closeDatabases();
    // The colleagues who could write to the file still can.
    EXPECT_TRUE(QFile(databaseFile()).permissions().testFlag(QFile::WriteGroup));
}

TEST_F(MaintenanceTest, ARepairThatIsLeftLeavesTheFileAndGivesNoReason) {
    const QByteArray before = bytesOf(databaseFile());
    const LeftWait left(1);
    errorText = "an earlier one";
    EXPECT_FALSE(RepairAndCompactDatabase(errorText, true));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(bytesOf(databaseFile()), before);
    EXPECT_FALSE(QFile::exists(temporary()));
}

TEST_F(MaintenanceTest, TheExchangeOfTheFinishedFileCannotBeLeft) {
    const LeftWait left(2);
    EXPECT_TRUE(RepairAndCompactDatabase(errorText, true)) << errorText.toStdString();
    EXPECT_EQ(left.pieces, 3) << "the repair, the exchange, and the removal of what it left";
    EXPECT_FALSE(QFile::exists(temporary()));
}

TEST_F(MaintenanceTest, AStartWhoseRepairIsLeftEndsWithoutTheBackup) {
    overwrite(databaseFile(), 0, QByteArray(kPage, 'x'));
    const QByteArray before = bytesOf(databaseFile());
    const LeftWait left(1);
    EXPECT_FALSE(CheckDatabase(errorText));
    EXPECT_EQ(errorText, "User abort.");
    EXPECT_EQ(boxes.asked.size(), 1) << "that a repair is needed, and nothing of the backup";
    EXPECT_EQ(bytesOf(databaseFile()), before);
}

TEST_F(MaintenanceTest, ARepairSavesWhatCanBeRead) {
    const struct {
        const char* damage;
        int kept;  // of 800, at least
    } cases[] = {{"a page of zeroes", 740}, {"a page of rubbish", 740}, {"cut short", 300}};
    const QByteArray delivered = bytesOf(databaseFile());
    for (const auto& c : cases) {
        write(databaseFile(), delivered);
        fillWithClients(800);
        const qint64 pages = QFile(databaseFile()).size() / kPage;
        const qint64 middle = pages / 2 * kPage;
        if (c.damage[0] == 'c') {
            ASSERT_TRUE(QFile::resize(databaseFile(), pages * 7 / 10 * kPage + 100));
        } else {
            overwrite(databaseFile(), middle, c.damage[10] == 'z' ? QByteArray(kPage, '\0') : rubbish(kPage));
        }
        EXPECT_TRUE(RepairAndCompactDatabase(errorText, true)) << c.damage << errorText.toStdString();
        EXPECT_TRUE(dao::DBEngine::LastRepair().damaged) << c.damage;
        const int kept = countRows("Customers");
        EXPECT_GE(kept, c.kept) << c.damage;
        EXPECT_LT(kept, 800) << c.damage;
        EXPECT_EQ(countRows("SELECT * FROM Customers WHERE GivenName='Pera'"), kept);
        addClient("Posle");
        closeDatabases();
    }
}

TEST_F(MaintenanceTest, AFileThatCannotBeExchangedIsTold) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs to become somebody else";
    }
    const QString server = moveDatabaseTo("server", "Tarvello.mdb");
    settings::setText(settings::DatabasePath, server);
    const QByteArray before = bytesOf(server);
    chmod(server.toUtf8(), 0666);
    shareFolder(path("server"), 01777);  // everybody may add files there, nobody take away another's
    const QString answer = asAnotherUser(&repairWithPassword);
    EXPECT_TRUE(answer.startsWith("Error while renaming temp database into original database name:\n["))
        << answer.toStdString();
    EXPECT_EQ(bytesOf(server), before);
}

TEST_F(MaintenanceTest, ARepairFailsWhileAnotherWorkstationHasTheFile) {
    const QByteArray before = bytesOf(databaseFile());
    SecondProcess other([this](const SecondProcess::Side& side) {
        dao::Database database = dao::DBEngine::OpenDatabase(file(), false, false, connect());
        side.ready();
        side.untilReleased();
    });
    ASSERT_TRUE(other.waitReady());
    EXPECT_FALSE(RepairAndCompactDatabase(errorText, true));
    EXPECT_TRUE(errorText.startsWith("Error(s) occured while Repairing and Compacting database:\n[3045] "))
        << errorText.toStdString();
    EXPECT_EQ(bytesOf(databaseFile()), before);
    EXPECT_FALSE(QFile::exists(temporary()));
}

TEST_F(MaintenanceTest, ARepairTakesThePasswordAlongOnlyWhenTold) {
    // The file comes from a process of its own: the engine remembers the password of what it has opened
    // itself.
    removeDatabase();
    SecondProcess other([this](const SecondProcess::Side& side) {
        dao::DBEngine::CreateDatabase(file(), connect()).Close();
        side.ready();
    });
    ASSERT_TRUE(other.waitReady());
    other.wait();
    EXPECT_FALSE(RepairAndCompactDatabase(errorText, false));
    EXPECT_TRUE(errorText.contains("\n[3031] ")) << errorText.toStdString();
    EXPECT_TRUE(RepairAndCompactDatabase(errorText, true)) << errorText.toStdString();
}

TEST_F(MaintenanceTest, ACompactionThatFindsNoRoomLeavesTheFile) {
    const QByteArray before = bytesOf(databaseFile());
    const QString answer = withASmallDisk(&repairWithPassword);
    EXPECT_TRUE(answer.startsWith("Error(s) occured while Repairing and Compacting database:\n["))
        << answer.toStdString();
    EXPECT_EQ(bytesOf(databaseFile()), before);
    EXPECT_FALSE(QFile::exists(temporary()));
}

}  // namespace
