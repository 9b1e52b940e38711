// The database under the open window: opening with repair and backup at hand, closing, compacting,
// restarting.

#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <climits>

#include "main_window.h"
#include "support/left_wait.h"
#include "support/second_process.h"

using platform::BoxAnswer;
using platform::BoxIcon;

namespace {

class Session : public MainWindow {
 protected:
    void shop() {
        anic = addClient("Anic", "Vesna");
        peric = addClient("Peric", "Pera");
        desk = addComputer(anic, "Desk");
        office = addComputer(peric, "Office");
        addService(desk);
        addService(desk);
        addService(office);
    }
    void utility(Command command) {
        open(win().bars.menus.menu(Menu::Database));
        give(command);
        win().bars.menus.menu(Menu::Database)->close();
    }
    void compact() { utility(Command::CompactDatabase); }
    void restart() { utility(Command::RestartDatabase); }
    // Overwrites the head of a file, so that nothing opens it any more.
    // Not one page of it is left to repair.
    static void ruin(const QString& file) {
        QFile bytes(file);
        ASSERT_TRUE(bytes.open(QIODevice::ReadWrite));
        bytes.write(QByteArray(bytes.size(), '\x5a'));
    }
    // Another workstation that has the file open, and nothing else.
    std::unique_ptr<SecondProcess> colleague() {
        return std::make_unique<SecondProcess>([this](const SecondProcess::Side& side) {
            side.untilReleased();
            dao::Database file = dao::DBEngine::OpenDatabase(databaseFile().toStdString(), false, false,
                                                             connectText().toStdString());
            side.ready();
            side.untilReleased();
        });
    }
    int anic = 0, peric = 0, desk = 0, office = 0;
};

// What becomes of the file itself: damaged, grown, replaced by its backup.
class FileOfTheSession : public Session {};

const QString kAskRepair =
    QStringLiteral("There was an error while openning the database. Application will try to reapir it.");
const QString kMultiUser = QStringLiteral(
    "Database is opened in multiuser environment and at least one user is on line thus it is impossible to "
    "compact "
    "database. Application will try to restart the database.");

TEST_F(Session, ThreeQueriesLiveAsLongAsTheWindow) {
    shop();
    start();
    EXPECT_EQ(win().shop.stages.QuerySuffix, 0);
    EXPECT_EQ(queries(), QStringList({"OpremaGrupe", "QDComputers0", "QDCustomers0", "QDServices0"}));
    end();
    EXPECT_EQ(queries(), QStringList({"OpremaGrupe"}));
}

TEST_F(Session, ProperlyClosedIsFalseWhileOpenAndTrueAfterACloseWithoutBackup) {
    start();
    EXPECT_FALSE(settings::boolean(settings::ProperlyClosed));
    EXPECT_EQ(settings::text(settings::ProperlyClosed), "False");
    win().choices.session.AlwaysCreateBackupDB = false;
    end();
    EXPECT_TRUE(settings::boolean(settings::ProperlyClosed));
    EXPECT_FALSE(QFile::exists(path("Tarvello.bkp")));
}

TEST_F(Session, CloseWithBackupLeavesProperlyClosedAlone) {
    shop();
    start();
    end();
    EXPECT_FALSE(settings::boolean(settings::ProperlyClosed));
    EXPECT_TRUE(QFile::exists(path("Tarvello.bkp")));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Session, ALongBackupShowsHowFarItIs) {
    shop();
    expectBackupShown([&](const QProgressBar& bar) {
        EXPECT_GT(bar.value(), 0);
        win().close();  // a second time: the first is under way
    });
}

TEST_F(Session, FailedBackupIsToldAndTheProgramEndsAllTheSame) {
    shop();
    start();
    ASSERT_TRUE(QDir().mkpath(path("Tarvello.bkp")));  // a folder where the backup should be
    end();
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith("Application has failed to create backup database:\n\n"))
        << boxes.lastText().toStdString();
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
}

TEST_F(Session, KindsOfServiceAreReadAtOpening) {
    start();
    ASSERT_GT(win().services.list.typeNames().size(), 1);
    EXPECT_EQ(win().services.list.typeNames().size() - 1, countRows("ServiceTypes"));
}

