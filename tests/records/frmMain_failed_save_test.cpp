// Records that cannot be written, dropped or deleted: what was typed stays, and nothing passes for done.

#include "busy_colleague.h"
#include "main_window.h"

using platform::BoxAnswer;
using platform::BoxIcon;

namespace {

const QString kLocked = QStringLiteral("[3260] Couldn't update; currently locked.");
const QString kAddFailed = QStringLiteral(
    "SaveRecord procedure: An unexpected error has occured while trying to update record while in Add New "
    "mode and with Tab index %1:\n%2");
const QString kEditFailed = QStringLiteral(
    "SaveRecord procedure: An unexpected error has occured while trying to update record while in Edit mode "
    "and with Tab index %1:\n%2");
const QString kAlreadyAdding = QStringLiteral("You're already adding a new item in the data base.");

class FailedSave : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        colleague = std::make_unique<BusyColleague>(databaseFile());
    }
    void TearDown() override {
        colleague.reset();
        MainWindow::TearDown();
    }
    void shop() {
        anic = addClient("Anic", "Vesna");
        peric = addClient("Peric", "Pera");
        desk = addComputer(anic, "Desk");
        office = addComputer(peric, "Office");
    }
    // A new client in the fields, and the file locked.
    void startAdding() {
        shop();
        start();
        tool("NewRecord");
        typeClient("Babic", "Bo");
        type(13, "064 111");
        win().controls.DTPicker1[0]->setValue(QDate(1980, 5, 17));
        colleague->hold();
    }
    void expectStillAdding() {
        EXPECT_TRUE(win().shop.editing.AddNewMode);
        EXPECT_EQ(win().shop.stages.CurrentStage, 1);
        EXPECT_EQ(win().controls.TabStrip1->currentIndex(), 0);
        EXPECT_EQ(win().controls.Combo1[0]->currentIndex(), -1);
        EXPECT_EQ(win().controls.RememberedIndex[0], -1);
        EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Peric, Pera"}));
        EXPECT_EQ(caption(1), "Klijenti");
        EXPECT_EQ(text(0), "Babic");
        EXPECT_EQ(text(1), "Bo");
        EXPECT_EQ(text(13), "064 111");
        EXPECT_EQ(win().controls.DTPicker1[0]->value(), QDate(1980, 5, 17));
        EXPECT_TRUE(canUse("SaveRecord"));
    }
    void utility(Command command) {
        open(win().bars.menus.menu(Menu::Database));
        give(command);
        win().bars.menus.menu(Menu::Database)->close();
    }
    std::unique_ptr<BusyColleague> colleague;
    int anic = 0, peric = 0, desk = 0, office = 0;
};

// --- A new record.

TEST_F(FailedSave, AddThatFailsIsToldAndGoesOn) {
    startAdding();
    tool("SaveRecord");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kAddFailed.arg(1).arg(kLocked));
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    expectStillAdding();
    colleague->letGo();
    EXPECT_EQ(countRows("Customers"), 2);
}

TEST_F(FailedSave, AddThatFailedIsWrittenOnceAndWholeByTheNextTry) {
    startAdding();
    tool("SaveRecord");
    tool("SaveRecord");
    expectStillAdding();
    colleague->letGo();
    tool("SaveRecord");
    EXPECT_EQ(boxes.asked.size(), 2);
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(chosen(0), "Babic, Bo");
    EXPECT_EQ(caption(1), "Babic, Bo");
    EXPECT_EQ(countRows("Customers"), 3);
    const int babic = currentKey(0);
    EXPECT_EQ(win().controls.Combo1[0]->entryData(win().controls.Combo1[0]->currentIndex()), babic);
    EXPECT_EQ(valueOf("Customers", "CustID", babic, "Cellular").asText(), "064 111");
    EXPECT_EQ(valueOf("Customers", "CustID", babic, "BirthDate"), dao::Value(dao::Date{29358.0}));
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Surname").asText(), "Anic");
    EXPECT_EQ(valueOf("Customers", "CustID", peric, "Surname").asText(), "Peric");
}

TEST_F(FailedSave, AddThatFailedKeepsTheTab) {
    startAdding();
    for (const int stage : {2, 3}) {
        tab(stage);
        EXPECT_EQ(boxes.lastText(), kAddFailed.arg(1).arg(kLocked));
        expectStillAdding();
    }
    EXPECT_EQ(boxes.asked.size(), 2);
}

