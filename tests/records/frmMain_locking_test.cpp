// Which fields take what a person types, stage by stage, and when typing counts as a change.

#include <QDateEdit>

#include "main_window.h"

namespace {

class Locking : public MainWindow {
 protected:
    // The stage whose pane shows the field.
    static int stageOf(int index) {
        if (index <= 18) {
            return 1;
        }
        return index == 37 || index == 38 ? 3 : 2;
    }
    // Of the stage's fields those that take a letter from the keyboard. The stage is on show.
    QList<int> taking(int stage) {
        QList<int> fields;
        for (int i = 0; i < EntryFields::kCount; ++i) {
            if (stageOf(i) != stage) {
                continue;
            }
            const QString before = text(i);
            by_hand::click(field(i));
            QTest::keyClick(field(i), Qt::Key_End, Qt::ControlModifier);
            QTest::keyClicks(field(i), "q");
            if (text(i) != before) {
                fields.append(i);
            }
        }
        return fields;
    }
    // The dates that can be typed over.
    QList<int> datesTaking() {
        QList<int> dates;
        for (int i = 0; i < 3; ++i) {
            platform::DateField* date = win().controls.DTPicker1[static_cast<size_t>(i)];
            const auto before = date->value();
            type(date->edit(), "5/17/1980");
            QTest::keyClick(date->edit(), Qt::Key_Tab);
            if (date->value() != before) {
                dates.append(i);
            }
        }
        return dates;
    }
    bool firmBoxTaking() {
        const bool before = win().controls.Check1->isChecked();
        by_hand::click(win().controls.Check1);
        return win().controls.Check1->isChecked() != before;
    }
    static QList<int> clientFields() {
        return {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18};
    }
    static QList<int> computerFields() {
        return {19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 39, 40};
    }
};

TEST_F(Locking, EmptyShopTakesNothingOnAnyStage) {
    start();
    EXPECT_EQ(taking(1), QList<int>());
    EXPECT_EQ(datesTaking(), QList<int>());
    EXPECT_FALSE(firmBoxTaking());
    for (const platform::DateField* date : win().controls.DTPicker1) {
        EXPECT_FALSE(date->isEnabled()) << date->objectName().toStdString();
    }
    tab(2);
    EXPECT_EQ(taking(2), QList<int>());
    tab(3);
    EXPECT_EQ(taking(3), QList<int>());
    EXPECT_EQ(countRows("Customers"), 0);
}

TEST_F(Locking, NewClientOpensTheFieldsOfHisStageAlone) {
    start();
    tool("NewRecord");
    EXPECT_EQ(taking(1), clientFields());
    EXPECT_EQ(datesTaking(), QList<int>({0, 1, 2}));
    EXPECT_TRUE(firmBoxTaking());
    for (const int computerField : computerFields()) {
        EXPECT_TRUE(locked(computerField)) << computerField;
    }
}

TEST_F(Locking, NewComputerOpensTheFieldsOfItsStage) {
    addClient("Anic", "Vesna");
    start();
    tab(2);
    EXPECT_EQ(taking(2), QList<int>());
    tool("NewRecord");
    EXPECT_EQ(taking(2), computerFields());
}

TEST_F(Locking, FieldsOfRecordsTakeWhatIsTypedAndTheServicesNeverDo) {
    addService(addComputer(addClient("Anic", "Vesna"), "Desk"), {{"Comments", "Loud."}});
    start();
    EXPECT_EQ(taking(1), clientFields());
    EXPECT_EQ(datesTaking(), QList<int>({0, 1, 2}));
    EXPECT_TRUE(firmBoxTaking());
    tab(2);
    EXPECT_EQ(taking(2), computerFields());
    tab(3);
    EXPECT_EQ(text(37), "Loud.");
    EXPECT_EQ(taking(3), QList<int>()) << "a service is edited in its own window";
}

TEST_F(Locking, ClientWithoutComputersLocksAllFieldsOfTheComputersOnly) {
    addClient("Anic", "Vesna");
    start();
    tab(2);
    EXPECT_EQ(taking(2), QList<int>());
    tab(1);
    EXPECT_EQ(taking(1), clientFields());
    EXPECT_EQ(datesTaking(), QList<int>({0, 1, 2}));
}

TEST_F(Locking, LockedFieldLooksLikeTheWindowAndAnOpenOneLikePaper) {
    addClient("Anic", "Vesna");
    start();
    const auto paper = [&](int index) { return field(index)->palette().color(QPalette::Base); };
    EXPECT_EQ(paper(19), win().palette().color(QPalette::Window));
    EXPECT_EQ(paper(40), win().palette().color(QPalette::Window));
    EXPECT_EQ(paper(0), win().palette().color(QPalette::Base));
    tab(2);
    tool("NewRecord");
    EXPECT_EQ(paper(19), win().palette().color(QPalette::Base));
}

// --- Marks of change.

class Marks : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        addComputer(addClient("Anic", "Vesna"), "Desk");
    }
};