TEST_F(Session, BrokenFileIsRepairedOnceAndOnlyOnce) {
    shop();
    closeDatabases();
    make();
    QString errorText;
    bool ok = true;
    // The file opens, but the query's table is gone: a repair succeeds and helps nothing.
    openDatabase().TableDefs().Delete("Services");
    closeDatabases();
    win().shop.session.OpenDataControls(errorText, ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(errorText, "Application couldn't open database since the repair procedure has failed.");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kAskRepair);
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
}

TEST_F(FileOfTheSession, HopelessFileMayBeReplacedByTheBackup) {
    shop();
    closeDatabases();
    ASSERT_TRUE(QFile::copy(databaseFile(), path("Tarvello.bkp")));
    ruin(databaseFile());
    make();
    QString errorText;
    bool ok = false;
    boxes.answers << BoxAnswer::Ok << BoxAnswer::Yes;
    win().shop.session.OpenDataControls(errorText, ok);
    EXPECT_TRUE(ok) << errorText.toStdString();
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(boxes.asked.first().text, kAskRepair);
    EXPECT_TRUE(boxes.lastText().startsWith("Repair database failed\n"));
    EXPECT_TRUE(boxes.lastText().endsWith("\nDo you wish to use backup database instead?"));
    EXPECT_EQ(countRows("Customers"), 2);
}

