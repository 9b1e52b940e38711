// The three stages: what the selectors and the tabs do, and which stage is read again when.

#include <gmock/gmock.h>

#include <QDateEdit>

#include "narrowed_window.h"
#include "platform/controls/date_field.h"
#include "support/topics.h"

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
    EXPECT_FALSE(win().controls.Check1->isEnabled());
    EXPECT_FALSE(win().controls.DTPicker1[0]->isEnabled());
    EXPECT_TRUE(canUse("NewRecord"));
    for (const char* key : {"DeleteRecord", "SaveRecord", "EditRecord"}) {
        EXPECT_FALSE(canUse(key)) << key;
    }
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
    EXPECT_EQ(win().controls.RememberedIndex[0], 1);
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
    EXPECT_EQ(win().controls.ListView1->count(), 2);
    EXPECT_EQ(caption(2), "Kompjuteri");
    tab(2);
    EXPECT_EQ(entries(1), QStringList({"Desk", "Laptop"}));
    EXPECT_EQ(caption(2), "Desk");
}

// Hundreds of thousands of names, which the first change of tab would throw away.
TEST_F(Stages, NamesOfAllComputersAreReadOnlyWhereSomebodyLooks) {
    twoClients();
    start();
    QList<int> entriesRead;
    for (const platform::Selector* selector : win().findChildren<platform::Selector*>()) {
        entriesRead.append(selector->entryCount());
    }
    EXPECT_THAT(entriesRead, testing::UnorderedElementsAre(2, 0)) << "the clients' alone";
    addComputer(peric, "Office");
    EXPECT_EQ(entries(1), QStringList({"Desk", "Laptop", "Office"})) << "of the moment of looking";
    EXPECT_EQ(chosen(1), "Desk");
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
    EXPECT_EQ(win().controls.ListView1->count(), 2);
    EXPECT_TRUE(canUse("EditRecord"));
    tab(2);
    EXPECT_FALSE(canUse("EditRecord"));
    choose(1, "Laptop");
    tab(3);
    EXPECT_EQ(win().controls.ListView1->count(), 0);
    EXPECT_FALSE(canUse("EditRecord"));
    EXPECT_EQ(win().controls.Data1[2]->RecordSource(),
              QString("SELECT * FROM QDServices0 WHERE MachineID=%1").arg(lap));
}

TEST_F(Stages, StraightFromClientsToServicesReadsBothStages) {
    twoClients();
    const int office = addComputer(peric, "Office");
    addService(office);
    start();
    tab(3);
    EXPECT_EQ(win().controls.ListView1->count(), 2);
    tab(1);
    choose(0, "Peric, Pera");
    tab(3);
    EXPECT_EQ(entries(1), QStringList({"Office"}));
    EXPECT_EQ(win().controls.ListView1->count(), 1);
    EXPECT_EQ(caption(2), "Office");
}

TEST_F(Stages, StraightToServicesWithTheSameClientLeavesTheListAsItWas) {
    twoClients();
    start();
    tab(3);
    ASSERT_EQ(win().controls.ListView1->count(), 2);
    tab(2);
    choose(1, "Laptop");
    tab(1);
    tab(3);
    EXPECT_EQ(chosen(1), "Laptop");
    EXPECT_EQ(win().controls.ListView1->count(), 2) << "the list of the desk computer stands as it was";
}

TEST_F(Stages, ClientWithoutComputersHasALockedStageAndNoServices) {
    twoClients();
    start();
    choose(0, "Peric, Pera");
    tab(2);
    EXPECT_EQ(win().controls.Data1[1]->RecordSource(),
              QString("SELECT * FROM QDComputers0 WHERE CustID=%1").arg(peric));
    EXPECT_EQ(win().controls.Combo1[1]->entryCount(), 0);
    EXPECT_TRUE(win().shop.stages[kComputers].pane.isLocked());
    EXPECT_TRUE(locked(19));
    EXPECT_EQ(text(19), "");
    EXPECT_EQ(caption(2), "Kompjuteri");
    tab(3);
    EXPECT_EQ(win().controls.ListView1->count(), 0);
    EXPECT_EQ(win().controls.Data1[2]->RecordSource(), "SELECT * FROM QDServices0 WHERE MachineID=-1");
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
    EXPECT_EQ(win().controls.Data1[1]->RecordSource(), "SELECT * FROM QDComputers0 WHERE CustID=-1");
    EXPECT_EQ(win().status.text(), "Ready");
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
    EXPECT_EQ(win().controls.Combo1[0]->currentIndex(), 0);
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
    type(win().controls.Text2[0], "PE");
    EXPECT_EQ(chosen(0), "Peric, Pera");
    EXPECT_EQ(text(0), "Peric");
    QTest::keyClicks(win().controls.Text2[0], "t");
    EXPECT_EQ(chosen(0), "Petrovic, Ana");
}

