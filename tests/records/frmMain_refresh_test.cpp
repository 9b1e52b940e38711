// Back to the whole shop: the end of a filter, and the reading afresh of everything.
#include "narrowed_window.h"
#include "records/quick_filters.h"
#include "support/second_process.h"

namespace {

class WholeShop : public PaidAndOwed {
 protected:
    void SetUp() override {
        PaidAndOwed::SetUp();
        milled = addService(mill);
    }
    void expectNoFilter() {
        EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
        EXPECT_EQ(win().controls.StatusBar1->firstPanelKey(), "Text");
        EXPECT_FALSE(canUse("RemoveFilter"));
        for (const quick_filters::Filter& each : quick_filters::kFilters) {
            EXPECT_TRUE(win().bars.toolbar.filterEntry(each.key)->isEnabled()) << each.key;
        }
        EXPECT_EQ(queryText("QDCustomers0"), "SELECT * FROM Customers");
        EXPECT_EQ(queryText("QDComputers0"), "SELECT * FROM Computers");
        EXPECT_EQ(queryText("QDServices0"), "SELECT * FROM Services");
        EXPECT_EQ(win().status.text(), "Ready");
        EXPECT_NE(win().cursor().shape(), Qt::WaitCursor);
    }
    // From the start to a filter that leaves the second client with one job each on both computers.
    void startFiltered() {
        start();
        filter(Command::FilterNotFinishedNotPaid);
        ASSERT_EQ(win().shop.filter.ActiveFilter, 1);
        boxes.asked.clear();
    }
    int milled = 0;
};

TEST_F(WholeShop, MenuRemovesTheFilter) {
    startFiltered();
    EXPECT_EQ(entries(0), QStringList({"Babic, Bo"}));
    filter(Command::RemoveFilters);
    expectNoFilter();
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Bo"}));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(WholeShop, ToolbarRemovesTheFilter) {
    startFiltered();
    tool("RemoveFilter");
    expectNoFilter();
    EXPECT_EQ(entries(0).size(), 2);
}

TEST_F(WholeShop, RefreshEndsAFilterToo) {
    for (int way = 0; way < 2; ++way) {
        startFiltered();
        if (way == 0) {
            tool("Refresh");
        } else {
            give(Command::Refresh);
        }
        expectNoFilter();
        EXPECT_EQ(entries(0).size(), 2);
        EXPECT_TRUE(boxes.asked.isEmpty());
        end();
    }
}

TEST_F(WholeShop, FilterThatWasInForceCanBeChosenAgain) {
    startFiltered();
    EXPECT_FALSE(win().bars.toolbar.filterEntry("NFNP")->isEnabled());
    tool("RemoveFilter");
    EXPECT_TRUE(win().bars.toolbar.filterEntry("NFNP")->isEnabled());
    win().bars.toolbar.filterEntry("NFNP")->trigger();
    EXPECT_EQ(win().shop.filter.ActiveFilter, 1);
}

TEST_F(WholeShop, SourcesAreThoseOfTheChosenClientAndComputer) {
    startFiltered();
    tool("RemoveFilter");
    EXPECT_EQ(source(0), "SELECT * FROM QDCustomers0");
    EXPECT_EQ(source(1), QStringLiteral("SELECT * FROM QDComputers0 WHERE CustID=%1").arg(babic));
    EXPECT_EQ(source(2), QStringLiteral("Select * FROM QDServices0 Where MachineID=%1").arg(tower));
    EXPECT_TRUE(win().controls.StageDirty[1]);
}

TEST_F(WholeShop, ChosenClientAndComputerStayChosen) {
    startFiltered();
    tab(2);
    choose(1, "Mill");
    tool("RemoveFilter");
    EXPECT_EQ(chosen(0), "Babic, Bo");
    EXPECT_EQ(currentKey(0), babic);
    EXPECT_EQ(text(0), "Babic");
    EXPECT_EQ(caption(1), "Babic, Bo");
    EXPECT_EQ(chosen(1), "Mill");
    EXPECT_EQ(currentKey(1), mill);
    EXPECT_EQ(caption(2), "Mill");
    EXPECT_EQ(listed(), QList<int>({milled}));
    tab(3);
    EXPECT_EQ(listed(), QList<int>({milled}));
}

TEST_F(WholeShop, ClientWhoIsGoneMakesRoomForTheFirst) {
    startFiltered();
    openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(babic));
    tool("RemoveFilter");
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(chosen(1), "Desk");
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(WholeShop, ListComesBackOnItsFirstRow) {
    start();
    choose(0, "Babic, Bo");
    tab(3);
    win().controls.ListView1->select(2);
    tool("Refresh");
    EXPECT_EQ(listed(), QList<int>({owed, paid}));
    EXPECT_EQ(win().controls.ListView1->selectedIndex(), 1);
    EXPECT_EQ(win().services.list.shownKey(), QStringLiteral("K%1").arg(owed));
    EXPECT_TRUE(canUse("EditRecord"));
}

TEST_F(WholeShop, RefreshWithoutAFilterReadsAllStagesAndLeavesTheButtons) {
    start();
    openDatabase().Execute("UPDATE Customers SET Surname='Zoric' WHERE CustID=" + std::to_string(babic));
    addComputer(anic, "New");
    const int added = addService(desk);
    tool("Refresh");
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Zoric, Bo"}));
    EXPECT_EQ(entries(1), QStringList({"Desk", "New"}));
    EXPECT_TRUE(listed().contains(added));
    expectNoFilter();
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(WholeShop, RemoveWithoutAFilterOnlyDisablesItsButton) {
    start();
    win().bars.toolbar.button("RemoveFilter")->setEnabled(true);
    addClient("Ciric", "Cica");
    tool("RemoveFilter");
    EXPECT_FALSE(canUse("RemoveFilter"));
    EXPECT_EQ(entries(0).size(), 2) << "nothing was read";
}

TEST_F(WholeShop, RefreshShowsTheUnitThatHasChanged) {
    start();
    tab(3);
    EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Price)), "Price [EUR]");
    CeneDinarske = true;
    KursKupovni = 117.5F;
    win().shop.filter.RemoveFilters();
    EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Price)), "Price [EUR]")
        << "only a refresh renews the headers";
    tool("Refresh");
    EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Price)), "Price [DIN]");
    EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Paid)), "Paid [DIN]");
    EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Discount)), "Discount");
    EXPECT_EQ(cellOf(win().controls.ListView1->item(1), ServiceColumn::Price), "11,750.00");
    CeneDinarske = false;
    tool("Refresh");
    EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Price)), "Price [EUR]");
    EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Paid)), "Paid [EUR]");
    EXPECT_EQ(cellOf(win().controls.ListView1->item(1), ServiceColumn::Price), "100.00");
}

