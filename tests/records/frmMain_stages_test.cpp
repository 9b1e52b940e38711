// The three stages: what the selectors and the tabs do, and which stage is read again when.

#include <QDateEdit>

#include "main_window.h"
#include "platform/controls/date_field.h"

namespace {

class Stages : public MainWindow {
 protected:
    // Two clients: Anic with two computers, one of them with two services; Peric with none.
    void twoClients() {
        anic = addClient("Anic", "Vesna");
        peric = addClient("Peric", "Pera");
        desk = addComputer(anic, "Desk");
        lap = addComputer(anic, "Laptop");
        first = addService(desk);
        second = addService(desk);
    }
    int anic = 0, peric = 0, desk = 0, lap = 0, first = 0, second = 0;
};

TEST_F(Stages, EmptyShopCanOnlyAddClients) {
    start();
    EXPECT_EQ(caption(1), "Klijenti");
    EXPECT_EQ(caption(2), "Kompjuteri");
    EXPECT_EQ(caption(3), "Usluge");
    EXPECT_TRUE(locked(0));
    EXPECT_TRUE(locked(18));
    EXPECT_TRUE(locked(19));
    EXPECT_FALSE(win().Check1->isEnabled());
    EXPECT_FALSE(win().DTPicker1[0]->isEnabled());
    EXPECT_TRUE(canUse("NewRecord"));
    for (const char* key : {"DeleteRecord", "SaveRecord", "EditRecord"})
        EXPECT_FALSE(canUse(key)) << key;
    tab(2);
    EXPECT_FALSE(canUse("NewRecord"));
    EXPECT_FALSE(canUse("DeleteRecord"));
    tab(3);
    EXPECT_FALSE(canUse("NewRecord"));
}

TEST_F(Stages, FirstClientOfTheRecordSetIsShownAtTheStart) {
    addClient("Zoric", "Zora", {{"NickName", "Zo"}});
    addClient("Anic", "Ana");
    start();
    EXPECT_EQ(entries(0), QStringList({"Anic, Ana", "Zoric, Zora - Zo"}));
    EXPECT_EQ(text(0), "Zoric");
    EXPECT_EQ(chosen(0), "Zoric, Zora - Zo");
    EXPECT_EQ(caption(1), "Zoric, Zora - Zo");
    EXPECT_EQ(win().RememberedIndex[0], 1);
}

TEST_F(Stages, FirmStandsForTheClientWhereTheAddressIsTheFirms) {
    addClient("Anic", "Ana", {{"FirmName", "Zelena & Sin"}, {"FirmAddress", true}});
    addClient("Babic", "Bo", {{"FirmName", "Unused"}, {"FirmAddress", false}});
    addClient("Cvijic", "Cica", {{"FirmName", "  "}, {"FirmAddress", true}});
    start();
    EXPECT_EQ(entries(0), QStringList({"Babic, Bo", "Cvijic, Cica", "Zelena & Sin"}));
    EXPECT_EQ(caption(1), "Zelena & Sin");
}

TEST_F(Stages, AllComputersAndServicesAreThereUntilTheFirstChangeOfTab) {
    twoClients();
    addComputer(peric, "Office");
    start();
    EXPECT_EQ(entries(1), QStringList({"Desk", "Laptop", "Office"}));
    EXPECT_EQ(win().ListView1->count(), 2);
    EXPECT_EQ(caption(2), "Kompjuteri");
    tab(2);
    EXPECT_EQ(entries(1), QStringList({"Desk", "Laptop"}));
    EXPECT_EQ(caption(2), "Desk");
}

TEST_F(Stages, ChoosingAClientShowsHimAndForgetsTheComputer) {
    twoClients();
    start();
    tab(2);
    tab(1);
    EXPECT_EQ(caption(2), "Desk");
    choose(0, "Peric, Pera");
    EXPECT_EQ(text(0), "Peric");
    EXPECT_EQ(currentKey(0), peric);
    EXPECT_EQ(caption(1), "Peric, Pera");
    EXPECT_EQ(caption(2), "Kompjuteri");
    EXPECT_EQ(entries(1), QStringList({"Desk", "Laptop"}))
        << "the next stage waits for the next change of tab";
}

TEST_F(Stages, GoingThereAndBackKeepsTheComputer) {
    twoClients();
    start();
    tab(2);
    choose(1, "Laptop");
    tab(1);
    tab(2);
    EXPECT_EQ(chosen(1), "Laptop");
    EXPECT_EQ(text(19), "Laptop");
    EXPECT_EQ(caption(2), "Laptop");
}

TEST_F(Stages, StageIsNotReadAgainForTheSameSelection) {
    twoClients();
    start();
    tab(2);
    addComputer(anic, "Brand new");
    tab(1);
    tab(2);
    EXPECT_EQ(entries(1), QStringList({"Desk", "Laptop"}));
}

TEST_F(Stages, ServicesFollowTheComputer) {
    twoClients();
    start();
    tab(2);
    tab(3);
    EXPECT_EQ(win().ListView1->count(), 2);
    EXPECT_TRUE(canUse("EditRecord"));
    tab(2);
    EXPECT_FALSE(canUse("EditRecord"));
    choose(1, "Laptop");
    tab(3);
    EXPECT_EQ(win().ListView1->count(), 0);
    EXPECT_FALSE(canUse("EditRecord"));
    EXPECT_EQ(win().Data1[2]->RecordSource, QString("SELECT * FROM QDServices0 WHERE MachineID=%1").arg(lap));
}

TEST_F(Stages, StraightFromClientsToServicesReadsBothStages) {
    twoClients();
    const int office = addComputer(peric, "Office");
    addService(office);
    start();
    tab(3);
    EXPECT_EQ(win().ListView1->count(), 2);
    tab(1);
    choose(0, "Peric, Pera");
    tab(3);
    EXPECT_EQ(entries(1), QStringList({"Office"}));
    EXPECT_EQ(win().ListView1->count(), 1);
    EXPECT_EQ(caption(2), "Office");
}

TEST_F(Stages, StraightToServicesWithTheSameClientLeavesTheListAsItWas) {
    twoClients();
    start();
    tab(3);
    ASSERT_EQ(win().ListView1->count(), 2);
    tab(2);
    choose(1, "Laptop");
    tab(1);
    tab(3);
    EXPECT_EQ(chosen(1), "Laptop");
    EXPECT_EQ(win().ListView1->count(), 2) << "the list of the desk computer stands as it was";
}

TEST_F(Stages, ClientWithoutComputersHasALockedStageAndNoServices) {
    twoClients();
    start();
    choose(0, "Peric, Pera");
    tab(2);
    EXPECT_EQ(win().Data1[1]->RecordSource, QString("SELECT * FROM QDComputers0 WHERE CustID=%1").arg(peric));
    EXPECT_EQ(win().Combo1[1]->entryCount(), 0);
    EXPECT_TRUE(win().isStageLocked(2));
    EXPECT_TRUE(locked(19));
    EXPECT_EQ(text(19), "");
    EXPECT_EQ(caption(2), "Kompjuteri");
    tab(3);
    EXPECT_EQ(win().ListView1->count(), 0);
    EXPECT_EQ(win().Data1[2]->RecordSource, "SELECT * FROM QDServices0 WHERE MachineID=-1");
}

TEST_F(Stages, LockedComputersStayLockedForTheNextClientUntilAnAdd) {
    twoClients();
    start();
    choose(0, "Peric, Pera");
    tab(2);
    tab(1);
    choose(0, "Anic, Vesna");
    tab(2);
    EXPECT_EQ(entries(1), QStringList({"Desk", "Laptop"}));
    EXPECT_TRUE(locked(19));
    tool("NewRecord");
    EXPECT_FALSE(locked(19));
}

TEST_F(Stages, EmptyShopSelectsNothingOnTheLaterStages) {
    start();
    tab(2);
    EXPECT_EQ(win().Data1[1]->RecordSource, "SELECT * FROM QDComputers0 WHERE CustID=-1");
    EXPECT_EQ(win().statusText(), "Ready");
}

TEST_F(Stages, EntryDeletedByAColleagueIsToldAndTheFirstIsSelected) {
    twoClients();
    const int zoric = addClient("Zoric", "Zora");
    start();
    choose(0, "Peric, Pera");
    openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(zoric));
    choose(0, "Zoric, Zora");
    EXPECT_EQ(boxes.lastText(),
              "Sorry, Zoric, Zora is not found in the database. First item will be selected.");
    EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(boxes.asked.last().title, "Tarvello");
    EXPECT_EQ(win().Combo1[0]->currentIndex(), 0);
    EXPECT_EQ(text(0), "Peric") << "the record set has not moved";
    EXPECT_EQ(currentKey(0), peric);
    EXPECT_EQ(entries(0).first(), "Anic, Vesna") << "no client gets another one's name";
    EXPECT_EQ(caption(1), "Anic, Vesna");
    EXPECT_EQ(boxes.asked.size(), 1);
}