TEST_F(Stages, TypingWhatNobodyIsCalledChangesNothing) {
    twoClients();
    start();
    choose(0, "Peric, Pera");
    by_hand::click(win().controls.Text2[0]);
    QTest::keyClicks(win().controls.Text2[0], "xq");
    EXPECT_EQ(chosen(0), "Peric, Pera");
    EXPECT_EQ(text(0), "Peric");
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Stages, ABoxThatFindsNobodyShowsIt) {
    twoClients();
    start();
    QLineEdit* box = win().controls.Text2[0];
    const QColor usual = box->palette().color(QPalette::Base);
    type(box, "an");
    EXPECT_EQ(box->palette().color(QPalette::Base), usual);
    EXPECT_EQ(box->accessibleDescription(), "");
    QTest::keyClicks(box, "q");
    EXPECT_NE(box->palette().color(QPalette::Base), usual);
    EXPECT_EQ(box->accessibleDescription(), "Nothing begins with this");
    EXPECT_EQ(chosen(0), "Anic, Vesna") << "what is shown stays";
    QTest::keyClick(box, Qt::Key_Backspace);
    EXPECT_EQ(box->palette().color(QPalette::Base), usual);
    EXPECT_EQ(box->accessibleDescription(), "");
    type(box, "q");
    type(box, "");
    EXPECT_EQ(box->accessibleDescription(), "") << "nothing was asked for";
}

TEST_F(Stages, TypingFindsComputersToo) {
    twoClients();
    start();
    tab(2);
    type(win().controls.Text2[1], "lap");
    EXPECT_EQ(text(19), "Laptop");
    EXPECT_EQ(caption(2), "Laptop");
}

TEST_F(Stages, EnterWalksThroughTheFieldsAndSelectsTheirText) {
    twoClients();
    start();
    by_hand::click(win().controls.Text2[0]);
    for (QWidget* next : {static_cast<QWidget*>(win().controls.Combo1[0]), field(0), field(1)}) {
        by_hand::press(Qt::Key_Return);
        EXPECT_EQ(QApplication::focusWidget(), next) << next->objectName().toStdString();
    }
    EXPECT_EQ(qobject_cast<QLineEdit*>(field(1))->selectedText(), "Vesna");
    by_hand::press(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), field(2));
    type(win().controls.Text2[0], "an");
    by_hand::press(Qt::Key_Backtab, Qt::ShiftModifier);
    by_hand::press(Qt::Key_Tab);
    EXPECT_EQ(win().controls.Text2[0]->selectedText(), "an");
}

TEST_F(Stages, EnterWalksThroughEveryEntryFieldOfThePane) {
    twoClients();
    start();
    QList<QWidget*> missed;
    for (int i = 0; i < 19; ++i) {
        missed.append(field(i));
    }
    missed << win().controls.Check1 << win().controls.DTPicker1[0]->edit()
           << win().controls.DTPicker1[1]->edit() << win().controls.DTPicker1[2]->edit()
           << win().controls.Combo1[0];
    by_hand::click(win().controls.Text2[0]);
    for (int step = 0; step < 40 && !missed.isEmpty(); ++step) {
        by_hand::press(Qt::Key_Enter);
        missed.removeOne(QApplication::focusWidget());
    }
    for (const QWidget* widget : missed) {
        ADD_FAILURE() << widget->objectName().toStdString();
    }
    EXPECT_FALSE(win().controls.StageDirty[0]);
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
    EXPECT_TRUE(win().controls.StageDirty[0]);
    EXPECT_TRUE(canUse("SaveRecord"));
    tab(2);
    EXPECT_FALSE(win().controls.StageDirty[1]);
    type(40, "router");
    EXPECT_TRUE(win().controls.StageDirty[1]);
    EXPECT_FALSE(win().controls.StageDirty[0]);
}