TEST_F(WholeShop, OrderAndIconsSurvive) {
    const int dear = addService(tower, {{"Price", money(900)}});
    start();
    choose(0, "Babic, Bo");
    tab(3);
    clickHeader(ServiceColumn::Price);
    clickHeader(ServiceColumn::Price);
    filter(Command::FilterNotFinishedNotPaid);
    for (const char* command : {"RemoveFilter", "Refresh"}) {
        tool(command);
        EXPECT_EQ(listed().first(), dear) << command;
        EXPECT_TRUE(source(2).endsWith(" ORDER BY Price DESC")) << command;
        EXPECT_EQ(icons(), QStringList({"", "", "", "SortDown", "", "", ""})) << command;
    }
}

TEST_F(WholeShop, WindowSaysThatItIsAtWork) {
    startFiltered();
    {
        StatusWatch watch(win());
        win().shop.filter.RemoveFilters();
        EXPECT_EQ(watch.said, QStringList({"Removing filters... Please wait...", "Ready"}));
        EXPECT_EQ(watch.underHourglass.value(0), "Removing filters... Please wait...");
    }
    StatusWatch watch(win());
    win().shop.filter.RefreshAll();
    EXPECT_EQ(watch.said, QStringList({"Refreshing... Please wait...", "Ready"}));
    EXPECT_EQ(watch.underHourglass.value(0), "Refreshing... Please wait...");
    EXPECT_NE(win().cursor().shape(), Qt::WaitCursor);
}

