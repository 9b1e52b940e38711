// The main window over a shop that lies on a server.

#include <QProgressBar>

#include "main_window.h"
#include "platform/dao/moving.h"
#include "support/server_cluster.h"

namespace {

class OnServer : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        addClient("Anic", "Vesna");
        closeDatabases();
        const dao::postgres::Address place = database.place();
        dao::moveToServer(
            databaseFile().toStdString(), connectText().toStdString(),
            "host='" + place.host + "' dbname='" + place.dbname + "' user='" + place.user + "'");
    }

    tests::ServerDatabase database;
};

TEST_F(OnServer, ALongBackupShowsHowFarItIs) {
    start();
    win().shop.session.BackupPatience = 0;
    int turns = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        const auto* bar = win().findChild<QProgressBar*>("ProgressBar1");
        if (bar == nullptr) {
            return;
        }
        ++turns;
        EXPECT_TRUE(bar->isVisible());
        EXPECT_EQ(bar->accessibleName(), "Backup");
    });
    watch.start(0);
    win().close();
    watch.stop();
    EXPECT_GT(turns, 0);
    EXPECT_EQ(win().findChild<QProgressBar*>("ProgressBar1"), nullptr);
    EXPECT_TRUE(win().isUnloaded());
    EXPECT_TRUE(QFile::exists(path("Tarvello.bkp")));
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

}  // namespace