TEST_F(Stages, EntryRenamedByAColleagueIsRewritten) {
    twoClients();
    start();
    openDatabase().Execute("UPDATE Customers SET GivenName='Petra' WHERE CustID=" + std::to_string(peric));
    choose(0, "Peric, Pera");
    EXPECT_EQ(chosen(0), "Peric, Petra");
    EXPECT_EQ(caption(1), "Peric, Petra");
}

TEST_F(Stages, TypingFindsTheFirstEntryThatBeginsSo) {
    twoClients();
    addClient("Petrovic", "Ana");
    start();
    type(win().Text2[0], "PE");
    EXPECT_EQ(chosen(0), "Peric, Pera");
    EXPECT_EQ(text(0), "Peric");
    QTest::keyClicks(win().Text2[0], "t");
    EXPECT_EQ(chosen(0), "Petrovic, Ana");
}

TEST_F(Stages, TypingWhatNobodyIsCalledChangesNothing) {
    twoClients();
    start();
    choose(0, "Peric, Pera");
    win().Text2[0]->setFocus();
    QTest::keyClicks(win().Text2[0], "xq");
    EXPECT_EQ(chosen(0), "Peric, Pera");
    EXPECT_EQ(text(0), "Peric");
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Stages, TypingFindsComputersToo) {
    twoClients();
    start();
    tab(2);
    type(win().Text2[1], "lap");
    EXPECT_EQ(text(19), "Laptop");
    EXPECT_EQ(caption(2), "Laptop");
}