TEST_F(WholeShop, FailingStepsArePassedOverInSilence) {
    startFiltered();
    openDatabase().QueryDefs().Delete("QDComputers0");
    tool("RemoveFilter");
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Bo"}));
    EXPECT_EQ(entries(1), QStringList());
    EXPECT_EQ(queryText("QDServices0"), "SELECT * FROM Services");
    EXPECT_EQ(source(2), "SELECT * FROM QDServices0");
    EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
    EXPECT_EQ(win().controls.StatusBar1->firstPanelKey(), "Text");
    EXPECT_FALSE(canUse("RemoveFilter"));
    EXPECT_EQ(win().status.text(), "Ready");
}

TEST_F(WholeShop, ShopThatHasBeenEmptiedIsShownEmpty) {
    startFiltered();
    openDatabase().Execute("DELETE * FROM Customers");
    tool("Refresh");
    EXPECT_EQ(win().controls.Combo1[0]->entryCount(), 0);
    EXPECT_EQ(win().controls.Combo1[1]->entryCount(), 0);
    EXPECT_EQ(win().controls.ListView1->count(), 0);
    EXPECT_TRUE(locked(0));
    EXPECT_EQ(caption(1), "Klijenti");
    EXPECT_EQ(source(1), "SELECT * FROM QDComputers0");
    EXPECT_EQ(source(2), "SELECT * FROM QDServices0");
    tab(2);
    tab(3);
    tab(1);
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(WholeShop, ComputersOfAClientWithoutAnyAskForNothing) {
    addClient("Ciric", "Cica");
    start();
    choose(0, "Ciric, Cica");
    tool("Refresh");
    EXPECT_EQ(chosen(0), "Ciric, Cica");
    EXPECT_TRUE(win().controls.StageDirty[1]);
    tab(2);
    tab(1);
    EXPECT_EQ(win().shop.stages.CurrentStage, 1);
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

// --- What was typed and not saved yet.

TEST_F(WholeShop, WhatWasTypedStaysTypedAndUnsaved) {
    start();
    choose(0, "Babic, Bo");
    type(13, "064 111");
    openDatabase().Execute("UPDATE Customers SET City='Nis' WHERE CustID=" + std::to_string(babic));
    tool("Refresh");
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(chosen(0), "Babic, Bo");
    EXPECT_EQ(text(13), "064 111");
    EXPECT_EQ(text(8), "Nis") << "a field nobody touched shows what a colleague wrote";
    EXPECT_TRUE(win().controls.StageDirty[0]);
    EXPECT_TRUE(win().controls.Data1[0]->fields().isChanged(field(13)));
    EXPECT_FALSE(win().controls.Data1[0]->fields().isChanged(field(8)));
    EXPECT_TRUE(canUse("SaveRecord"));
    EXPECT_EQ(valueOf("Customers", "CustID", babic, "Cellular").asText(), "");
    tool("SaveRecord");
    EXPECT_EQ(valueOf("Customers", "CustID", babic, "Cellular").asText(), "064 111");
    EXPECT_EQ(valueOf("Customers", "CustID", babic, "City").asText(), "Nis");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "");
}

TEST_F(WholeShop, WhatIsTypedAfterwardsIsSaved) {
    start();
    choose(0, "Babic, Bo");
    tab(2);
    choose(1, "Tower");
    tool("Refresh");
    ASSERT_EQ(chosen(1), "Tower");
    type(20, "Duron");
    EXPECT_TRUE(win().controls.StageDirty[1]);
    ASSERT_TRUE(canUse("SaveRecord"));
    tool("SaveRecord");
    EXPECT_EQ(valueOf("Computers", "MachineID", currentKey(1), "Processor").asText(), "Duron");
}

TEST_F(WholeShop, ClientBeingAddedGoesOnBeingAdded) {
    start();
    choose(0, "Babic, Bo");
    tool("NewRecord");
    typeClient("Zoric", "Zora");
    tool("Refresh");
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    EXPECT_TRUE(win().controls.StageDirty[0]);
    EXPECT_EQ(win().controls.Combo1[0]->currentIndex(), -1);
    EXPECT_EQ(win().controls.RememberedIndex[0], -1);
    EXPECT_EQ(caption(1), "Klijenti");
    EXPECT_EQ(caption(2), "Kompjuteri");
    EXPECT_EQ(text(0), "Zoric");
    EXPECT_EQ(text(11), "Srbija");
    EXPECT_EQ(countRows("Customers"), 2);
    tool("SaveRecord");
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(chosen(0), "Zoric, Zora");
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Bo", "Zoric, Zora"}));
    EXPECT_EQ(countRows("Customers"), 3);
}

TEST_F(WholeShop, NothingThatIsMissingIsAskedFor) {
    startFiltered();
    tool("NewRecord");
    type(0, "Zoric");
    for (const char* command : {"RemoveFilter", "Refresh"}) {
        tool(command);
        EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
        EXPECT_TRUE(win().shop.editing.AddNewMode) << command;
        EXPECT_EQ(text(0), "Zoric") << command;
        EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Bo"})) << command;
        expectNoFilter();
    }
}

TEST_F(WholeShop, AddGivenUpAfterARefreshGoesBackToTheClientBefore) {
    start();
    choose(0, "Babic, Bo");
    tool("NewRecord");
    type(2, "nobody");
    tool("Refresh");
    boxes.answers << platform::BoxAnswer::No;
    tool("SaveRecord");
    EXPECT_EQ(chosen(0), "Babic, Bo");
    EXPECT_EQ(text(0), "Babic");
    EXPECT_EQ(text(2), "");
    EXPECT_EQ(countRows("Customers"), 2);
}

TEST_F(WholeShop, AddGivenUpAfterARefreshGoesBackToTheComputerBefore) {
    start();
    choose(0, "Babic, Bo");
    tab(2);
    for (const QString& typed : {QString("nothing yet"), QString()}) {
        choose(1, "Tower");
        tool("NewRecord");
        if (!typed.isEmpty()) {
            type(20, typed);
        }
        tool("Refresh");
        ASSERT_TRUE(win().shop.editing.AddNewMode);
        boxes.answers << platform::BoxAnswer::No;
        if (typed.isEmpty()) {  // nothing to save
            tab(1);
            tab(2);
        } else {
            tool("SaveRecord");
        }
        EXPECT_FALSE(win().shop.editing.AddNewMode);
        EXPECT_EQ(chosen(0), "Babic, Bo");
        EXPECT_EQ(chosen(1), "Tower") << typed.toStdString();
        EXPECT_EQ(text(19), "Tower");
        EXPECT_EQ(text(20), "");
    }
    EXPECT_EQ(countRows("Computers"), 3);
}

TEST_F(WholeShop, ComputerBeingAddedKeepsItsClient) {
    start();
    choose(0, "Babic, Bo");
    tab(2);
    tool("NewRecord");
    type(19, "New");
    tool("Refresh");
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    EXPECT_EQ(text(19), "New");
    EXPECT_EQ(chosen(1), "");
    EXPECT_EQ(caption(2), "Kompjuteri");
    tool("SaveRecord");
    EXPECT_EQ(entries(1), QStringList({"Mill", "New", "Tower"}));
    EXPECT_EQ(valueOf("Computers", "MachineID", currentKey(1), "CustID").asLong(), babic);
}

const QString kGone = QStringLiteral("Sorry, %1 is not found in the database. First item will be selected.");

TEST_F(WholeShop, ComputerBeingAddedForAClientWhoIsGoneComesToNobody) {
    start();
    choose(0, "Babic, Bo");
    tab(2);
    tool("NewRecord");
    type(19, "New");
    openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(babic));
    tool("Refresh");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kGone.arg("Babic, Bo"));
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(chosen(1), "Desk");
    EXPECT_EQ(text(19), "Desk");
    tab(1);
    EXPECT_EQ(countRows("Computers"), 1);
    EXPECT_EQ(valueOf("Computers", "MachineID", desk, "MachineName").asText(), "Desk");
}

