// The main window over a shop that lies on a server.

#include <QProgressBar>

#include "main_window.h"
#include "platform/dao/moving.h"
#include "platform/dao/postgres/connection.h"
#include "support/server_cluster.h"

namespace {

class OnServer : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        anic = addClient("Anic", "Vesna");
        closeDatabases();
        dao::moveToServer(databaseFile().toStdString(), connectText().toStdString(),
                          tests::placeWords(database.place()));
    }

    tests::ServerDatabase database;
    int anic = 0;
};

// The server was away for a while, and somebody who came in then was given the number of this copy.
TEST_F(OnServer, TheShopIsRestartedWhereAnotherCopyHasTakenTheNumber) {
    start();
    ASSERT_EQ(win().shop.stages.QuerySuffix, 0);
    dao::postgres::Connection keeper(database.place());
    keeper.run(
        "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity"
        " WHERE datname = current_database() AND pid <> pg_backend_pid()");
    keeper.run("SELECT pg_advisory_lock(76002, 0)");
    type(13, "064");
    tool("SaveRecord");
    ASSERT_FALSE(boxes.asked.isEmpty()) << "what cannot be saved is told";
    EXPECT_TRUE(boxes.lastText().contains("another copy of the program has taken this one's number"))
        << boxes.lastText().toStdString();
    EXPECT_EQ(text(13), "064") << "what was typed stays";
    const auto told = boxes.asked.size();
    EXPECT_TRUE(QTest::qWaitFor([&] { return win().shop.stages.QuerySuffix == 1; }, 20'000));
    EXPECT_EQ(boxes.asked.size(), told) << boxes.lastText().toStdString();
    EXPECT_TRUE(win().controls.Data1[0]->RecordSource().contains("QDCustomers1"));
    type(13, "065");
    tool("SaveRecord");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "065");
    closeDatabases();
    end();
    EXPECT_EQ(queries(), QStringList({"OpremaGrupe", "QDComputers0", "QDCustomers0", "QDServices0"}))
        << "the other's are left alone";
}

TEST_F(OnServer, ALongBackupShowsHowFarItIs) {
    expectBackupShown([](const QProgressBar&) {});
}

}  // namespace
