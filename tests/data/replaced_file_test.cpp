// The moment in which one database file gives way to another: nobody may find no file there, or another file
// than his colleagues.
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <functional>

#include "data/session.h"
#include "data/session_fixture.h"

namespace {

constexpr rlim_t kSmall = 40000;  // far less than the delivered database, far more than a line of text
constexpr const char* kRevertFailed = "An unexpected error has occured while reverting to backup database:\n";

bool revert(QString& errorText) {
    return UseBackupDatabase(errorText, true);
}
bool compact(QString& errorText) {
    return RepairAndCompactDatabase(errorText, true);
}

class ReplacedFile : public SessionFixture {
 protected:
    QString backup() const { return path("Tarvello.bkp"); }
    QString temporary() const { return path("Tarvello.$$1"); }
    QStringList filesIn(const QString& folder) const {
        return QDir(path(folder)).entryList(QDir::Files | QDir::System | QDir::Hidden, QDir::Name);
    }

    // The database goes to the server, and a link in the program's folder leads there.
    QString moveBehindALink() {
        const QString server = moveDatabaseTo("server", "Tarvello.mdb");
        EXPECT_TRUE(QFile::link(server, databaseFile()));
        return server;
    }
    void expectStillALinkTo(const QString& server) const {
        EXPECT_EQ(QFile::symLinkTarget(databaseFile()), server);
    }

    // How often the database was not there, or not whole, while another process runs a routine again and
    // again.
    int timesGoneDuring(bool (*routine)(QString&), int repeats) {
        const std::string watched = file();
        struct stat whole {};
        EXPECT_EQ(stat(watched.c_str(), &whole), 0);
        SecondProcess other([&](const SecondProcess::Side& side) {
            QString reason;
            for (int i = 0; i < repeats; ++i) {
                if (!routine(reason)) {
                    side.say('x');
                }
            }
            write(path("ended"), "");
            side.ready();
        });
        int gone = 0;
        while (!QFile::exists(path("ended"))) {
            struct stat now {};
            savedCopies += QFile::exists(temporary()) ? 1 : 0;
            if (stat(watched.c_str(), &now) != 0 || now.st_size < whole.st_size / 2) {
                ++gone;
            }
        }
        EXPECT_TRUE(other.waitReady());
        return gone;
    }

    // On a workstation whose database lies on a small disk of its own, with that much room left there after
    // `prepare`. What becomes of it comes back in the answer, behind the error text.
    QString onAFullServer(bool (*routine)(QString&), const std::function<void()>& prepare, qint64 room) {
        const QString server = path("server");
        QDir().mkpath(server);
        return elsewhere(
            [&] {
                const qint64 size = QFile(databaseFile()).size();
                const QByteArray options = "size=" + QByteArray::number(size + room);
                if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) ||
                    mount("tmpfs", server.toUtf8(), "tmpfs", 0, options.constData()) != 0) {
                    return;
                }
                EXPECT_TRUE(QFile::copy(databaseFile(), server + "/Tarvello.mdb"));
                settings::setText(settings::DatabasePath, server + "/Tarvello.mdb");
                prepare();
            },
            [&](QString& answer) {
                if (!QFile::exists(server + "/Tarvello.mdb")) {
                    answer = "no disk";
                    return false;
                }
                const QByteArray before = bytesOf(server + "/Tarvello.mdb");
                QString reason;
                const bool done = routine(reason);
                const bool kept = bytesOf(server + "/Tarvello.mdb") == before;
                answer = QString(done ? "done" : reason) + (kept ? "\nkept" : "\nchanged") + "\n" +
                         filesIn("server").join(' ');
                return false;
            });
    }

    QString errorText = "left over";
    int savedCopies = 0;  // how often one was seen
};

// ----- UseBackupDatabase