TEST_F(WholeShop, WhatWasTypedForARecordThatIsGoneIsNotGivenToAnother) {
    start();
    type(0, "Zoric");
    type(13, "064 111");
    openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(anic));
    tool("Refresh");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kGone.arg("Anic, Vesna"));
    EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(chosen(0), "Babic, Bo");
    EXPECT_EQ(text(0), "Babic");
    EXPECT_EQ(text(13), "");
    EXPECT_FALSE(win().controls.StageDirty[0]);
    tab(2);
    EXPECT_EQ(valueOf("Customers", "CustID", babic, "Surname").asText(), "Babic");
    EXPECT_EQ(valueOf("Customers", "CustID", babic, "Cellular").asText(), "");
}

TEST_F(WholeShop, WhatWasTypedBelongsToTheRecordOnShow) {
    const int zoric = addClient("Zoric", "Z");  // the next one in the file
    addClient("Ciric", "C");                    // the next one in the selector
    start();
    choose(0, "Babic, Bo");
    boxes.answers << platform::BoxAnswer::Yes;
    tool("DeleteRecord");
    ASSERT_EQ(chosen(0), "Ciric, C");
    ASSERT_EQ(text(0), "Zoric");
    type(13, "064");
    tool("Refresh");
    EXPECT_EQ(chosen(0), "Zoric, Z");
    EXPECT_EQ(text(0), "Zoric");
    EXPECT_EQ(text(13), "064");
    tool("SaveRecord");
    EXPECT_EQ(valueOf("Customers", "CustID", zoric, "Cellular").asText(), "064");
}