TEST_F(FailedSave, AddThatFailedKeepsTheSelectorEmpty) {
    startAdding();
    choose(0, "Peric, Pera");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kAddFailed.arg(1).arg(kLocked));
    expectStillAdding();
}

TEST_F(FailedSave, AddThatFailedIsNotFollowedByAnother) {
    startAdding();
    tool("SaveRecord");
    tool("NewRecord");
    EXPECT_EQ(boxes.lastText(), kAlreadyAdding);
    expectStillAdding();
}

TEST_F(FailedSave, AddThatFailedKeepsTheDatabaseOpen) {
    startAdding();
    for (const Command command : {Command::RestartDatabase, Command::CompactDatabase}) {
        utility(command);
        EXPECT_EQ(boxes.lastText(), kAddFailed.arg(1).arg(kLocked)) << static_cast<int>(command);
        EXPECT_TRUE(win().controls.Data1[0]->isOpen());
        expectStillAdding();
    }
    EXPECT_EQ(boxes.asked.size(), 2) << "no notice of other users, no end of the program";
}

TEST_F(FailedSave, AddThatFailedKeepsTheFilterAway) {
    startAdding();
    bool ok = true;
    win().shop.filter.ApplyQuickFilter(1, ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
    expectStillAdding();
}

TEST_F(FailedSave, AddThatFailedCanBeGivenUp) {
    startAdding();
    tool("SaveRecord");
    expectStillAdding();
    type(0, "");
    boxes.answers << BoxAnswer::No;
    tool("SaveRecord");
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(text(0), "Anic");
    EXPECT_EQ(text(13), "");
    EXPECT_EQ(boxes.asked.size(), 2) << boxes.lastText().toStdString();
    colleague->letGo();
    type(13, "021");
    tool("SaveRecord");
    EXPECT_EQ(countRows("Customers"), 2);
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "021");
}

TEST_F(FailedSave, AddThatFailedInAnEmptyShopLocksTheStageWhenItIsGivenUp) {
    start();
    tool("NewRecord");
    typeClient("Babic", "Bo");
    colleague->hold();
    tool("SaveRecord");
    EXPECT_FALSE(locked(0)) << "there is something to be saved yet";
    type(0, "");
    boxes.answers << BoxAnswer::No;
    tool("SaveRecord");
    EXPECT_TRUE(locked(0));
    EXPECT_TRUE(win().shop.stages[kClients].pane.isLocked());
    EXPECT_EQ(text(1), "");
    EXPECT_EQ(caption(1), "Klijenti");
}

TEST_F(FailedSave, ComputerThatCouldNotBeAddedGoesToItsClientAtLast) {
    shop();
    start();
    choose(0, "Peric, Pera");
    tab(2);
    tool("NewRecord");
    type(19, "Laptop");
    colleague->hold();
    tool("SaveRecord");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kAddFailed.arg(2).arg(kLocked));
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    EXPECT_EQ(text(19), "Laptop");
    EXPECT_EQ(chosen(1), "");
    tab(1);
    EXPECT_EQ(win().shop.stages.CurrentStage, 2);
    colleague->letGo();
    tool("SaveRecord");
    EXPECT_EQ(entries(1), QStringList({"Laptop", "Office"}));
    EXPECT_EQ(valueOf("Computers", "MachineID", currentKey(1), "CustID").asLong(), peric);
    EXPECT_EQ(valueOf("Computers", "MachineID", office, "MachineName").asText(), "Office");
}

// The file itself is lost to this program for a while: there can be no new row at all.
TEST_F(FailedSave, AddWithoutAnyRowIsNeverWrittenIntoAnotherRecord) {
    startAdding();
    colleague->letGo();
    win().controls.Data1[0]->Recordset().Close();
    tool("SaveRecord");
    EXPECT_EQ(boxes.lastText(), kAddFailed.arg(1).arg("[3420] Object invalid or no longer set."));
    expectStillAdding();
    tab(2);
    expectStillAdding();
    EXPECT_EQ(countRows("Customers"), 2);
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Surname").asText(), "Anic");
}

TEST_F(FailedSave, NewClientWhoseRowWasLostIsStillANewOne) {
    shop();
    start();
    tool("NewRecord");
    typeClient("Babic", "Bo");
    win().controls.Data1[0]->Recordset().CancelUpdate();
    tool("SaveRecord");
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(countRows("Customers"), 3);
    EXPECT_EQ(chosen(0), "Babic, Bo");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Surname").asText(), "Anic");
}

