#include "shell/old_shop.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QFile>
#include <QThread>
#include <QTimer>
#include <algorithm>

#include "records/frmMain.h"
#include "shell/Main.h"
#include "support/fixture.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

namespace {

// A start where the file of the program before stands in the place of the shop's.
class OldShopStart : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        if (!QFile::exists(path("Tarvello.hlp"))) {
            QFile help(path("Tarvello.hlp"));
            ASSERT_TRUE(help.open(QIODevice::WriteOnly));
        }
        QFile::remove(databaseFile());
        ASSERT_TRUE(
            QFile::copy(QLatin1String(tests::kSourceFolder) + "/exchange/old-shop.mdb", databaseFile()));
        QFile::setPermissions(databaseFile(), QFile::ReadOwner | QFile::WriteOwner);
        old_ = bytesOf("Tarvello.mdb");
    }
    void TearDown() override {
        window.reset();
        setOldFileTaker({});
        DeliveredFixture::TearDown();
    }
    QByteArray bytesOf(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static constexpr int kTries = 1000;
    static bool isTakingOver() {
        const QWidgetList windows = QApplication::topLevelWidgets();
        return std::any_of(windows.begin(), windows.end(), [](const QWidget* one) {
            return one->isVisible() && one->objectName() == QLatin1String("TakingOver");
        });
    }
    QString said(qsizetype box) const { return box < boxes.asked.size() ? boxes.asked[box].text : QString(); }

    std::unique_ptr<frmMain> window;
    QByteArray old_;
};

TEST_F(OldShopStart, TakesTheShopOverAndGoesOn) {
    boxes.answers << BoxAnswer::Yes << BoxAnswer::Ok;
    window = Main();
    ASSERT_NE(window, nullptr);
    ASSERT_EQ(boxes.asked.size(), 2) << "no word of damage";
    EXPECT_TRUE(said(0).startsWith(databaseFile() + " is a database of the old format"))
        << said(0).toStdString();
    EXPECT_TRUE(said(0).contains("Do you wish to take it over?"));
    EXPECT_EQ(boxes.asked[0].buttons, BoxButtons::YesNo);
    EXPECT_TRUE(said(1).contains("Customers: 300\nComputers: 600\nServices: 900\n")) << said(1).toStdString();
    EXPECT_TRUE(said(1).contains("Nothing was left out or changed"));
    EXPECT_TRUE(said(1).contains("The rate and the firm's data are not in it"));
    EXPECT_EQ(boxes.asked[1].icon, BoxIcon::Information);
    EXPECT_EQ(bytesOf("Tarvello.old.mdb"), old_);
    EXPECT_TRUE(QFile::exists(path("take-over.txt")));
    window.reset();
    EXPECT_EQ(countRows("Services"), 900);
}

// A window that has something to do for a while does not hold the work up.
TEST_F(OldShopStart, TheWorkGoesOnBesideTheWindows) {
    boxes.answers << BoxAnswer::Yes << BoxAnswer::Ok;
    bool seen = false;
    bool doneMeanwhile = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        if (seen || !isTakingOver()) {
            return;
        }
        seen = true;
        for (int tries = 0; !doneMeanwhile && tries < kTries; ++tries) {
            QThread::msleep(10);
            doneMeanwhile = QFile::exists(path("take-over.txt"));
        }
    });
    look.start(0);
    window = Main();
    EXPECT_NE(window, nullptr);
    EXPECT_EQ(doneMeanwhile, seen);
}

TEST_F(OldShopStart, NoEndsTheStartAndLeavesTheFile) {
    boxes.answers << BoxAnswer::No << BoxAnswer::Ok;
    EXPECT_EQ(Main(), nullptr);
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(said(1), "Error(s) encountered while accessing the client's database.\nUser abort.");
    EXPECT_EQ(bytesOf("Tarvello.mdb"), old_);
    EXPECT_FALSE(QFile::exists(path("Tarvello.old.mdb")));
}

TEST_F(OldShopStart, ReplacesNoFileThatWasKeptBefore) {
    QFile before(path("Tarvello.old.mdb"));
    ASSERT_TRUE(before.open(QIODevice::WriteOnly));
    before.write("of another year");
    before.close();
    boxes.answers << BoxAnswer::Yes << BoxAnswer::Ok;
    EXPECT_EQ(Main(), nullptr);
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(said(1), "Error(s) encountered while accessing the client's database.\n'" +
                           path("Tarvello.old.mdb") + "' is there already, and is not replaced.");
    EXPECT_EQ(bytesOf("Tarvello.mdb"), old_);
    EXPECT_EQ(bytesOf("Tarvello.old.mdb"), "of another year");
}

TEST_F(OldShopStart, ADamagedOneIsToldAndLeftAlone) {
    QFile file(databaseFile());
    ASSERT_TRUE(file.resize(200 * 4096));
    old_ = bytesOf("Tarvello.mdb");
    boxes.answers << BoxAnswer::Yes << BoxAnswer::Ok;
    EXPECT_EQ(Main(), nullptr);
    ASSERT_EQ(boxes.asked.size(), 2) << "no repair is offered";
    EXPECT_TRUE(said(1).contains("is damaged")) << said(1).toStdString();
    EXPECT_EQ(bytesOf("Tarvello.mdb"), old_);
    EXPECT_FALSE(QFile::exists(path("Tarvello.old.mdb")));
    EXPECT_FALSE(QFile::exists(path("take-over.txt")));
}

}  // namespace
