// Clients and computers: added, saved, dropped, deleted in place.

#include "main_window.h"
#include "platform/controls/date_field.h"
#include "platform/system/launch.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

namespace {

const QString kFixQuestion = QStringLiteral(
    "Error(s) was(were) encountered while trying to update the database:\n\n%1\n\nDo you want to fix it "
    "(them)?");

class Editing : public MainWindow {};

TEST_F(Editing, AddedClientIsInTheFileTheSelectorAndOnTheTab) {
    start();
    tool("NewRecord");
    EXPECT_EQ(win().status.text(), "Add new mode...");
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    EXPECT_FALSE(locked(0));
    EXPECT_EQ(win().controls.RememberedIndex[0], -1);
    typeClient("Markovic", "Jelena");
    type(2, "Jeca");
    type(18, "pays late");
    tool("SaveRecord");
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_EQ(entries(0), QStringList({"Markovic, Jelena - Jeca"}));
    EXPECT_EQ(chosen(0), "Markovic, Jelena - Jeca");
    EXPECT_EQ(caption(1), "Markovic, Jelena - Jeca");
    const int id = win().controls.Combo1[0]->entryData(0);
    EXPECT_EQ(valueOf("Customers", "CustID", id, "Surname").asText(), "Markovic");
    EXPECT_EQ(valueOf("Customers", "CustID", id, "Comments").asText(), "pays late");
    EXPECT_EQ(currentKey(0), id);
}

TEST_F(Editing, AddedClientWithAFirmAddressIsCalledByTheFirm) {
    addClient("Anic", "Vesna");
    start();
    tool("NewRecord");
    EXPECT_EQ(caption(1), "Klijenti");
    EXPECT_EQ(caption(2), "Kompjuteri");
    EXPECT_EQ(win().controls.Combo1[0]->currentIndex(), -1);
    typeClient("Markovic", "Jelena");
    type(6, "Pekara Zlatni Klas");
    QTest::mouseClick(win().controls.Check1, Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, win().controls.Check1->height() / 2));
    tool("SaveRecord");
    EXPECT_EQ(chosen(0), "Pekara Zlatni Klas");
    EXPECT_EQ(caption(1), "Pekara Zlatni Klas");
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Pekara Zlatni Klas"}));
}

TEST_F(Editing, DatesOfANewClientAreEmptyAndStoredSo) {
    start();
    tool("NewRecord");
    EXPECT_FALSE(win().controls.DTPicker1[0]->value());
    typeClient("Markovic", "Jelena");
    tool("SaveRecord");
    const int id = win().controls.Combo1[0]->entryData(0);
    EXPECT_EQ(valueOf("Customers", "CustID", id, "BirthDate"), dao::Value(kEmptyDate));
}

TEST_F(Editing, AddedComputerBelongsToTheSelectedClient) {
    addClient("Anic", "Vesna");
    const int peric = addClient("Peric", "Pera");
    start();
    choose(0, "Peric, Pera");
    tab(2);
    tool("NewRecord");
    type(19, "Office");
    tool("SaveRecord");
    EXPECT_EQ(chosen(1), "Office");
    EXPECT_EQ(caption(2), "Office");
    const int id = win().controls.Combo1[1]->entryData(0);
    EXPECT_EQ(valueOf("Computers", "MachineID", id, "CustID").asLong(), peric);
}

TEST_F(Editing, AddingAComputerNeedsAClient) {
    start();
    tab(2);
    EXPECT_FALSE(canUse("NewRecord"));
    open(win().bars.menus.menu(Menu::Database));
    EXPECT_FALSE(win().bars.menus.entry(Command::AddRecord)->isEnabled());
    win().bars.menus.menu(Menu::Database)->close();
}

TEST_F(Editing, SecondAddIsRefused) {
    start();
    tool("NewRecord");
    tool("NewRecord");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "You're already adding a new item in the data base.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    EXPECT_TRUE(win().shop.editing.AddNewMode);
}

TEST_F(Editing, NewRecordIsTypedFromItsFirstFieldOn) {
    addClient("Anic", "Vesna");
    start();
    win().controls.Text2[0]->setFocus();
    tool("NewRecord");
    EXPECT_EQ(QApplication::focusWidget(), field(0));
    QTest::keyClicks(QApplication::focusWidget(), "Babic");
    EXPECT_EQ(text(0), "Babic");
    typeClient("Babic", "Bo");
    tab(2);
    open(win().bars.menus.menu(Menu::Database));
    give(Command::AddRecord);
    EXPECT_EQ(QApplication::focusWidget(), field(19));
    QTest::keyClicks(QApplication::focusWidget(), "Office");
    EXPECT_EQ(text(19), "Office");
}