TEST_F(FailedSave, StageThatCouldNotBeginAnAddIsLockedAgain) {
    start();
    ASSERT_TRUE(locked(0));
    win().controls.Data1[0]->Close();
    tool("NewRecord");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Add New Record failed.\n\n[3420] Object invalid or no longer set.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_TRUE(locked(0));
    EXPECT_TRUE(win().shop.stages[kClients].pane.isLocked());
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(win().status.text(), "Ready");
}

// --- A record that was changed.

TEST_F(FailedSave, EditThatFailsIsToldOnceAndStaysInTheFields) {
    shop();
    start();
    type(0, "Zoric");
    colleague->hold();
    tool("SaveRecord");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kEditFailed.arg(1).arg(kLocked));
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_EQ(text(0), "Zoric");
    EXPECT_EQ(chosen(0), "Zoric, Vesna");
    EXPECT_EQ(caption(1), "Zoric, Vesna");
    for (const int stage : {2, 1, 3, 1}) {
        tab(stage);
    }
    EXPECT_EQ(boxes.asked.size(), 1) << "the box does not come back";
    EXPECT_EQ(text(0), "Zoric");
    colleague->letGo();
    type(13, "064");
    tool("SaveRecord");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Surname").asText(), "Zoric");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "064");
    EXPECT_EQ(boxes.asked.size(), 1);
}

TEST_F(FailedSave, EditThatFailsOnTheWayToAnotherClientHoldsNobodyBack) {
    shop();
    start();
    type(0, "Zoric");
    colleague->hold();
    choose(0, "Peric, Pera");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kEditFailed.arg(1).arg(kLocked));
    EXPECT_EQ(text(0), "Peric");
    EXPECT_EQ(entries(0), QStringList({"Zoric, Vesna", "Peric, Pera"}));
    EXPECT_FALSE(win().controls.StageDirty[0]);
}

// --- A new record that cannot be dropped.

TEST_F(FailedSave, AddThatCannotBeDroppedIsToldWithTheStageAlone) {
    shop();
    start();
    tool("NewRecord");
    type(2, "x");
    boxes.answers << BoxAnswer::No;
    boxes.onBox = [&](const platform::Box&) { win().controls.Data1[0]->Recordset().Close(); };
    tool("SaveRecord");
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(boxes.lastText(),
              "SaveRecord procedure: An unexpected error has occured while trying to cancel update record "
              "while in Add New mode and with Tab index 1:");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_FALSE(win().shop.editing.AddNewMode);
}

// --- Choosing.

TEST_F(FailedSave, ClientWhoCannotBeLookedUpIsNotChosenAndNothingIsSaid) {
    shop();
    start();
    win().controls.Data1[0]->Recordset().Close();
    choose(0, "Peric, Pera");
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(win().controls.RememberedIndex[0], 0);
    EXPECT_EQ(caption(1), "Anic, Vesna");
    EXPECT_EQ(text(0), "Anic");
}

// --- Deleting.

TEST_F(FailedSave, ClientWhoCannotBeDeletedStays) {
    shop();
    start();
    choose(0, "Peric, Pera");
    colleague->hold();
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(boxes.lastText(),
              "An unexpected error has occured while deleting the current record.\n" + kLocked);
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Peric, Pera"}));
    EXPECT_EQ(chosen(0), "Peric, Pera");
    EXPECT_EQ(caption(1), "Peric, Pera");
    EXPECT_EQ(text(0), "Peric");
    EXPECT_EQ(currentKey(0), peric);
    colleague->letGo();
    EXPECT_EQ(countRows("Customers"), 2);
}

TEST_F(FailedSave, OnlyClientWhoCannotBeDeletedDoesNotLockTheStage) {
    addClient("Anic", "Vesna");
    start();
    colleague->hold();
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    EXPECT_FALSE(locked(0));
    EXPECT_EQ(caption(1), "Anic, Vesna");
    EXPECT_EQ(text(0), "Anic");
}

TEST_F(FailedSave, ServiceThatCannotBeDeletedStays) {
    shop();
    addService(desk);
    const int second = addService(desk);
    start();
    tab(3);
    win().controls.ListView1->select(2);
    colleague->hold();
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(boxes.lastText(),
              "An unexpected error has occured while deleting the selected service.\n\n" + kLocked);
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_EQ(win().controls.ListView1->count(), 2);
    EXPECT_EQ(win().controls.ListView1->selectedIndex(), 2);
    EXPECT_EQ(win().controls.ListView1->item(2).Key, QStringLiteral("K%1").arg(second));
    colleague->letGo();
    EXPECT_EQ(countRows("Services"), 2);
}

}  // namespace
