#include "platform/controls/column_menu.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QTest>

#include "platform/controls/list_view.h"

namespace {

class ColumnMenuTest : public ::testing::Test {
 protected:
    void SetUp() override {
        for (const char* name : {"Name", "Quantity", "Price & tax"}) {
            list.columns().add(name, name, platform::HeaderAlignment::Left);
        }
        list.columns().setWidth(2, 0);
        list.resize(500, 200);
        list.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    }
    void TearDown() override { close(); }

    QMenu* open() {
        QWidget* header = list.header()->viewport();
        const QPoint at = header->rect().center();
        QContextMenuEvent asked(QContextMenuEvent::Mouse, at, header->mapToGlobal(at));
        QApplication::sendEvent(header, &asked);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    void close() {
        if (QWidget* menu = QApplication::activePopupWidget()) {
            menu->close();
        }
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static QAction* entry(QMenu* menu, const QString& text) {
        for (QAction* action : menu->actions()) {
            if (action->text() == text) {
                return action;
            }
        }
        return nullptr;
    }
    void choose(const QString& text) {
        QMenu* menu = open();
        ASSERT_NE(menu, nullptr);
        ASSERT_NE(entry(menu, text), nullptr);
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry(menu, text)).center());
        close();
    }

    platform::ListView list;
};

TEST_F(ColumnMenuTest, TicksWhatIsShown) {
    QMenu* menu = open();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->title(), "Show columns");
    EXPECT_TRUE(entry(menu, "Name")->isChecked());
    EXPECT_FALSE(entry(menu, "Quantity")->isChecked());
    EXPECT_TRUE(entry(menu, "Price && tax")->isChecked());
}

TEST_F(ColumnMenuTest, SpeaksTheLanguageOfItsWindow) {
    list.columns().setMenuTitle("Prikazi kolone");
    QMenu* menu = open();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->title(), "Prikazi kolone");
    EXPECT_EQ(menu->actions().first()->text(), "Prikazi kolone");
}

TEST_F(ColumnMenuTest, StandsInTheOrderOfTheColumnsOnScreen) {
    list.columns().setPosition(3, 1);
    QStringList texts;
    for (const QAction* action : open()->actions()) {
        texts.append(action->text());
    }
    EXPECT_EQ(texts, QStringList({"Show columns", "Price && tax", "Name", "Quantity"}));
}

TEST_F(ColumnMenuTest, BringsOutAndHides) {
    choose("Quantity");
    EXPECT_EQ(list.columns().width(2), 1440);
    choose("Name");
    EXPECT_EQ(list.columns().width(1), 0);
    choose("Name");
    EXPECT_EQ(list.columns().width(1), 1440);
}

TEST_F(ColumnMenuTest, TheLastColumnOnShowStays) {
    choose("Name");
    choose("Price && tax");
    EXPECT_EQ(list.columns().width(1), 0);
    EXPECT_GT(list.columns().width(3), 0);
}

}  // namespace