TEST_F(FileOfTheSession, HopelessFileAndNoBackupWanted) {
    shop();
    closeDatabases();
    ruin(databaseFile());
    make();
    QString errorText;
    bool ok = true;
    boxes.answers << BoxAnswer::Ok << BoxAnswer::No;
    win().shop.session.OpenDataControls(errorText, ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(errorText, "User abort.");
}

TEST_F(FileOfTheSession, HopelessFileAndNoBackupThere) {
    shop();
    closeDatabases();
    ruin(databaseFile());
    make();
    QString errorText;
    bool ok = true;
    boxes.answers << BoxAnswer::Ok << BoxAnswer::Yes;
    win().shop.session.OpenDataControls(errorText, ok);
    EXPECT_FALSE(ok);
    EXPECT_TRUE(errorText.startsWith("Failed to use backup database.\nCouldn't find the backup database "))
        << errorText.toStdString();
}

TEST_F(FileOfTheSession, FailedStartDoesNotOverwriteTheBackup) {
    shop();
    closeDatabases();
    ASSERT_TRUE(QFile::copy(databaseFile(), path("Tarvello.bkp")));
    const auto sizeBefore = QFileInfo(path("Tarvello.bkp")).size();
    ruin(databaseFile());
    make();
    boxes.answers << BoxAnswer::Ok << BoxAnswer::No;
    EXPECT_FALSE(win().Display());
    EXPECT_EQ(QFileInfo(path("Tarvello.bkp")).size(), sizeBefore);
    QFile backup(path("Tarvello.bkp"));
    ASSERT_TRUE(backup.open(QIODevice::ReadOnly));
    EXPECT_NE(backup.read(16), QByteArray(16, '\x5a'));
}

// --- Restart and compaction from the menu.

TEST_F(Session, RestartKeepsTheRecordsAndGoesToTheFirstStage) {
    shop();
    start();
    choose(0, "Peric, Pera");
    tab(3);
    restart();
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(win().shop.stages.CurrentStage, 1);
    EXPECT_EQ(win().controls.TabStrip1->currentIndex(), 0);
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Peric, Pera"}));
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(entries(1), QStringList({"Desk"}));
    EXPECT_EQ(win().controls.RememberedIndex[1], -1);
    EXPECT_EQ(win().controls.ListView1->count(), 2);
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_EQ(win().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Session, NextChangeOfTabReadsTheStagesAgain) {
    shop();
    start();
    restart();
    const QString whole = win().controls.Data1[1]->RecordSource();
    EXPECT_EQ(whole, QString("Select * FROM QDComputers%1").arg(win().shop.stages.QuerySuffix));
    EXPECT_EQ(win().controls.Data1[2]->RecordSource(),
              QString("Select * FROM QDServices%1").arg(win().shop.stages.QuerySuffix));
    addComputer(anic, "Brand new");
    tab(2);
    EXPECT_EQ(entries(1), QStringList({"Brand new", "Desk"}));
    tab(3);
    EXPECT_NE(win().controls.Data1[2]->RecordSource(), whole);
}

TEST_F(Session, RestartOfAnEmptyShop) {
    start();
    restart();
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(win().controls.Combo1[0]->entryCount(), 0);
    tool("NewRecord");
    typeClient("Babic", "Bo");
    tool("SaveRecord");
    EXPECT_EQ(countRows("Customers"), 1);
}

TEST_F(Session, RestartSavesWhatIsPending) {
    shop();
    start();
    type(13, "064");
    restart();
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "064");
}

TEST_F(Session, RestartIsRefusedWhileSomethingIsMissing) {
    shop();
    start();
    type(0, "");
    boxes.answers << BoxAnswer::Yes;
    restart();
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(text(0), "");
    EXPECT_TRUE(win().controls.StageDirty[0]);
    EXPECT_TRUE(win().controls.Data1[0]->isOpen());
    boxes.answers << BoxAnswer::Yes;
    compact();
    EXPECT_EQ(boxes.asked.size(), 2) << "no multi-user notice where the user himself has refused";
}

TEST_F(Session, RestartForgetsTheFilter) {
    shop();
    start();
    win().shop.filter.ActiveFilter = 1;
    win().status.ShowFilterCaption(1, false);
    restart();
    EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
    EXPECT_EQ(win().controls.StatusBar1->firstPanelKey(), "Text");
    EXPECT_FALSE(canUse("RemoveFilter"));
}

TEST_F(Session, RestartKeepsTheOrderOfTheList) {
    anic = addClient("Anic", "Vesna");
    desk = addComputer(anic, "Desk");
    addService(desk, {{"Price", dao::Currency::fromScaled(10000)}});
    addService(desk, {{"Price", dao::Currency::fromScaled(90000)}});
    start();
    CeneDinarske = false;
    win().choices.order.LVWSorted = true;
    win().choices.order.LVWSortField = "Price";
    win().choices.order.LVWSortOrder = "DESC";
    restart();
    EXPECT_EQ(cellOf(win().controls.ListView1->item(1), ServiceColumn::Price), "9.00");
}

TEST_F(Session, RestartOnAClientWithoutComputersShowsAllServicesInOrder) {
    addClient("Zoric", "Zora");
    desk = addComputer(addClient("Anic", "Vesna"), "Desk");
    addService(desk, {{"Price", dao::Currency::fromScaled(10000)}});
    addService(desk, {{"Price", dao::Currency::fromScaled(90000)}});
    CeneDinarske = false;
    start();
    win().choices.order.LVWSorted = true;
    win().choices.order.LVWSortField = "Price";
    win().choices.order.LVWSortOrder = "DESC";
    restart();
    EXPECT_EQ(chosen(0), "Zoric, Zora");
    EXPECT_EQ(win().controls.Combo1[1]->entryCount(), 0);
    EXPECT_EQ(win().controls.ListView1->count(), 2);
    EXPECT_EQ(cellOf(win().controls.ListView1->item(1), ServiceColumn::Price), "9.00");
}

TEST_F(FileOfTheSession, CompactingMakesTheFileSmallerAndKeepsTheRecords) {
    shop();
    dao::DBEngine::BeginTrans();
    for (int i = 0; i < 400; ++i) {
        addClient("Gone", "G" + QString::number(i), {{"Comments", std::string(4000, 'x')}});
    }
    openDatabase().Execute("DELETE * FROM Customers WHERE Surname='Gone'");
    dao::DBEngine::CommitTrans();
    start();
    const qint64 before = QFileInfo(databaseFile()).size();
    compact();
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_LT(QFileInfo(databaseFile()).size(), before / 2);
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Peric, Pera"}));
    EXPECT_EQ(win().status.text(), "Ready");
    choose(0, "Peric, Pera");
    tab(3);
    EXPECT_EQ(win().controls.ListView1->count(), 1);
    type(win().controls.Text2[0], "");
    end();
    EXPECT_EQ(countRows("Services"), 3);
}

TEST_F(Session, CompactingThatIsLeftOpensTheShopAgainWithoutAWord) {
    addClient("Anic", "Vesna");
    start();
    {
        const LeftWait left(1);
        compact();
    }
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_TRUE(win().shop.stages[kClients].data().isOpen());
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(win().status.text(), "Ready");
}

TEST_F(Session, CompactingWhileAColleagueHasTheFileOpenRestartsInstead) {
    const auto other = colleague();
    shop();
    start();
    other->release();
    ASSERT_TRUE(other->waitReady());
    compact();
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kMultiUser);
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    EXPECT_FALSE(win().isUnloaded());
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Peric, Pera"}));
    EXPECT_EQ(win().controls.ListView1->count(), 2);
    EXPECT_EQ(win().status.text(), "Ready");
    other->release();
    EXPECT_EQ(other->wait(), 0);
}

