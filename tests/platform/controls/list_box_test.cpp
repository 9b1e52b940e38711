#include "platform/controls/list_box.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace {

using platform::ListBox;

class ListBoxTest : public ::testing::Test {
 protected:
    ListBoxTest() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(other);
        column->addWidget(list);
        window.resize(200, 160);
        for (const char* name : {"Monitori", "Procesori", "Memorije"}) {
            list->addString(name, 10 * (list->count() + 1));
        }
    }
    void show() {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    QPoint at(int row) { return list->visualRect(list->model()->index(row, 0)).center(); }
    void click(int row) { QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at(row)); }

    QWidget window;
    QLineEdit* other = new QLineEdit;
    ListBox* list = new ListBox;
    QSignalSpy clicked{list, &ListBox::clicked};
};

TEST_F(ListBoxTest, RowsStayInTheirOrderWithTheirNumbers) {
    EXPECT_EQ(list->addString("Aaa"), 3);
    EXPECT_EQ(list->count(), 4);
    EXPECT_EQ(list->text(1), "Procesori");
    EXPECT_EQ(list->itemData(1), 20);
    EXPECT_EQ(list->text(3), "Aaa");
    EXPECT_EQ(list->itemData(3), 0);
    list->setItemData(3, 7);
    list->setText(3, "Bbb");
    EXPECT_EQ(list->itemData(3), 7);
    EXPECT_EQ(list->text(3), "Bbb");
}

TEST_F(ListBoxTest, ARowThatIsNotThereHasNothing) {
    for (const int row : {-1, 3}) {
        EXPECT_EQ(list->text(row), "");
        EXPECT_EQ(list->itemData(row), -1);
        list->setText(row, "x");
        list->setItemData(row, 1);
        list->deleteString(row);
        list->setTopIndex(row);
    }
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(list->selectedText(), "");
    EXPECT_EQ(list->selectedData(), -1);
}

TEST_F(ListBoxTest, TheFirstRowThatBeginsSoIsFound) {
    EXPECT_EQ(list->findString("MEM"), 2);
    EXPECT_EQ(list->findString("m"), 0) << "from the top";
    EXPECT_EQ(list->findString("monitori"), 0);
    EXPECT_EQ(list->findString("monitori 17"), -1);
    EXPECT_EQ(list->findString("onitori"), -1);
    EXPECT_EQ(list->findString(""), 0);
    list->resetContent();
    EXPECT_EQ(list->findString(""), -1);
}

TEST_F(ListBoxTest, SelectingByProgramIsNoClick) {
    EXPECT_EQ(list->curSel(), -1);
    EXPECT_TRUE(list->setCurSel(1));
    EXPECT_EQ(list->selectedText(), "Procesori");
    EXPECT_EQ(list->selectedData(), 20);
    EXPECT_TRUE(list->setCurSel(-1));
    EXPECT_EQ(list->curSel(), -1);
    EXPECT_FALSE(list->setCurSel(3));
    list->setCurSel(0);
    list->addString("x");
    list->deleteString(0);
    list->resetContent();
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(ListBoxTest, TheSelectionGoesWithItsRow) {
    list->setCurSel(2);
    list->deleteString(0);
    EXPECT_EQ(list->selectedText(), "Memorije");
    EXPECT_EQ(list->curSel(), 1);
    list->addString("Diskovi");
    list->deleteString(2);
    EXPECT_EQ(list->selectedText(), "Memorije");
    list->deleteString(1);
    EXPECT_EQ(list->curSel(), -1);
    EXPECT_EQ(list->count(), 1);
}

TEST_F(ListBoxTest, ManyRowsAreAddedAtOnceBehindTheOthers) {
    list->addStrings({{"Diskovi", 40}, {"Kucista", 50}});
    EXPECT_EQ(list->count(), 5);
    EXPECT_EQ(list->text(0), "Monitori");
    EXPECT_EQ(list->text(4), "Kucista");
    EXPECT_EQ(list->itemData(4), 50);
    EXPECT_EQ(list->curSel(), -1);
}

TEST_F(ListBoxTest, AClickChoosesAndSoDoesAClickOnTheSameRow) {
    show();
    click(1);
    EXPECT_EQ(list->curSel(), 1);
    EXPECT_EQ(clicked.count(), 1);
    click(1);
    EXPECT_EQ(clicked.count(), 2);
    click(2);
    EXPECT_EQ(clicked.count(), 3);
    EXPECT_EQ(list->curSel(), 2);
}

TEST_F(ListBoxTest, TheRowIsSelectedBeforeItsListenerLooks) {
    show();
    QStringList seen;
    QObject::connect(list, &ListBox::clicked, list, [&] { seen.append(list->selectedText()); });
    click(2);
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(seen, QStringList({"Memorije", "Procesori"}));
}

TEST_F(ListBoxTest, ArrowsChooseOneRowAfterTheOther) {
    show();
    list->setCurSel(0);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(list->selectedText(), "Procesori");
    QTest::keyClick(list, Qt::Key_End);
    EXPECT_EQ(list->selectedText(), "Memorije");
    EXPECT_EQ(clicked.count(), 2);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(clicked.count(), 2) << "there is no other row";
}

TEST_F(ListBoxTest, AClickBesideTheRowsLeavesTheSelection) {
    show();
    list->setCurSel(1);
    const QPoint below(5, list->viewport()->height() - 2);
    ASSERT_FALSE(list->indexAt(below).isValid());
    QTest::mousePress(list->viewport(), Qt::LeftButton, {}, below);
    EXPECT_EQ(list->curSel(), 1);
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, below);
    EXPECT_EQ(list->curSel(), 1);
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(ListBoxTest, OneRowIsChosenWhateverKeyIsHeld) {
    show();
    click(1);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier, at(1));
    EXPECT_EQ(list->curSel(), 1);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier, at(2));
    EXPECT_EQ(list->curSel(), 2);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ShiftModifier, at(0));
    EXPECT_EQ(list->curSel(), 0);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(list->curSel(), 0);
    EXPECT_EQ(list->selectionModel()->selectedIndexes().size(), 1);
}