TEST_F(Stages, FirmCheckBoxMarksTheClientDirty) {
    twoClients();
    start();
    by_hand::click(win().controls.Check1);
    EXPECT_TRUE(win().controls.Check1->isChecked());
    EXPECT_TRUE(win().controls.StageDirty[0]);
}

TEST_F(Stages, DateAloneMarksNothingButIsWrittenWithTheRest) {
    twoClients();
    start();
    type(win().controls.DTPicker1[0]->edit(), "5/17/1980");
    by_hand::press(Qt::Key_Tab);
    EXPECT_FALSE(win().controls.StageDirty[0]);
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
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_FALSE(win().shop.stages.LoadingList);
}

TEST_F(Stages, SelectedTabHasThePlainPictureAndTheOthersTheCrossedOne) {
    start();
    const auto key = [&](int stage) { return win().controls.TabStrip1->tabIcon(stage - 1).cacheKey(); };
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
        EXPECT_EQ(win().shop.stages.CurrentStage, stage);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(win().controls.Picture1[static_cast<size_t>(i)]->isVisible(), i + 1 == stage);
        }
    }
}

TEST_F(Stages, TabsAreAsWideAsTheirNamesAndALongOneIsCut) {
    addClient("A", "B");
    addClient(std::string(50, 'W').c_str(), std::string(50, 'W').c_str());
    start();
    EXPECT_LT(win().controls.TabStrip1->tabRect(2).right(), win().controls.TabStrip1->width() / 2);
    choose(0, QString(50, 'W') + ", " + QString(50, 'W'));
    EXPECT_LT(win().controls.TabStrip1->tabRect(2).right(), win().controls.TabStrip1->width());
    EXPECT_GT(win().controls.TabStrip1->tabRect(0).width(), win().controls.TabStrip1->tabRect(1).width());
    EXPECT_EQ(caption(1), QString(50, 'W') + ", " + QString(50, 'W'));
}

TEST_F(Stages, TabsAreToldByTheirTips) {
    start();
    EXPECT_EQ(win().controls.TabStrip1->tabToolTip(0), "Klijenti");
    EXPECT_EQ(win().controls.TabStrip1->tabToolTip(1), "Kompjuteri");
    EXPECT_EQ(win().controls.TabStrip1->tabToolTip(2), "Usluge");
}

TEST_F(Stages, RefusedSaveLeavesTheOldTabAndPane) {
    twoClients();
    start();
    type(0, "");
    boxes.answers << platform::BoxAnswer::Yes;
    tab(2);
    EXPECT_EQ(win().controls.TabStrip1->currentIndex(), 0);
    EXPECT_EQ(win().shop.stages.CurrentStage, 1);
    EXPECT_TRUE(win().controls.Picture1[0]->isVisible());
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(QApplication::focusWidget(), field(0));
    type(0, "Anicka");
    tab(2);
    EXPECT_EQ(win().shop.stages.CurrentStage, 2) << "mended, it is left as ever";
    EXPECT_TRUE(win().controls.Picture1[1]->isVisible());
    EXPECT_EQ(caption(1), "Anicka, Vesna");
}

TEST_F(Stages, FailureWhileATabChangesIsToldAndTheStageIsReadAgainNextTime) {
    twoClients();
    addComputer(peric, "Office");
    start();
    openDatabase().QueryDefs()["QDComputers0"].setSQL("SELECT * FROM NoSuchTable");
    tab(2);
    EXPECT_TRUE(boxes.lastText().startsWith("An unexpected error has occured - [3078] "))
        << boxes.lastText().toStdString();
    EXPECT_EQ(win().status.text(), "Ready");
    openDatabase().QueryDefs()["QDComputers0"].setSQL("SELECT * FROM Computers");
    tab(1);
    tab(2);
    EXPECT_EQ(entries(1), QStringList({"Desk", "Laptop"}));
}

TEST_F(Stages, OrderInForceGoesIntoTheServicesSource) {
    twoClients();
    addService(lap);
    start();
    tab(3);
    for (int click = 0; click < 2; ++click) {
        by_hand::clickHeader(win().controls.ListView1, columnNumber(ServiceColumn::Price));
    }
    tab(2);
    choose(1, "Laptop");
    tab(3);
    EXPECT_EQ(win().controls.Data1[2]->RecordSource(),
              QString("SELECT * FROM QDServices0 WHERE MachineID=%1 ORDER BY Price DESC").arg(lap));
    EXPECT_EQ(win().controls.ListView1->count(), 1);
}

