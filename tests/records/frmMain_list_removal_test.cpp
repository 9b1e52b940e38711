// A service that is gone from the database while its row cannot be taken from the list.

#include "main_window.h"

namespace {

class ListRemoval : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        computer = addComputer(addClient("Anic", "Vesna"), "Desk");
        first = addService(computer, {{"Comments", "one"}});
        second = addService(computer, {{"Comments", "two"}});
    }
    // The list is filled anew, with `rows` in it, between the deletion's question and its end.
    void refillWhileDeleting(const QList<int>& rows) {
        done_ = false;
        QObject::connect(win().controls.Data1[2], &platform::DataControl::repositioned, &win(), [this, rows] {
            if (std::exchange(done_, true)) {
                return;
            }
            win().controls.ListView1->clearItems();
            for (const int id : rows) {
                platform::ListItem row;
                row.Key = QStringLiteral("K%1").arg(id);
                row.Tag = QStringLiteral("1##left");
                win().controls.ListView1->addItem(row);
            }
            if (!rows.isEmpty()) {
                win().controls.ListView1->select(1);
            }
        });
        boxes.answers << platform::BoxAnswer::Yes;
        by_hand::press(Qt::Key_Delete);
    }
    static constexpr const char* kNotRemoved = "Oops! Can't delete this item from the ListView control!";

    int computer = 0, first = 0, second = 0;

 private:
    bool done_ = false;
};

TEST_F(ListRemoval, RowThatCannotBeRemovedIsToldAndTheOthersStay) {
    start();
    tab(3);
    by_hand::clickRow(win().controls.ListView1, 1);
    refillWhileDeleting({second});
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(boxes.lastText(), kNotRemoved);
    EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(boxes.asked.last().title, "Tarvello");
    EXPECT_EQ(countRows("Services"), 1);
    EXPECT_EQ(win().controls.ListView1->count(), 1);
    EXPECT_EQ(text(37), "left") << "the row that is chosen now";
}

TEST_F(ListRemoval, RowThatCannotBeRemovedFromAnEmptiedListIsToldAndTheDetailsGo) {
    start();
    tab(3);
    by_hand::clickRow(win().controls.ListView1, 1);
    ASSERT_EQ(text(37), "one");
    refillWhileDeleting({});
    EXPECT_EQ(boxes.lastText(), kNotRemoved);
    EXPECT_EQ(text(37), "");
    EXPECT_EQ(text(38), "");
    EXPECT_FALSE(canUse("DeleteRecord"));
    EXPECT_FALSE(canUse("EditRecord"));
}

TEST_F(ListRemoval, RowThatIsRemovedIsNotSpokenOf) {
    start();
    tab(3);
    by_hand::clickRow(win().controls.ListView1, 1);
    boxes.answers << platform::BoxAnswer::Yes;
    by_hand::press(Qt::Key_Delete);
    EXPECT_EQ(boxes.asked.size(), 1) << "the question alone";
    EXPECT_EQ(text(37), "two");
}

}  // namespace