TEST_F(ReplacedFile, ARevertWithoutAnyRoomLeavesTheDatabase) {
    makeBackupWithClient("Sacuvan");
    const QByteArray before = bytesOf(databaseFile());
    // Neither the saved copy nor the backup's copy can be written.
    const QString answer = elsewhere([] { limitFiles(kSmall); }, &revert);
    EXPECT_EQ(answer, QString(kRevertFailed) + "[3026] Not enough space on disk.");
    ASSERT_TRUE(QFile::exists(databaseFile()));
    EXPECT_EQ(bytesOf(databaseFile()), before);
    EXPECT_FALSE(QFile::exists(temporary()));
    EXPECT_EQ(filesIn("."), QStringList({"Tarvello.bkp", "Tarvello.hlp", "Tarvello.mdb", "answer.txt"}));
}

TEST_F(ReplacedFile, ARevertOnAFullServerLeavesTheDatabaseThere) {
    const QString answer = onAFullServer(
        &revert, [&] { EXPECT_TRUE(QFile::copy(databaseFile(), backup())); }, 8L * kPage);
    if (answer == "no disk") {
        GTEST_SKIP() << "needs the right to mount a disk";
    }
    EXPECT_EQ(answer, QString(kRevertFailed) + "[3026] Not enough space on disk.\nkept\nTarvello.mdb");
}

TEST_F(ReplacedFile, TheDatabaseIsThereAtEveryMomentOfARevert) {
    fillWithClients(300);
    makeBackupWithClient("Sacuvan");
    EXPECT_EQ(timesGoneDuring(&revert, 30), 0);
    EXPECT_GT(savedCopies, 0);  // what the shop had until then is saved meanwhile
    EXPECT_EQ(clientsNamed("Sacuvan"), 1);
}

TEST_F(ReplacedFile, ARevertBehindALinkReplacesTheFileThatAllShare) {
    makeBackupWithClient("Sacuvan");
    const QString server = moveBehindALink();
    EXPECT_TRUE(UseBackupDatabase(errorText, true)) << errorText.toStdString();
    expectStillALinkTo(server);
    EXPECT_EQ(bytesOf(server), bytesOf(backup()));
    EXPECT_EQ(filesIn("server"), QStringList("Tarvello.mdb"));
    EXPECT_EQ(clientsNamed("Sacuvan"), 1);
}

TEST_F(ReplacedFile, ARevertBehindALinkSeesWhoIsInTheFile) {
    makeBackupWithClient("Sacuvan");
    const QString server = moveBehindALink();
    SecondProcess colleague([&](const SecondProcess::Side& side) {
        const dao::Database database =
            dao::DBEngine::OpenDatabase(server.toStdString(), false, false, connect());
        side.ready();
        side.untilReleased();
    });
    ASSERT_TRUE(colleague.waitReady());
    EXPECT_FALSE(UseBackupDatabase(errorText, true));
    EXPECT_EQ(errorText, QString(kRevertFailed) + "[3045] Couldn't use the file; it is already in use.");
    EXPECT_EQ(clientsNamed("Sacuvan"), 0);
}

// The server is away: a private copy in the link's place would be another shop from then on.
TEST_F(ReplacedFile, ARevertBehindALinkToNothingIsRefused) {
    makeBackupWithClient("Sacuvan");
    const QString server = moveBehindALink();
    ASSERT_TRUE(QFile::rename(server, server + ".away"));
    EXPECT_FALSE(UseBackupDatabase(errorText, true));
    EXPECT_EQ(errorText, QString(kRevertFailed) + "[3044] '" + databaseFile() +
                             "' is a link to a file that isn't there.");
    expectStillALinkTo(server);
    EXPECT_EQ(filesIn("server"), QStringList("Tarvello.mdb.away"));
    EXPECT_FALSE(QFile::exists(temporary()));
}

TEST_F(ReplacedFile, ARevertIntoAFolderThatIsAwayIsRefused) {
    makeBackupWithClient("Sacuvan");
    const QString server = moveDatabaseTo("server", "Tarvello.mdb");
    settings::setText(settings::DatabasePath, server);
    ASSERT_TRUE(QDir().rename(path("server"), path("away")));
    EXPECT_FALSE(UseBackupDatabase(errorText, true));
    EXPECT_TRUE(errorText.startsWith(QString(kRevertFailed) + "[30")) << errorText.toStdString();
    EXPECT_FALSE(QFile::exists(path("server")));
}

