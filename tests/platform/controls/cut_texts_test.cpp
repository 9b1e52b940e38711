#include "platform/controls/cut_texts.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QListWidget>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "platform/controls/list_box.h"
#include "platform/controls/list_view.h"
#include "platform/controls/selector.h"

namespace {

const char* const kLong =
    "a <b>processor</b> & its fan, in a box that nobody has opened since the year began";

// The pointer rests on the cell; what is told, as it is read.
QString tipAt(QAbstractItemView& view, int row, int column = 0) {
    QToolTip::hideText();
    QTest::qWait(QToolTip::isVisible() ? 400 : 0);
    const QRect cell = view.visualRect(view.model()->index(row, column));
    const QPoint at(cell.left() + 2, cell.center().y());
    QHelpEvent rest(QEvent::ToolTip, at, view.viewport()->mapToGlobal(at));
    QApplication::sendEvent(view.viewport(), &rest);
    return QToolTip::isVisible() ? QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText()
                                 : QString();
}

TEST(CutTexts, ACellThatIsCutIsToldWhole) {
    platform::ListView list;
    list.columns().add("Name", "Name", platform::HeaderAlignment::Left);
    list.columns().add("Price", "Price", platform::HeaderAlignment::Right);
    platform::ListItem item;
    item.Key = "K1";
    item.Text = kLong;
    item.setSubItems(1, "12.00");
    list.addItem(item);
    list.resize(600, 200);
    list.columns().setWidth(1, 1440);
    list.columns().setWidth(2, 1440);
    list.show();
    EXPECT_EQ(tipAt(list, 0), kLong);
    EXPECT_EQ(tipAt(list, 0, 1), "") << "it can be read where it stands";
    list.columns().setWidth(1, 20000);
    list.resize(2000, 200);
    EXPECT_EQ(tipAt(list, 0), "");
    list.resize(300, 200);
    EXPECT_EQ(tipAt(list, 0), kLong) << "the edge of the list cuts as well";
}

TEST(CutTexts, ARowOfAListBoxThatIsCutIsToldWhole) {
    platform::ListBox list;
    list.addStrings({{kLong, 1}, {"short", 2}});
    list.resize(120, 200);
    list.show();
    EXPECT_EQ(tipAt(list, 0), kLong);
    EXPECT_EQ(tipAt(list, 1), "");
}

TEST(CutTexts, AnEntryThatDropsDownIsToldWhole) {
    platform::Selector selector;
    selector.setEntries({{kLong, 1}, {"short", 2}});
    selector.resize(120, 30);
    selector.show();
    selector.showPopup();
    const int row = selector.findPrefix("a <");
    EXPECT_EQ(tipAt(*selector.view(), row), kLong);
    EXPECT_EQ(tipAt(*selector.view(), 1 - row), "");
    selector.hidePopup();
}

TEST(CutTexts, ATipOfTheListsOwnStays) {
    QListWidget list;
    platform::tellCutTexts(list);
    list.addItem(kLong);
    list.item(0)->setToolTip("its own");
    list.resize(120, 200);
    list.show();
    EXPECT_EQ(tipAt(list, 0), "its own");
}

}  // namespace
