// A stage that cannot be read while the tab changes: nothing of the client before may stay in it.

#include "narrowed_window.h"

namespace {

const QString kNoTable = QStringLiteral("An unexpected error has occured - [3078] ");

class FailedTab : public NarrowedWindow {
 protected:
    void SetUp() override {
        NarrowedWindow::SetUp();
        anic = addClient("Anic", "Vesna");
        peric = addClient("Peric", "Pera");
        desk = addComputer(anic, "Desk");
        office = addComputer(peric, "Office");
        service = addService(desk);
        addService(office);
        start();
        tab(3);
        tab(1);
        EXPECT_EQ(listed(), QList<int>({service}));
        choose(0, "Peric, Pera");
    }
    void ruin(const char* query) { openDatabase().QueryDefs()[query].setSQL("SELECT * FROM NoSuchTable"); }
    void mend(const char* query, const std::string& table) {
        openDatabase().QueryDefs()[query].setSQL("SELECT * FROM " + table);
    }
    void expectTold() {
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().startsWith(kNoTable)) << boxes.lastText().toStdString();
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
        EXPECT_EQ(win().status.text(), "Ready");
    }
    void expectNoComputers() {
        EXPECT_EQ(entries(1), QStringList());
        EXPECT_EQ(chosen(1), "");
        EXPECT_EQ(caption(2), "Kompjuteri");
        EXPECT_TRUE(win().shop.stages[kComputers].pane.isLocked());
        EXPECT_TRUE(locked(19));
        EXPECT_EQ(text(19), "");
    }
    int anic = 0, peric = 0, desk = 0, office = 0, service = 0;
};

TEST_F(FailedTab, ComputersThatCannotBeReadLeaveNobodyElsesThere) {
    ruin("QDComputers0");
    tab(2);
    expectTold();
    expectNoComputers();
    EXPECT_EQ(win().shop.stages.CurrentStage, 2);
    EXPECT_TRUE(win().controls.Picture1[1]->isVisible());
    EXPECT_FALSE(canUse("DeleteRecord"));
}

TEST_F(FailedTab, ServiceCannotBePutOnAnotherClientsComputer) {
    ruin("QDComputers0");
    tab(3);
    expectTold();
    expectNoComputers();
    EXPECT_EQ(win().controls.ListView1->count(), 0);
    EXPECT_EQ(source(2), "SELECT * FROM QDServices0 WHERE MachineID=-1");
    EXPECT_FALSE(canUse("NewRecord"));
    EXPECT_FALSE(canUse("EditRecord"));
    open(win().bars.menus.menu(Menu::Database));
    EXPECT_FALSE(win().bars.menus.entry(Command::AddRecord)->isEnabled());
    win().bars.menus.menu(Menu::Database)->close();
}

TEST_F(FailedTab, ComputersAreReadAgainWithTheNextMove) {
    ruin("QDComputers0");
    tab(2);
    mend("QDComputers0", "Computers");
    tab(1);
    tab(2);
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(entries(1), QStringList({"Office"}));
    EXPECT_EQ(caption(2), "Office");
    EXPECT_EQ(text(19), "Office");
}

TEST_F(FailedTab, ServicesThatCannotBeReadLeaveNobodyElsesThere) {
    tab(2);
    ruin("QDServices0");
    tab(3);
    expectTold();
    EXPECT_EQ(chosen(1), "Office");
    EXPECT_EQ(win().controls.ListView1->count(), 0);
    EXPECT_EQ(text(37), "");
    EXPECT_EQ(text(38), "");
    for (const char* key : {"EditRecord", "PriceList", "Invoice", "Quotation", "DeleteRecord"}) {
        EXPECT_FALSE(canUse(key)) << key;
    }
    mend("QDServices0", "Services");
    tab(2);
    tab(3);
    EXPECT_EQ(win().controls.ListView1->count(), 1);
}

TEST_F(FailedTab, BothStagesThatCannotBeReadAreEmptied) {
    ruin("QDComputers0");
    ruin("QDServices0");
    tab(3);
    expectTold();
    expectNoComputers();
    EXPECT_EQ(win().controls.ListView1->count(), 0);
    EXPECT_FALSE(canUse("EditRecord"));
}

// --- The record sets stand on what is shown first.

TEST_F(FailedTab, ListIsFilledFromTheFirstRecordAndStandsOnIt) {
    const int second = addService(office);
    tab(3);
    ASSERT_EQ(win().controls.ListView1->count(), 2);
    EXPECT_NE(currentKey(2), second);
    EXPECT_EQ(win().controls.ListView1->item(1).Key, QStringLiteral("K%1").arg(currentKey(2)));
}

TEST_F(FailedTab, SelectorIsFilledFromTheFirstRecordAndStandsOnIt) {
    ASSERT_EQ(currentKey(0), peric);
    win().shop.reading.FillClientCombo();
    EXPECT_EQ(currentKey(0), anic);
    EXPECT_EQ(text(0), "Anic");
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(win().controls.RememberedIndex[0], 0);
}

}  // namespace