TEST_F(Editing, MissingFieldsAreNamedInOrderAndTheFirstGetsTheFocus) {
    start();
    tool("NewRecord");
    typeClient("Markovic", "");
    type(8, "  ");
    boxes.answers << BoxAnswer::Yes;
    tool("SaveRecord");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kFixQuestion.arg("Missing Client's Given Name.\nMissing Client's Address - "
                                                 "Town/City Name."));
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes.asked.last().buttons, BoxButtons::YesNo);
    EXPECT_EQ(QApplication::focusWidget(), field(1));
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    EXPECT_TRUE(win().controls.StageDirty[0]);
    EXPECT_EQ(text(0), "Markovic");
    EXPECT_EQ(countRows("Customers"), 0);
}

TEST_F(Editing, EachRequiredFieldHasItsMessage) {
    start();
    tool("NewRecord");
    type(12, "021");
    boxes.answers << BoxAnswer::Yes;
    tool("SaveRecord");
    EXPECT_EQ(boxes.lastText(),
              kFixQuestion.arg(
                  "Missing Client's Surname.\nMissing Client's Given Name.\nMissing Client's Address - "
                  "Street Name & Number.\nMissing Client's Address - Town/City Name.\nMissing Client's "
                  "Address - Postal/ZIP Code.\nMissing Client's Address - Country Name."));
}

TEST_F(Editing, DeclinedFixDropsTheNewClientAndLocksTheEmptyStage) {
    start();
    tool("NewRecord");
    type(2, "nobody");
    boxes.answers << BoxAnswer::No;
    tool("SaveRecord");
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_TRUE(win().shop.stages[kClients].pane.isLocked());
    EXPECT_TRUE(locked(0));
    EXPECT_EQ(text(2), "");
    EXPECT_EQ(caption(1), "Klijenti");
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_EQ(countRows("Customers"), 0);
}

TEST_F(Editing, DeclinedFixOfANewClientGoesBackToTheOneBefore) {
    addClient("Anic", "Vesna");
    const int peric = addClient("Peric", "Pera");
    start();
    choose(0, "Peric, Pera");
    tool("NewRecord");
    type(2, "nobody");
    boxes.answers << BoxAnswer::No;
    tool("SaveRecord");
    EXPECT_EQ(text(0), "Peric");
    EXPECT_EQ(chosen(0), "Peric, Pera");
    EXPECT_EQ(caption(1), "Peric, Pera");
    EXPECT_EQ(currentKey(0), peric);
    EXPECT_FALSE(win().shop.stages[kClients].pane.isLocked());
}

TEST_F(Editing, DeclinedFixOfAnEditBringsTheStoredValuesBack) {
    const int anic = addClient("Anic", "Vesna");
    start();
    type(0, "");
    type(13, "064");
    boxes.answers << BoxAnswer::No;
    tool("SaveRecord");
    EXPECT_EQ(text(0), "Anic");
    EXPECT_EQ(text(13), "");
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "");
}

TEST_F(Editing, EditIsWrittenBySave) {
    const int anic = addClient("Anic", "Vesna");
    start();
    type(13, "064 555");
    tool("SaveRecord");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "064 555");
    EXPECT_FALSE(canUse("SaveRecord"));
}

TEST_F(Editing, TextIsStoredAsTyped) {
    addClient("Anic", "Vesna");
    MakeProperCase = true;
    start();
    type(0, "de la CRUZ");
    tool("SaveRecord");
    EXPECT_EQ(valueOf("Customers", "CustID", currentKey(0), "Surname").asText(), "de la CRUZ");
}

TEST_F(Editing, RenamedClientKeepsHisPlaceUntilTheNextFill) {
    addClient("Anic", "Vesna");
    addClient("Peric", "Pera");
    start();
    type(0, "Zoric");
    tool("SaveRecord");
    EXPECT_EQ(entries(0), QStringList({"Zoric, Vesna", "Peric, Pera"}));
    EXPECT_EQ(win().controls.Combo1[0]->currentIndex(), 0);
    EXPECT_EQ(caption(1), "Zoric, Vesna");
    win().shop.reading.FillClientCombo();
    EXPECT_EQ(entries(0), QStringList({"Peric, Pera", "Zoric, Vesna"}));
}