TEST_F(Stages, EnterWalksThroughTheFieldsAndSelectsTheirText) {
    twoClients();
    start();
    win().Text2[0]->setFocus();
    for (QWidget* next : {static_cast<QWidget*>(win().Combo1[0]), field(0), field(1), field(2)}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_EQ(QApplication::focusWidget(), next) << next->objectName().toStdString();
    }
    auto* given = qobject_cast<QLineEdit*>(field(1));
    given->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(given->selectedText(), "Vesna");
}

TEST_F(Stages, EnterWalksThroughEveryEntryFieldOfThePane) {
    twoClients();
    start();
    QList<QWidget*> missed;
    for (int i = 0; i < 19; ++i)
        missed.append(field(i));
    missed << win().Check1 << win().DTPicker1[0]->edit() << win().DTPicker1[1]->edit()
           << win().DTPicker1[2]->edit() << win().Combo1[0];
    win().Text2[0]->setFocus();
    for (int step = 0; step < 40 && !missed.isEmpty(); ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter);
        missed.removeOne(QApplication::focusWidget());
    }
    for (const QWidget* widget : missed)
        ADD_FAILURE() << widget->objectName().toStdString();
    EXPECT_FALSE(win().StageDirty[0]);
}

TEST_F(Stages, EnterInCommentsWalksOnAndCtrlEnterBreaksTheLine) {
    twoClients();
    start();
    type(18, "one");
    QTest::keyClick(field(18), Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClicks(field(18), "two");
    EXPECT_EQ(text(18), "one\ntwo");
    QTest::keyClick(field(18), Qt::Key_Return);
    EXPECT_EQ(text(18), "one\ntwo");
    EXPECT_NE(QApplication::focusWidget(), field(18));
}

TEST_F(Stages, ClickIntoAFieldSelectsItsText) {
    twoClients();
    start();
    auto* surname = qobject_cast<QLineEdit*>(field(0));
    QTest::mouseClick(surname, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(surname->selectedText(), "Anic");
}

TEST_F(Stages, TypingMarksItsOwnStageDirty) {
    twoClients();
    start();
    EXPECT_FALSE(canUse("SaveRecord"));
    type(13, "064 123");
    EXPECT_TRUE(win().StageDirty[0]);
    EXPECT_TRUE(canUse("SaveRecord"));
    tab(2);
    EXPECT_FALSE(win().StageDirty[1]);
    type(40, "router");
    EXPECT_TRUE(win().StageDirty[1]);
    EXPECT_FALSE(win().StageDirty[0]);
}

TEST_F(Stages, FirmCheckBoxMarksTheClientDirty) {
    twoClients();
    start();
    QTest::mouseClick(win().Check1, Qt::LeftButton, Qt::NoModifier, QPoint(8, win().Check1->height() / 2));
    EXPECT_TRUE(win().Check1->isChecked());
    EXPECT_TRUE(win().StageDirty[0]);
}

TEST_F(Stages, DateAloneMarksNothingButIsWrittenWithTheRest) {
    twoClients();
    start();
    win().DTPicker1[0]->setValue(QDate(1980, 5, 17));
    EXPECT_FALSE(win().StageDirty[0]);
    EXPECT_FALSE(canUse("SaveRecord"));
    type(13, "064 123");
    tool("SaveRecord");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "BirthDate"), dao::Value(dao::Date{29358.0}));
}

TEST_F(Stages, FillingASelectorMarksNothingDirty) {
    twoClients();
    start();
    choose(0, "Peric, Pera");
    choose(0, "Anic, Vesna");
    EXPECT_FALSE(win().StageDirty[0]);
    EXPECT_FALSE(win().LoadingList);
}