TEST_F(ReplacedFile, ARevertToTheFileThatIsTheDatabaseIsRefused) {
    makeBackupWithClient("Sacuvan");
    removeDatabase();
    ASSERT_TRUE(QFile::link(backup(), databaseFile()));
    const QByteArray before = bytesOf(backup());
    EXPECT_FALSE(UseBackupDatabase(errorText, true));
    EXPECT_EQ(errorText, QString(kRevertFailed) + "[3001] A file can't be copied onto itself.");
    expectStillALinkTo(backup());
    EXPECT_EQ(bytesOf(backup()), before);
}

TEST_F(ReplacedFile, ARevertToABackupThatIsTheSameChangesNothing) {
    addClient("Sacuvan");
    closeDatabases();
    ASSERT_TRUE(BackupDatabase(errorText));
    EXPECT_TRUE(UseBackupDatabase(errorText, true)) << errorText.toStdString();
    EXPECT_EQ(bytesOf(databaseFile()), bytesOf(backup()));
    EXPECT_EQ(clientsNamed("Sacuvan"), 1);
}

TEST_F(ReplacedFile, ARevertWhereTheDatabaseIsGoneTakesTheBackup) {
    makeBackupWithClient("Sacuvan");
    removeDatabase();
    EXPECT_TRUE(UseBackupDatabase(errorText, true)) << errorText.toStdString();
    EXPECT_EQ(clientsNamed("Sacuvan"), 1);
    EXPECT_FALSE(QFile::exists(temporary()));
}

TEST_F(ReplacedFile, ARevertInAFolderThatTakesNoFilesIsTold) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs to become somebody else";
    }
    makeBackupWithClient("Sacuvan");
    const QString server = moveDatabaseTo("server", "Tarvello.mdb");
    settings::setText(settings::DatabasePath, server);
    const QByteArray before = bytesOf(server);
    shareFolder(path("server"), 0555);
    chmod(backup().toUtf8(), 0666);
    EXPECT_EQ(asAnotherUser(&revert),
              QString(kRevertFailed) + "[3050] Couldn't lock file; its folder takes no lock file.");
    EXPECT_EQ(bytesOf(server), before);
    EXPECT_EQ(filesIn("server"), QStringList("Tarvello.mdb"));
    EXPECT_FALSE(QFile::exists(temporary()));
}