TEST_F(ListBoxTest, ComingToAListChoosesNothing) {
    show();
    other->setFocus();
    QTest::keyClick(other, Qt::Key_Tab);
    ASSERT_TRUE(list->hasFocus());
    EXPECT_EQ(list->curSel(), -1);
    EXPECT_EQ(clicked.count(), 0);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(list->curSel(), 0);
    other->setFocus();
    list->setFocus();
    EXPECT_EQ(list->curSel(), 0) << "and what was chosen stays";
}

TEST_F(ListBoxTest, ADoubleClickNeedsARow) {
    show();
    QSignalSpy twice(list, &ListBox::doubleClicked);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at(1));
    EXPECT_EQ(twice.count(), 1);
    QTest::mouseDClick(list->viewport(), Qt::RightButton, {}, at(1));
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, {5, list->viewport()->height() - 2});
    EXPECT_EQ(twice.count(), 1);
}

TEST_F(ListBoxTest, TheMenuIsAskedForAtThePointerOrAtTheRow) {
    show();
    list->setCurSel(1);
    QSignalSpy asked(list, &ListBox::contextMenuAsked);
    const QPoint pointer = list->viewport()->mapToGlobal(QPoint(3, 4));
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, {3, 4}, pointer);
    QApplication::sendEvent(list->viewport(), &byMouse);
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {3, 4}, pointer);
    QApplication::sendEvent(list->viewport(), &byKey);
    ASSERT_EQ(asked.count(), 2);
    EXPECT_EQ(asked.at(0).at(0).toPoint(), pointer);
    EXPECT_EQ(asked.at(1).at(0).toPoint(), list->viewport()->mapToGlobal(at(1)));
}

TEST_F(ListBoxTest, ARowGoesToTheTopAsFarAsTheListIsLong) {
    show();
    for (int i = 0; i < 100; ++i) {
        list->addString(QStringLiteral("Grupa %1").arg(i));
    }
    list->setTopIndex(50);
    EXPECT_EQ(list->indexAt({5, 2}).row(), 50);
    list->setTopIndex(102);
    EXPECT_EQ(list->verticalScrollBar()->value(), list->verticalScrollBar()->maximum());
}

TEST_F(ListBoxTest, AListenerMayRefillTheListUnderTheClick) {
    show();
    QObject::connect(list, &ListBox::clicked, list, [&] {
        list->resetContent();
        list->addStrings({{"a", 1}, {"b", 2}});
    });
    click(2);
    EXPECT_EQ(list->count(), 2);
    EXPECT_EQ(list->curSel(), -1);
}

TEST_F(ListBoxTest, NobodyEditsARowInPlace) {
    show();
    list->setCurSel(0);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_F2);
    EXPECT_EQ(list->viewport()->findChild<QLineEdit*>(), nullptr);
}

}  // namespace