TEST_F(WholeShop, ComputerBeingAddedKeepsTheChosenClientThoughAnotherIsOnShow) {
    const int zoric = addClient("Zoric", "Z");  // the next one in the file
    const int ciric = addClient("Ciric", "C");  // the next one in the selector
    start();
    choose(0, "Babic, Bo");
    boxes.answers << platform::BoxAnswer::Yes;
    tool("DeleteRecord");
    ASSERT_EQ(chosen(0), "Ciric, C");
    ASSERT_EQ(text(0), "Zoric");
    win().controls.DTPicker1[0]->setValue(
        QDate(1980, 5, 17));  // of the one on show; a date alone is not saved
    tab(2);
    tool("NewRecord");
    type(19, "New");
    tool("Refresh");
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    EXPECT_EQ(chosen(0), "Ciric, C");
    tool("SaveRecord");
    EXPECT_EQ(valueOf("Computers", "MachineID", currentKey(1), "CustID").asLong(), ciric);
    tab(1);
    EXPECT_EQ(text(0), "Ciric");
    EXPECT_FALSE(win().controls.DTPicker1[0]->value()) << "a date of another client";
    EXPECT_EQ(valueOf("Customers", "CustID", zoric, "BirthDate"), dao::Value(kEmptyDate));
}

TEST_F(WholeShop, TypedForAComputerStaysWithIt) {
    start();
    choose(0, "Babic, Bo");
    tab(2);
    choose(1, "Mill");
    type(20, "six cores");
    tool("Refresh");
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(chosen(1), "Mill");
    EXPECT_EQ(text(20), "six cores");
    EXPECT_TRUE(win().controls.Data1[1]->fields().isChanged(field(20)));
    tab(1);
    EXPECT_EQ(valueOf("Computers", "MachineID", mill, "Processor").asText(), "six cores");
    EXPECT_EQ(valueOf("Computers", "MachineID", tower, "Processor").asText(), "");
}