TEST_F(Marks, EachFieldMarksItsOwnStage) {
    start();
    for (int i = 0; i < EntryFields::kCount; ++i) {
        if (i == 37 || i == 38) {
            continue;
        }
        const int stage = i <= 18 ? 1 : 2;
        tab(stage);
        ASSERT_FALSE(canUse("SaveRecord")) << i;
        type(i, "Lipa");
        EXPECT_TRUE(canUse("SaveRecord")) << i;
        EXPECT_TRUE(win().controls.StageDirty[stage == 1 ? 0 : 1]) << i;
        EXPECT_FALSE(win().controls.StageDirty[stage == 1 ? 1 : 0]) << i;
        EXPECT_FALSE(win().controls.StageDirty[2]) << i;
        tool("SaveRecord");
    }
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(Marks, ChangesWhileASelectorIsBeingFilledCountForNothing) {
    start();
    bool filling = false, typed = false;
    const auto connection =
        QObject::connect(win().controls.Data1[0], &platform::DataControl::repositioned, &win(), [&] {
            filling = win().shop.stages.LoadingList;
            if (typed) {
                return;
            }
            typed = true;
            QTest::keyClicks(field(13), "064");
            by_hand::click(win().controls.Check1);
        });
    win().shop.reading.FillClientCombo();
    QObject::disconnect(connection);
    EXPECT_TRUE(filling);
    EXPECT_FALSE(win().shop.stages.LoadingList);
    EXPECT_EQ(text(13), "064");
    EXPECT_TRUE(win().controls.Check1->isChecked());
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_FALSE(canUse("SaveRecord"));
    QTest::keyClicks(field(13), "1");
    EXPECT_TRUE(canUse("SaveRecord")) << "and count again afterwards";
}

TEST_F(Marks, FirmBoxAloneIsNoChangeWhileASelectorIsBeingFilled) {
    start();
    win().shop.stages.LoadingList = true;
    by_hand::click(win().controls.Check1);
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_FALSE(canUse("SaveRecord"));
    type(0, "Babic");
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_FALSE(canUse("SaveRecord"));
    win().shop.stages.LoadingList = false;
    by_hand::click(win().controls.Check1);
    EXPECT_TRUE(win().controls.StageDirty[0]);
    EXPECT_TRUE(canUse("SaveRecord"));
}

TEST_F(Marks, ComputersBeingFilledCountForNothingToo) {
    start();
    tab(2);
    bool filling = false;
    const auto connection =
        QObject::connect(win().controls.Data1[1], &platform::DataControl::repositioned, &win(), [&] {
            filling = win().shop.stages.LoadingList;
            if (filling && text(40).isEmpty()) {
                QTest::keyClicks(field(40), "router");
            }
        });
    win().shop.reading.FillComputerCombo();
    QObject::disconnect(connection);
    EXPECT_TRUE(filling);
    EXPECT_FALSE(win().shop.stages.LoadingList);
    EXPECT_EQ(text(40), "router");
    EXPECT_FALSE(win().controls.StageDirty[1]);
}

TEST_F(Marks, EmptiedSelectorLetsChangesCountAgain) {
    closeDatabases();
    openDatabase().Execute("DELETE * FROM Customers");
    start();
    EXPECT_FALSE(win().shop.stages.LoadingList);
    tool("NewRecord");
    type(0, "Babic");
    EXPECT_TRUE(canUse("SaveRecord"));
}

TEST_F(Marks, WhatIsTypedBackIsStillAChange) {
    start();
    type(0, "Anicka");
    type(0, "Anic");
    EXPECT_TRUE(canUse("SaveRecord"));
}

}  // namespace