TEST_F(Stages, ClientsOfOneNameAreToldApartByTheirNumber) {
    addClient("Peric", "Pera", {{"Street", "One"}});
    const int two = addClient("Peric", "Pera", {{"Street", "Two"}});
    start();
    ASSERT_EQ(win().controls.Combo1[0]->currentIndex(), 0);
    by_hand::click(win().controls.Text2[0]);
    by_hand::press(Qt::Key_Tab);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Down}) {
        by_hand::press(key);
        EXPECT_EQ(win().controls.Combo1[0]->currentIndex(), key == Qt::Key_Down ? 1 : 0);
        EXPECT_EQ(win().controls.Combo1[0]->entryData(win().controls.Combo1[0]->currentIndex()),
                  currentKey(0));
        EXPECT_EQ(text(7), key == Qt::Key_Down ? "Two" : "One");
    }
    ASSERT_EQ(currentKey(0), two);
    tool("NewRecord");
    boxes.answers << platform::BoxAnswer::No;
    tab(2);
    EXPECT_EQ(text(7), "Two");
    EXPECT_EQ(win().controls.Combo1[0]->currentIndex(), 1);
}

// --- What the window says while it reads a stage again.

TEST_F(Stages, ReadingAStageAgainIsSaid) {
    twoClients();
    start();
    const QStringList once({"Working... Please Wait...", "Ready"});
    const auto said = [&](int stage) {
        const StatusWatch watch(win());
        tab(stage);
        return watch.said;
    };
    EXPECT_EQ(said(2), once);
    EXPECT_EQ(said(3), once);
    EXPECT_EQ(said(2), QStringList());
    EXPECT_EQ(said(1), QStringList());
    EXPECT_EQ(said(3), QStringList()) << "nothing has to be read again";
    tab(1);
    choose(0, "Peric, Pera");
    EXPECT_EQ(said(3), once) << "both stages under one message";
}

TEST_F(Stages, MessageStandsUntilTheStageIsThere) {
    twoClients();
    start();
    QList<QStringList> seen;
    for (const size_t stage : {1U, 2U}) {
        QObject::connect(win().controls.Data1[stage], &platform::DataControl::repositioned, &win(),
                         [&, stage] {
                             const QStringList now({QString::number(stage), win().status.text()});
                             if (seen.isEmpty() || seen.last() != now) {
                                 seen.append(now);
                             }
                         });
    }
    const QString working = "Working... Please Wait...";
    tab(2);
    EXPECT_EQ(seen, QList<QStringList>({{"1", working}}));
    seen.clear();
    tab(3);
    EXPECT_EQ(seen, QList<QStringList>({{"2", working}}));
    seen.clear();
    tab(1);
    choose(0, "Peric, Pera");
    tab(3);
    EXPECT_EQ(seen, QList<QStringList>({{"1", working}, {"2", working}}));
    EXPECT_EQ(win().status.text(), "Ready");
}

// --- The tabs while something new is added.

TEST_F(Stages, NewClientTakesTheNamesOffBothTabs) {
    twoClients();
    start();
    tab(2);
    tab(1);
    ASSERT_EQ(caption(2), "Desk");
    tool("NewRecord");
    EXPECT_EQ(caption(1), "Klijenti");
    EXPECT_EQ(caption(2), "Kompjuteri");
    EXPECT_EQ(caption(3), "Usluge");
    EXPECT_EQ(chosen(0), "");
    EXPECT_EQ(win().status.text(), "Add new mode...");
    typeClient("Babic", "Bo");
    tool("SaveRecord");
    EXPECT_EQ(caption(1), "Babic, Bo");
    EXPECT_EQ(caption(2), "Kompjuteri");
    EXPECT_EQ(win().status.text(), "Ready");
}

TEST_F(Stages, NewComputerTakesTheNameOffItsOwnTabOnly) {
    twoClients();
    start();
    tab(2);
    ASSERT_EQ(caption(2), "Desk");
    tool("NewRecord");
    EXPECT_EQ(caption(1), "Anic, Vesna");
    EXPECT_EQ(caption(2), "Kompjuteri");
    EXPECT_EQ(caption(3), "Usluge");
    EXPECT_EQ(chosen(1), "");
    EXPECT_EQ(win().status.text(), "Add new mode...");
    type(19, "Server");
    tool("SaveRecord");
    EXPECT_EQ(caption(1), "Anic, Vesna");
    EXPECT_EQ(caption(2), "Server");
    EXPECT_EQ(chosen(1), "Server");
    EXPECT_EQ(win().status.text(), "Ready");
}