TEST_F(Editing, ChangeOfCaseAloneRenamesToo) {
    addClient("anic", "Vesna");
    start();
    type(0, "Anic");
    tool("SaveRecord");
    EXPECT_EQ(chosen(0), "Anic, Vesna");
}

TEST_F(Editing, LeavingByTheSelectorSaves) {
    const int anic = addClient("Anic", "Vesna");
    addClient("Peric", "Pera");
    start();
    type(0, "Zoric");
    choose(0, "Peric, Pera");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Surname").asText(), "Zoric");
    EXPECT_EQ(text(0), "Peric");
    EXPECT_EQ(chosen(0), "Peric, Pera");
    EXPECT_EQ(caption(1), "Peric, Pera");
    EXPECT_EQ(entries(0), QStringList({"Zoric, Vesna", "Peric, Pera"}));
    EXPECT_FALSE(win().controls.StageDirty[0]);
}

TEST_F(Editing, LeavingByTheSelectorIsRefusedWhileSomethingIsMissing) {
    addClient("Anic", "Vesna");
    addClient("Peric", "Pera");
    start();
    type(1, "");
    boxes.answers << BoxAnswer::Yes;
    choose(0, "Peric, Pera");
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    EXPECT_EQ(text(0), "Anic");
    EXPECT_EQ(text(1), "");
    EXPECT_EQ(QApplication::focusWidget(), field(1));
    EXPECT_TRUE(win().controls.StageDirty[0]);
}

TEST_F(Editing, LeavingByTheSelectorCanGiveTheEditUp) {
    const int anic = addClient("Anic", "Vesna");
    addClient("Peric", "Pera");
    start();
    type(1, "");
    boxes.answers << BoxAnswer::No;
    choose(0, "Peric, Pera");
    EXPECT_EQ(text(0), "Peric");
    EXPECT_EQ(caption(1), "Peric, Pera");
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "GivenName").asText(), "Vesna");
}

TEST_F(Editing, NewClientIsSavedWhenAnotherIsChosen) {
    addClient("Anic", "Vesna");
    const int peric = addClient("Peric", "Pera");
    start();
    tool("NewRecord");
    typeClient("Babic", "Bo");
    choose(0, "Peric, Pera");
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Bo", "Peric, Pera"}));
    EXPECT_EQ(chosen(0), "Peric, Pera");
    EXPECT_EQ(currentKey(0), peric);
    EXPECT_EQ(win().controls.RememberedIndex[0], 2);
    EXPECT_EQ(countRows("Customers"), 3);
}

TEST_F(Editing, NewClientIsDroppedWhenAnotherIsChosenInstead) {
    addClient("Anic", "Vesna");
    addClient("Peric", "Pera");
    start();
    tool("NewRecord");
    type(0, "Babic");
    boxes.answers << BoxAnswer::No;
    choose(0, "Peric, Pera");
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(text(0), "Peric");
    EXPECT_EQ(countRows("Customers"), 2);
    type(13, "064");
    tool("SaveRecord");
    EXPECT_EQ(countRows("Customers"), 2) << "the dropped row stays dropped";
}

TEST_F(Editing, ChangeOfTabSavesAndMovesOn) {
    const int anic = addClient("Anic", "Vesna");
    start();
    type(13, "064");
    tab(2);
    EXPECT_EQ(win().shop.stages.CurrentStage, 2);
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "064");
}

TEST_F(Editing, NewClientIsSavedByTheChangeOfTab) {
    start();
    tool("NewRecord");
    typeClient("Babic", "Bo");
    tab(2);
    EXPECT_EQ(countRows("Customers"), 1);
    EXPECT_TRUE(canUse("NewRecord"));
}

TEST_F(Editing, EditIsSavedBeforeTheNextAdd) {
    const int anic = addClient("Anic", "Vesna");
    start();
    type(13, "064");
    tool("NewRecord");
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "064");
}

TEST_F(Editing, AddWaitsUntilWhatIsMissingIsFixed) {
    addClient("Anic", "Vesna");
    start();
    type(0, "");
    boxes.answers << BoxAnswer::Yes;
    tool("NewRecord");
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(text(1), "Vesna");
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_EQ(QApplication::focusWidget(), field(0));
}