TEST_F(ReplacedFile, WhoCouldUseTheDatabaseStillCanAfterARevert) {
    makeBackupWithClient("Sacuvan");
    constexpr gid_t kColleagues = 54321;
    const bool mayGive = chown(file().c_str(), static_cast<uid_t>(-1), kColleagues) == 0;
    ASSERT_EQ(chmod(file().c_str(), 0660), 0);
    ASSERT_TRUE(UseBackupDatabase(errorText, true)) << errorText.toStdString();
    struct stat found {};
    ASSERT_EQ(stat(file().c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0660U);
    EXPECT_TRUE(!mayGive || found.st_gid == kColleagues);
}

// ----- RepairAndCompactDatabase

TEST_F(ReplacedFile, ACompactionBehindALinkReplacesTheFileThatAllShare) {
    fillWithClients(50);
    const QString server = moveBehindALink();
    const QByteArray before = bytesOf(server);
    EXPECT_TRUE(RepairAndCompactDatabase(errorText, true)) << errorText.toStdString();
    expectStillALinkTo(server);
    EXPECT_NE(bytesOf(server), before);
    EXPECT_EQ(filesIn("server"), QStringList("Tarvello.mdb"));
    EXPECT_FALSE(QFile::exists(temporary()));
    EXPECT_EQ(countRows("Customers"), 50);
}

TEST_F(ReplacedFile, TheDatabaseIsThereAtEveryMomentOfACompaction) {
    fillWithClients(300);
    ASSERT_TRUE(compact(errorText));
    EXPECT_EQ(timesGoneDuring(&compact, 20), 0);
    EXPECT_EQ(countRows("Customers"), 300);
}

TEST_F(ReplacedFile, ACompactionThatDoesNotFitOnTheServerIsToldAndTheDatabaseStays) {
    const QString answer = onAFullServer(
        &compact, [] {}, 8L * kPage);
    if (answer == "no disk") {
        GTEST_SKIP() << "needs the right to mount a disk";
    }
    EXPECT_EQ(answer,
              "Error while renaming temp database into original database name:\n[3026] Not enough space on "
              "disk.\nkept\nTarvello.mdb");
    EXPECT_FALSE(QFile::exists(temporary()));
}

TEST_F(ReplacedFile, ARepairKeepsTheRightsOfTheColleagues) {
    fillWithClients(800);
    ASSERT_EQ(chmod(file().c_str(), 0664), 0);
    overwrite(databaseFile(), QFile(databaseFile()).size() / kPage / 2 * kPage, rubbish(kPage));
    EXPECT_TRUE(RepairAndCompactDatabase(errorText, true)) << errorText.toStdString();
    ASSERT_TRUE(dao::DBEngine::LastRepair().damaged);
    EXPECT_TRUE(QFile(databaseFile()).permissions().testFlag(QFile::WriteGroup));
}

// ----- BackupDatabase

TEST_F(ReplacedFile, ABackupBehindALinkGoesWhereTheLinkLeads) {
    QDir().mkpath(path("stick"));
    write(path("stick/Tarvello.bkp"), "yesterday's");
    ASSERT_TRUE(QFile::link(path("stick/Tarvello.bkp"), backup()));
    EXPECT_TRUE(BackupDatabase(errorText)) << errorText.toStdString();
    EXPECT_EQ(QFile::symLinkTarget(backup()), path("stick/Tarvello.bkp"));
    EXPECT_EQ(bytesOf(path("stick/Tarvello.bkp")), bytesOf(databaseFile()));
}

// The stick is not in: who believes his backups lie there must hear of it.
TEST_F(ReplacedFile, ABackupBehindALinkToNothingIsRefused) {
    ASSERT_TRUE(QFile::link(path("stick/Tarvello.bkp"), backup()));
    EXPECT_FALSE(BackupDatabase(errorText));
    EXPECT_EQ(errorText,
              "Database is opened in multiuser environment and at least one user is on line thus it is "
              "impossible to create backup database.");
    EXPECT_EQ(QFile::symLinkTarget(backup()), path("stick/Tarvello.bkp"));
    EXPECT_FALSE(QFile::exists(backup()));
}

TEST_F(ReplacedFile, ADatabaseBehindALinkIsBackedUpFromThere) {
    const QString server = moveBehindALink();
    EXPECT_TRUE(BackupDatabase(errorText)) << errorText.toStdString();
    EXPECT_EQ(bytesOf(backup()), bytesOf(server));
    expectStillALinkTo(server);
}

// While this workstation waits for one that has the database for itself, its backup is taken away.
TEST_F(ReplacedFile, ABackupLostWhileTheNewOneFailsIsPutBack) {
    openDatabase();  // a day's work: from here on the engine knows the password
    closeDatabases();
    write(backup(), "yesterday's");
    SecondProcess other([this](const SecondProcess::Side& side) {
        const dao::Database database = dao::DBEngine::OpenDatabase(file(), true, false, connect());
        side.ready();
        while (!QFile::exists(temporary()) || bytesOf(temporary()) != "yesterday's") {
        }
        QFile::remove(backup());
        side.untilReleased();
    });
    ASSERT_TRUE(other.waitReady());
    EXPECT_FALSE(BackupDatabase(errorText));
    EXPECT_TRUE(errorText.startsWith("Database is opened in multiuser environment"));
    ASSERT_TRUE(QFile::exists(backup()));
    EXPECT_EQ(bytesOf(backup()), "yesterday's");
}

}  // namespace
