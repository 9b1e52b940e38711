// The options change the unit of the amounts while a record on show cannot be saved. What the list shows is
// what the service editor writes back, so it has to be in the new unit all the same.

#include <QPushButton>

#include "narrowed_window.h"
#include "shell/frmOptions.h"
#include "support/modal.h"

namespace {

class UnitChange : public NarrowedWindow {
 protected:
    void SetUp() override {
        NarrowedWindow::SetUp();
        anic = addClient("Anic", "Vesna");
        desk = addComputer(anic, "Desk");
        service = addService(desk);  // 100 euro; the rate is 80
    }
    void switchToDinars() {
        inModal<frmOptions>([&] { give(Command::Options); },
                            [](frmOptions& window) {
                                window.findChild<QCheckBox*>("Check1(2)")->click();
                                window.findChild<QPushButton*>("Command1(0)")->click();
                            });
        EXPECT_TRUE(CeneDinarske);
    }
    void confirmService() {
        inModal<frmDetails>([&] { tool("EditRecord"); },
                            [](frmDetails& editor) {
                                QTest::mouseClick(editor.findChild<QPushButton*>("Command1(0)"),
                                                  Qt::LeftButton);
                            });
    }
    void expectDinarsAndTheSamePrice() {
        EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Price)),
                  "Price [DIN]");
        EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Paid)), "Paid [DIN]");
        EXPECT_EQ(cellOf(win().controls.ListView1->item(1), ServiceColumn::Price), "8,000.00");
        confirmService();
        EXPECT_EQ(valueOf("Services", "ID", service, "Price").asCurrency(),
                  dao::Currency::fromScaled(1000000))
            << "100 euro, as before";
        EXPECT_EQ(cellOf(win().controls.ListView1->item(1), ServiceColumn::Price), "8,000.00");
    }
    int anic = 0, desk = 0, service = 0;
};

TEST_F(UnitChange, PriceOutlivesItOverAComputerWithoutAName) {
    start();
    tab(3);
    tab(2);
    type(19, "");
    switchToDinars();
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(text(19), "");
    EXPECT_TRUE(win().controls.StageDirty[1]);
    boxes.answers << platform::BoxAnswer::No;
    tab(3);
    EXPECT_EQ(boxes.asked.size(), 1) << "the name is asked for when the computer is left";
    expectDinarsAndTheSamePrice();
    EXPECT_EQ(valueOf("Computers", "MachineID", desk, "MachineName").asText(), "Desk");
}

TEST_F(UnitChange, PriceOutlivesItOverAClientWithoutASurname) {
    start();
    tab(3);
    tab(1);
    type(0, "");
    type(13, "064 111");
    switchToDinars();
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(text(0), "");
    EXPECT_EQ(text(13), "064 111");
    type(0, "Zoric");
    tab(3);
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    expectDinarsAndTheSamePrice();
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Surname").asText(), "Zoric");
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "064 111");
}

TEST_F(UnitChange, PriceOutlivesItOverAClientBeingAdded) {
    start();
    tab(3);
    tab(1);
    tool("NewRecord");
    type(0, "Zoric");
    switchToDinars();
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    EXPECT_EQ(text(0), "Zoric");
    boxes.answers << platform::BoxAnswer::No;
    tab(3);
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    expectDinarsAndTheSamePrice();
    EXPECT_EQ(countRows("Customers"), 1);
}

}  // namespace