TEST_F(Editing, FirmWithoutTheCheckMarkDoesNotNameTheClient) {
    addClient("Anic", "Vesna");
    start();
    type(6, "Pekara Zlatni Klas");
    tool("SaveRecord");
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    QTest::mouseClick(win().controls.Check1, Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, win().controls.Check1->height() / 2));
    tool("SaveRecord");
    EXPECT_EQ(chosen(0), "Pekara Zlatni Klas");
}

TEST_F(Editing, ClosingSavesNothingAndAsksNothing) {
    const int anic = addClient("Anic", "Vesna");
    start();
    type(13, "064");
    end();
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "");
}

TEST_F(Editing, ClosingWhileAddingAsksNothing) {
    start();
    tool("NewRecord");
    typeClient("Babic", "Bo");
    end();
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(countRows("Customers"), 0);
}

// --- Deleting.

TEST_F(Editing, DeletedClientTakesComputersAndServicesAlong) {
    const int anic = addClient("Anic", "Vesna");
    const int desk = addComputer(anic, "Desk");
    addComputer(anic, "Laptop");
    for (int i = 0; i < 3; ++i) {
        addService(desk);
    }
    addClient("Peric", "Pera");
    start();
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(
        boxes.lastText().startsWith("This will cause the delition of all related records in other tables"));
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes.asked.last().preselected, BoxAnswer::No);
    EXPECT_EQ(entries(0), QStringList({"Peric, Pera"}));
    EXPECT_EQ(caption(1), "Peric, Pera");
    EXPECT_EQ(text(0), "Peric");
    EXPECT_EQ(countRows("Computers"), 0);
    EXPECT_EQ(countRows("Services"), 0);
}

TEST_F(Editing, DeleteAsksAlsoWhenTheSettingSaysOtherwise) {
    addClient("Anic", "Vesna");
    AskBeforeDelete = false;
    start();
    tool("DeleteRecord");
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(countRows("Customers"), 1);
}

TEST_F(Editing, LastClientDeletedLocksTheStage) {
    addClient("Anic", "Vesna");
    start();
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    EXPECT_EQ(win().controls.Combo1[0]->entryCount(), 0);
    EXPECT_TRUE(win().shop.stages[kClients].pane.isLocked());
    EXPECT_EQ(caption(1), "Klijenti");
    EXPECT_EQ(text(0), "");
    EXPECT_FALSE(canUse("DeleteRecord"));
}

TEST_F(Editing, SelectorAndRecordGoTheirOwnWaysAfterADelete) {
    addClient("Mitic", "M");  // first in the file
    addClient("Anic", "A");   // second in the file, first in the selector
    addClient("Zoric", "Z");
    start();
    EXPECT_EQ(chosen(0), "Mitic, M");
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    EXPECT_EQ(text(0), "Anic") << "the next record of the file";
    EXPECT_EQ(chosen(0), "Zoric, Z") << "the next entry of the selector";
    EXPECT_EQ(caption(1), "Zoric, Z");
    choose(0, "Anic, A");
    EXPECT_EQ(text(0), "Anic");
    choose(0, "Zoric, Z");
    EXPECT_EQ(text(0), "Zoric");
}

TEST_F(Editing, DeletingTheLastRecordGoesBackToTheFirst) {
    addClient("Mitic", "M");
    addClient("Anic", "A");
    start();
    choose(0, "Anic, A");
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    EXPECT_EQ(text(0), "Mitic");
    EXPECT_EQ(win().controls.Combo1[0]->currentIndex(), 0);
    EXPECT_EQ(chosen(0), "Mitic, M");
}

TEST_F(Editing, DeletedClientsComputersAreGoneFromTheNextStage) {
    const int anic = addClient("Anic", "Vesna");
    addComputer(anic, "Desk");
    addClient("Peric", "Pera");
    start();
    tab(2);
    tab(1);
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    tab(2);
    EXPECT_EQ(win().controls.Combo1[1]->entryCount(), 0);
}