TEST_F(Session, ReasonOfAFailedCompactionIsHandedBack) {
    const auto other = colleague();
    shop();
    start();
    other->release();
    ASSERT_TRUE(other->waitReady());
    QString errorText;
    bool ok = true;
    win().shop.session.CompactOpenDatabase(errorText, ok);
    EXPECT_FALSE(ok);
    EXPECT_TRUE(
        errorText.startsWith("Unexpected error(s) occured while repairing and compacting the database:\n"
                             "Error(s) occured while Repairing and Compacting database:"))
        << errorText.toStdString();
    EXPECT_TRUE(errorText.contains("[3045]"));
    other->release();
}

// Does something once, at the moment when the status bar begins to say these words: what a colleague may do
// between two steps of a long command.
class WhenStatusSays : public QObject {
 public:
    WhenStatusSays(frmMain& window, QString words, std::function<void()> deed)
        : panel_(window.status.bar()->panel("Text")), words_(std::move(words)), deed_(std::move(deed)) {
        panel_->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && panel_->text() == words_ && deed_) {
            std::exchange(deed_, {})();
        }
        return QObject::eventFilter(watched, event);
    }
    bool happened() const { return !deed_; }

 private:
    QLabel* panel_;
    QString words_;
    std::function<void()> deed_;
};

const QString kReopening = QStringLiteral("Reopening database... Please wait...");