TEST_F(Stages, SelectedTabHasThePlainPictureAndTheOthersTheCrossedOne) {
    start();
    const auto key = [&](int stage) { return win().TabStrip1->tabIcon(stage - 1).cacheKey(); };
    const qint64 clients = key(1), computersX = key(2), servicesX = key(3);
    tab(2);
    EXPECT_NE(key(1), clients);
    EXPECT_NE(key(2), computersX);
    EXPECT_EQ(key(3), servicesX);
    tab(1);
    EXPECT_EQ(key(1), clients);
    EXPECT_EQ(key(2), computersX);
}

TEST_F(Stages, OnePaneIsOnShow) {
    twoClients();
    start();
    for (const int stage : {2, 3, 1}) {
        tab(stage);
        EXPECT_EQ(win().CurrentStage, stage);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(win().Picture1[static_cast<size_t>(i)]->isVisible(), i + 1 == stage);
    }
}

TEST_F(Stages, TabsAreToldByTheirTips) {
    start();
    EXPECT_EQ(win().TabStrip1->tabToolTip(0), "Klijenti");
    EXPECT_EQ(win().TabStrip1->tabToolTip(1), "Kompjuteri");
    EXPECT_EQ(win().TabStrip1->tabToolTip(2), "Usluge");
}

TEST_F(Stages, RefusedSaveLeavesTheOldTabAndPane) {
    twoClients();
    start();
    type(0, "");
    boxes.answers << platform::BoxAnswer::Yes;
    tab(2);
    EXPECT_EQ(win().TabStrip1->currentIndex(), 0);
    EXPECT_EQ(win().CurrentStage, 1);
    EXPECT_TRUE(win().Picture1[0]->isVisible());
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(QApplication::focusWidget(), field(0));
}

TEST_F(Stages, FailureWhileATabChangesIsToldAndTheStageIsReadAgainNextTime) {
    twoClients();
    addComputer(peric, "Office");
    start();
    openDatabase().QueryDefs()["QDComputers0"].setSQL("SELECT * FROM NoSuchTable");
    tab(2);
    EXPECT_TRUE(boxes.lastText().startsWith("An unexpected error has occured - [3078] "))
        << boxes.lastText().toStdString();
    EXPECT_EQ(win().statusText(), "Ready");
    openDatabase().QueryDefs()["QDComputers0"].setSQL("SELECT * FROM Computers");
    tab(1);
    tab(2);
    EXPECT_EQ(entries(1), QStringList({"Desk", "Laptop"}));
}

TEST_F(Stages, OrderInForceGoesIntoTheServicesSource) {
    twoClients();
    start();
    win().LVWSorted = true;
    win().LVWSortField = "Price";
    win().LVWSortOrder = "DESC";
    tab(3);
    EXPECT_EQ(win().Data1[2]->RecordSource,
              QString("SELECT * FROM QDServices0 WHERE MachineID=%1 ORDER BY Price DESC").arg(desk));
    EXPECT_EQ(win().ListView1->count(), 2);
}

TEST_F(Stages, ClientsOfOneNameAreToldApartByTheirNumber) {
    addClient("Peric", "Pera", {{"Street", "One"}});
    const int two = addClient("Peric", "Pera", {{"Street", "Two"}});
    start();
    for (int i = 0; i < 2; ++i) {
        win().Combo1[0]->setCurrentIndex(1 - win().Combo1[0]->currentIndex());
        EXPECT_EQ(win().Combo1[0]->entryData(win().Combo1[0]->currentIndex()), currentKey(0));
    }
    win().Combo1[0]->setCurrentIndex(1);
    ASSERT_EQ(currentKey(0), two);
    tool("NewRecord");
    boxes.answers << platform::BoxAnswer::No;
    tab(2);
    EXPECT_EQ(text(7), "Two");
    EXPECT_EQ(win().Combo1[0]->currentIndex(), 1);
}

TEST_F(Stages, F1OnAFieldShowsItsTopic) {
    static QList<int> topics;
    topics.clear();
    setHelpViewer([](const QString&, HelpCommand command, int context) {
        if (command == HELP_CONTEXT)
            topics.append(context);
        return true;
    });
    twoClients();
    start();
    field(0)->setFocus();
    QTest::keyClick(field(0), Qt::Key_F1);
    win().DTPicker1[0]->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
    tab(3);
    win().ListView1->setFocus();
    QTest::keyClick(win().ListView1, Qt::Key_F1);
    setHelpViewer(nullptr);
    EXPECT_EQ(topics, QList<int>({503, 506, 701}));
}

}  // namespace