TEST_F(Editing, DeletedComputerIsGoneWithItsServices) {
    const int anic = addClient("Anic", "Vesna");
    const int desk = addComputer(anic, "Desk");
    addService(desk);
    start();
    tab(2);
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    EXPECT_EQ(countRows("Computers"), 0);
    EXPECT_EQ(countRows("Services"), 0);
    EXPECT_EQ(caption(2), "Kompjuteri");
    EXPECT_TRUE(win().shop.stages[kComputers].pane.isLocked());
    tab(3);
    EXPECT_EQ(win().controls.ListView1->count(), 0);
}

TEST_F(Editing, DeleteIsRefusedWhileAddingThoughTheMenuOffersIt) {
    addClient("Anic", "Vesna");
    start();
    tool("NewRecord");
    EXPECT_TRUE(canUse("DeleteRecord"));
    tool("DeleteRecord");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Can't delete record because you're in AddNew mode.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
}

TEST_F(Editing, NothingToDeleteIsSaid) {
    start();
    win().shop.removal.DeleteRecord(0);
    EXPECT_EQ(boxes.lastText(), "This recordset is empty. There's nothing to be deleted.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Information);
}

TEST_F(Editing, ClientDeletedByAColleagueFirstLeavesTheSelectorAllTheSame) {
    const int anic = addClient("Anic", "Vesna");
    addClient("Peric", "Pera");
    start();
    openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(anic));
    boxes.answers << BoxAnswer::Yes;
    tool("DeleteRecord");
    EXPECT_EQ(entries(0), QStringList({"Peric, Pera"}));
    EXPECT_EQ(boxes.asked.size(), 1);
}

// --- Failing writes.

TEST_F(Editing, EditOfADeletedRecordIsToldWithItsNumber) {
    const int anic = addClient("Anic", "Vesna");
    addClient("Peric", "Pera");
    start();
    type(0, "Zoric");
    openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(anic));
    tool("SaveRecord");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(),
              "SaveRecord procedure: An unexpected error has occured while trying to update record while in "
              "Edit mode and with Tab index 1:\n[3167] Record is deleted.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    EXPECT_EQ(chosen(0), "Zoric, Vesna");
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_EQ(text(0), "Zoric") << "nothing typed is lost";
    choose(0, "Peric, Pera");
    EXPECT_EQ(text(0), "Peric") << "a failed write holds nobody back";
}

// --- Addresses.

class Addresses : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        platform::setShellExecuteHook([this](const QString& target) {
            opened.append(target);
            return 33;
        });
        addClient("Anic", "Vesna");
    }
    void TearDown() override {
        platform::setShellExecuteHook({});
        MainWindow::TearDown();
    }
    void openWeb(const QString& address) { press(16, 1, address); }
    void openMail(const QString& address) { press(15, 0, address); }
    void press(int fieldIndex, size_t button, const QString& address) {
        type(fieldIndex, address);
        QTest::mouseClick(win().controls.Command1[button], Qt::LeftButton);
    }
    QStringList opened;
};

TEST_F(Addresses, WebAddressGetsItsScheme) {
    start();
    openWeb(" www.shop.example ");
    openWeb("HTTP://shop.example");
    EXPECT_EQ(opened, QStringList({"http://www.shop.example", "HTTP://shop.example"}));
}

TEST_F(Addresses, WebAddressWithoutAPointIsNone) {
    start();
    openWeb("shop");
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_EQ(boxes.lastText(),
              "It seems that this is not a valid Internet address. Check it out and try again.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    EXPECT_EQ(QApplication::focusWidget(), field(16));
}

TEST_F(Addresses, MailAddressGetsItsScheme) {
    start();
    openMail("vesna@anic.example");
    openMail("MailTo:vesna@anic.example");
    EXPECT_EQ(opened, QStringList({"mailto:vesna@anic.example", "MailTo:vesna@anic.example"}));
}

TEST_F(Addresses, MailAddressWithoutAnAtIsNone) {
    start();
    openMail("vesna.anic");
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_EQ(boxes.lastText(),
              "It seems that this is not a valid e-mail address. Check it out and try again.");
    EXPECT_EQ(QApplication::focusWidget(), field(15));
}

TEST_F(Addresses, EmptyAddressDoesNothing) {
    start();
    openMail("");
    openWeb("  ");
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Addresses, DesktopThatCannotOpenItIsTold) {
    platform::setShellExecuteHook([](const QString&) { return 31; });
    start();
    openWeb("www.shop.example");
    EXPECT_TRUE(boxes.lastText().startsWith("There is no application associated"));
}

}  // namespace