TEST_F(WholeShop, DateAndCheckMarkStayAsTheyWereSet) {
    start();
    win().controls.DTPicker1[0]->setValue(QDate(1980, 5, 17));
    tool("Refresh");
    EXPECT_EQ(win().controls.DTPicker1[0]->value(), QDate(1980, 5, 17));
    EXPECT_FALSE(win().controls.StageDirty[0]) << "a date alone marks nothing";
    QTest::mouseClick(win().controls.Check1, Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, win().controls.Check1->height() / 2));
    type(6, "Pekara");
    tool("Refresh");
    EXPECT_TRUE(win().controls.Check1->isChecked());
    EXPECT_TRUE(win().controls.StageDirty[0]);
    tool("SaveRecord");
    EXPECT_EQ(chosen(0), "Pekara");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "BirthDate"), dao::Value(dao::Date{29358.0}));
    EXPECT_TRUE(valueOf("Customers", "CustID", anic, "FirmAddress").asBool());
}

TEST_F(WholeShop, WhatAColleagueHasWrittenAsWellIsStillToBeSaved) {
    start();
    type(13, "064");
    openDatabase().Execute("UPDATE Customers SET Cellular='064' WHERE CustID=" + std::to_string(anic));
    tool("Refresh");
    EXPECT_EQ(text(13), "064");
    EXPECT_TRUE(win().controls.StageDirty[0]);
    EXPECT_TRUE(win().controls.Data1[0]->fields().isChanged(field(13)));
}

TEST_F(WholeShop, TypedTextIsToldOfWhenTheClientsCannotBeRead) {
    start();
    type(13, "064");
    openDatabase().QueryDefs().Delete("QDCustomers0");
    tool("Refresh");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kGone.arg("Anic, Vesna"));
    EXPECT_EQ(text(13), "");
    EXPECT_TRUE(win().shop.stages[kClients].pane.isLocked());
}

TEST_F(WholeShop, AddEndsWithAWordWhenTheClientsCannotBeRead) {
    start();
    tool("NewRecord");
    type(0, "Zoric");
    openDatabase().QueryDefs().Delete("QDCustomers0");
    tool("Refresh");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Add New Record failed.\n\n[3420] Object invalid or no longer set.");
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_TRUE(win().shop.stages[kClients].pane.isLocked());
    EXPECT_EQ(win().status.text(), "Ready");
}

TEST_F(WholeShop, ClientsOfAnotherWorkstationComeAndGoWithARefresh) {
    closeDatabases();
    SecondProcess other([this](const SecondProcess::Side& side) {
        side.untilReleased();
        const int zoric = addClient("Zoric", "Zora");
        addService(addComputer(zoric, "New"));
        openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(anic));
        side.ready();
        side.untilReleased();
        openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(zoric));
        closeDatabases();
        side.ready();
    });
    startFiltered();
    other.release();
    ASSERT_TRUE(other.waitReady());
    EXPECT_EQ(clients(), QList<int>({babic}));
    closeDatabases();
    tool("RemoveFilter");
    EXPECT_EQ(entries(0), QStringList({"Babic, Bo", "Zoric, Zora"}));
    EXPECT_EQ(chosen(0), "Babic, Bo");
    other.release();
    ASSERT_TRUE(other.waitReady());
    tool("Refresh");
    EXPECT_EQ(entries(0), QStringList({"Babic, Bo"}));
    EXPECT_EQ(other.wait(), 0);
}

}  // namespace