TEST_F(Session, CompactionWhoseFileIsGoneBeforeItReopensIsHandedBack) {
    shop();
    start();
    closeDatabases();
    const WhenStatusSays gone(win(), kReopening, [&] { QFile::remove(databaseFile()); });
    boxes.answers << BoxAnswer::Ok << BoxAnswer::No;
    QString errorText;
    bool ok = true;
    win().shop.session.CompactOpenDatabase(errorText, ok);
    EXPECT_TRUE(gone.happened());
    EXPECT_FALSE(ok);
    EXPECT_EQ(errorText,
              "Unexpected error(s) occured while repairing and compacting the database:\nUser abort.");
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(boxes.asked.first().text, kAskRepair);
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_EQ(win().cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(win().controls.ListView1->count(), 0);
}

TEST_F(Session, CompactionThatCannotReopenRestartsAndThenEndsTheProgram) {
    shop();
    start();
    closeDatabases();
    const WhenStatusSays gone(win(), kReopening, [&] { QFile::remove(databaseFile()); });
    boxes.answers << BoxAnswer::Ok << BoxAnswer::No << BoxAnswer::Ok << BoxAnswer::Ok << BoxAnswer::No;
    compact();
    ASSERT_EQ(boxes.asked.size(), 6);
    EXPECT_EQ(boxes.asked.at(2).text, kMultiUser);
    EXPECT_EQ(boxes.asked.at(3).text, kAskRepair);
    EXPECT_EQ(boxes.lastText(),
              "Restarting database has failed.\n\nUnexpected error(s) occured while reopening the "
              "database:\nUser abort.\n\nAplication will terminate.");
    EXPECT_TRUE(win().isUnloaded());
}

TEST_F(Session, CompactionReopensWhatAColleagueHasBroughtBack) {
    shop();
    start();
    closeDatabases();
    ASSERT_TRUE(QFile::copy(databaseFile(), path("kept.mdb")));
    const WhenStatusSays gone(win(), kReopening, [&] { QFile::remove(databaseFile()); });
    boxes.onBox = [&](const platform::Box& box) {
        if (box.text == kMultiUser) {
            QFile::copy(path("kept.mdb"), databaseFile());
        }
    };
    boxes.answers << BoxAnswer::Ok << BoxAnswer::No;
    compact();
    ASSERT_EQ(boxes.asked.size(), 3);
    EXPECT_EQ(boxes.lastText(), kMultiUser);
    EXPECT_FALSE(win().isUnloaded());
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Peric, Pera"}));
    EXPECT_EQ(entries(1), QStringList({"Desk"}));
    EXPECT_EQ(win().controls.ListView1->count(), 2);
    EXPECT_EQ(win().status.text(), "Ready");
}

// A stage that cannot be read while the database comes back.
class HalfReopened : public Session {
 protected:
    void SetUp() override {
        Session::SetUp();
        shop();
        start();
        tab(2);
        win().shop.filter.ActiveFilter = 1;
        win().status.ShowFilterCaption(1, false);
        // Whenever the clients are shown while the computers are open, a colleague's copy ruins the query.
        QObject::connect(win().controls.Data1[0], &platform::DataControl::repositioned, &win(), [this] {
            if (win().controls.Data1[2]->isOpen() && win().status.text() == kReopening) {
                openDatabase().QueryDefs()[query("QDComputers").toStdString()].setSQL(
                    "SELECT * FROM NoSuchTable");
            }
        });
        closeDatabases();
    }
    QString query(const char* name) {
        return QLatin1String(name) + QString::number(win().shop.stages.QuerySuffix);
    }
    // Each step behind the one that failed has been done.
    void expectTheRestDone() {
        EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Peric, Pera"}));
        EXPECT_EQ(entries(1), QStringList());
        EXPECT_TRUE(win().shop.stages[kComputers].pane.isLocked());
        EXPECT_EQ(win().controls.ListView1->count(), 3) << "no computer, so the services of all";
        EXPECT_EQ(win().controls.Data1[1]->RecordSource(), "Select * FROM " + query("QDComputers"));
        EXPECT_EQ(win().controls.Data1[2]->RecordSource(), "Select * FROM " + query("QDServices"));
        EXPECT_EQ(win().shop.stages.CurrentStage, 1);
        EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
        EXPECT_EQ(win().controls.StatusBar1->firstPanelKey(), "Text");
        EXPECT_EQ(win().status.text(), "Ready");
        EXPECT_EQ(win().cursor().shape(), Qt::ArrowCursor);
    }
};

TEST_F(HalfReopened, RestartDoesTheRestAndHandsTheReasonBack) {
    QString errorText;
    bool ok = true;
    win().shop.session.RestartDatabase(errorText, ok);
    EXPECT_FALSE(ok);
    EXPECT_TRUE(errorText.startsWith("Unexpected error(s) occured while reopening the database:\n[3078] "))
        << errorText.toStdString();
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    expectTheRestDone();
}

TEST_F(HalfReopened, CompactionDoesTheRestAndHandsTheReasonBack) {
    QString errorText;
    bool ok = true;
    win().shop.session.CompactOpenDatabase(errorText, ok);
    EXPECT_FALSE(ok);
    EXPECT_TRUE(errorText.startsWith(
        "Unexpected error(s) occured while repairing and compacting the database: [3078] "))
        << errorText.toStdString();
    expectTheRestDone();
}

TEST_F(Session, WordInTheSettingsCannotSendTheFileToRepair) {
    shop();
    closeDatabases();
    make();
    win().choices.order.LVWSorted = true;
    win().choices.order.LVWSortField = "Nonsense";
    QString errorText;
    bool ok = false;
    win().shop.session.OpenDataControls(errorText, ok);
    EXPECT_TRUE(ok) << errorText.toStdString();
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(win().controls.Data1[2]->RecordSource(), "SELECT * FROM QDServices0");
}

// A colleague has installed the next version and started it: nothing about the file is to be repaired.
TEST_F(Session, RestartOnAFileOfANewerVersionEndsTheProgramWithoutAnOfferOfRepair) {
    shop();
    start();
    openDatabase().setForm(7);
    closeDatabases();
    dao::DBEngine::setKnownForm(6);
    restart();
    dao::DBEngine::setKnownForm(INT_MAX);
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(),
              "Restarting database has failed.\n\nUnexpected error(s) occured while reopening the database:\n"
              "The database was written by a newer version of Tarvello. Please install that version on this "
              "workstation, too.\n\nAplication will terminate.");
    EXPECT_TRUE(win().isUnloaded());
}

TEST_F(FileOfTheSession, FailedRestartEndsTheProgram) {
    shop();
    start();
    boxes.onBox = [&](const platform::Box& box) {
        if (box.text == kAskRepair) {
            QFile::remove(databaseFile());
        }
    };
    win().controls.Data1[0]->Close();
    win().controls.Data1[1]->Close();
    win().controls.Data1[2]->Close();
    ruin(databaseFile());
    boxes.answers << BoxAnswer::Ok << BoxAnswer::No;
    restart();
    ASSERT_EQ(boxes.asked.size(), 3);
    EXPECT_EQ(boxes.lastText(),
              "Restarting database has failed.\n\nUnexpected error(s) occured while reopening the "
              "database:\nUser abort.\n\nAplication will terminate.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_TRUE(win().isUnloaded());
}

}  // namespace