// --- The selectors under keys and wheel.

TEST_F(Stages, SelectorGoesOnByArrowKeysAndByLetters) {
    twoClients();
    addClient("Zoric", "Zora");
    start();
    by_hand::click(win().controls.Text2[0]);
    by_hand::press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), win().controls.Combo1[0]);
    by_hand::press(Qt::Key_Down);
    EXPECT_EQ(text(0), "Peric");
    EXPECT_EQ(caption(1), "Peric, Pera");
    by_hand::press(Qt::Key_Down);
    EXPECT_EQ(text(0), "Zoric");
    by_hand::press(Qt::Key_Up);
    EXPECT_EQ(text(0), "Peric");
    by_hand::press(Qt::Key_Home);
    EXPECT_EQ(text(0), "Anic");
    QTest::keyClicks(win().controls.Combo1[0], "z");
    EXPECT_EQ(text(0), "Zoric");
    EXPECT_EQ(caption(1), "Zoric, Zora");
}

TEST_F(Stages, OpenedListChangesNothingUntilAnEntryIsTaken) {
    twoClients();
    start();
    by_hand::click(win().controls.Text2[0]);
    by_hand::press(Qt::Key_Tab);
    by_hand::press(Qt::Key_F4);
    QWidget* list = win().controls.Combo1[0]->view();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(list->window()));
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(text(0), "Anic");
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_EQ(text(0), "Anic");
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    by_hand::press(Qt::Key_F4);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(list->window()));
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(text(0), "Peric");
}

TEST_F(Stages, WheelOverASelectorThatWasNotClickedChangesNothing) {
    twoClients();
    start();
    by_hand::click(field(0));
    by_hand::rollWheel(win().controls.Combo1[0], -1);
    EXPECT_EQ(QApplication::focusWidget(), field(0));
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(text(0), "Anic");
    choose(0, "Anic, Vesna");
    ASSERT_EQ(QApplication::focusWidget(), win().controls.Combo1[0]);
    by_hand::rollWheel(win().controls.Combo1[0], -1);
    EXPECT_EQ(text(0), "Peric");
}

TEST_F(Stages, WheelOverTheTabsChangesTheStageAsAClickDoes) {
    twoClients();
    start();
    by_hand::rollWheel(win().controls.TabStrip1, -1);
    EXPECT_EQ(win().shop.stages.CurrentStage, win().controls.TabStrip1->currentIndex() + 1);
    EXPECT_TRUE(
        win().controls.Picture1[static_cast<size_t>(win().shop.stages.CurrentStage - 1)]->isVisible());
}

TEST_F(Stages, TabsGoOnByTheArrowKeys) {
    twoClients();
    start();
    tab(1);
    win().controls.TabStrip1->setFocus(Qt::TabFocusReason);
    QTest::keyClick(win().controls.TabStrip1, Qt::Key_Right);
    EXPECT_EQ(win().shop.stages.CurrentStage, 2);
    EXPECT_EQ(chosen(1), "Desk");
    QTest::keyClick(win().controls.TabStrip1, Qt::Key_Right);
    EXPECT_EQ(win().shop.stages.CurrentStage, 3);
    EXPECT_EQ(win().controls.ListView1->count(), 2);
    QTest::keyClick(win().controls.TabStrip1, Qt::Key_Left);
    EXPECT_EQ(win().shop.stages.CurrentStage, 2);
}

TEST_F(Stages, F1OnAFieldShowsItsTopic) {
    const AskedTopics topics;
    twoClients();
    start();
    by_hand::click(field(0));
    by_hand::press(Qt::Key_F1);
    by_hand::click(win().controls.DTPicker1[0]->edit());
    by_hand::press(Qt::Key_F1);
    tab(3);
    by_hand::clickRow(win().controls.ListView1, 1);
    by_hand::press(Qt::Key_F1);
    EXPECT_EQ(topics.all(), QList<int>({503, 506, 701}));
}

}  // namespace
