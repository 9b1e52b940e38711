#include "platform/controls/popup_menu.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>
#include <memory>

#include "platform/system/trap.h"

namespace {

using platform::PopupMenu;

class PopupMenuTest : public ::testing::Test {
 protected:
    PopupMenuTest() {
        menus.clear();
        menus.addItem("-Grupe");                                      // 1
        menus.addItem("Nova...\tCtrl+N", "Dodaje", {}, true, "new");  // 2
        menus.addItem("-");                                           // 3
        edit = menus.addItem("Promeni...", {}, {}, false, "edit");    // 4
        menus.store("mnu_list");
        menus.restore("mnu_list");
    }
    QWidget window;
    PopupMenu menus{&window};
    int edit = 0;
};

TEST_F(PopupMenuTest, HeadersAndSeparatorsCountToo) {
    EXPECT_EQ(edit, 4);
    EXPECT_EQ(menus.indexOf("new"), 2);
    EXPECT_EQ(menus.indexOf("edit"), 4);
    EXPECT_EQ(menus.indexOf("none"), 0);
    EXPECT_EQ(menus.indexOf(""), 0) << "not the first item without a key";
    EXPECT_EQ(menus.keyOf(2), "new");
    for (const int index : {-1, 0, 1, 3, 5}) {
        EXPECT_EQ(menus.keyOf(index), "") << index;
    }
}

TEST_F(PopupMenuTest, AHeaderIsAHeadlineAndCannotBeChosen) {
    const QAction* header = menus.menu()->actions().at(0);
    EXPECT_EQ(header->text(), "Grupe");
    EXPECT_TRUE(header->font().bold());
    EXPECT_FALSE(menus.isEnabled(1));
    EXPECT_TRUE(menus.menu()->actions().at(2)->isSeparator());
    menus.setCaption(1, "-Proizvodjaci");
    EXPECT_EQ(header->text(), "Proizvodjaci");
    menus.setCaption(4, "-x");
    EXPECT_EQ(menus.menu()->actions().at(3)->text(), "-x") << "an item's caption stays as it is given";
}

TEST_F(PopupMenuTest, ItemsAreTurnedOnAndOffByKeyOrPlace) {
    EXPECT_TRUE(menus.isEnabled(2));
    EXPECT_FALSE(menus.isEnabled(4));
    menus.setEnabled("edit", true);
    menus.setEnabled(2, false);
    EXPECT_TRUE(menus.isEnabled(4));
    EXPECT_FALSE(menus.isEnabled(2));
    menus.setEnabled("none", true);
    menus.setEnabled(9, true);
    menus.setCaption(9, "x");
    EXPECT_FALSE(menus.isEnabled(9));
}

TEST_F(PopupMenuTest, AShortcutIsALabelOnly) {
    EXPECT_EQ(menus.menu()->actions().at(1)->text(), "Nova...\tCtrl+N");
    EXPECT_TRUE(menus.menu()->actions().at(1)->shortcut().isEmpty());
}

TEST_F(PopupMenuTest, StoredMenusKeepTheirOwnItems) {
    menus.clear();
    menus.addItem("Azuriraj", {}, {}, true, "refresh");
    EXPECT_EQ(menus.menu()->objectName(), "mnu_list") << "the new one is not there before it is stored";
    menus.store("mnu_other");
    menus.restore("mnu_other");
    EXPECT_EQ(menus.indexOf("refresh"), 1);
    EXPECT_EQ(menus.indexOf("new"), 0);
    menus.restore("mnu_list");
    EXPECT_EQ(menus.indexOf("new"), 2);
    EXPECT_EQ(menus.indexOf("refresh"), 0);
}

TEST_F(PopupMenuTest, StoringUnderTheSameNameReplaces) {
    menus.addItem("Azuriraj", {}, {}, true, "refresh");
    menus.store("mnu_list");
    EXPECT_EQ(menus.menu(), nullptr) << "the menu that was up is gone";
    menus.restore("mnu_list");
    EXPECT_EQ(menus.indexOf("refresh"), 1);
    EXPECT_EQ(menus.menu()->actions().size(), 1);
}

TEST_F(PopupMenuTest, AMenuThatNobodyStoredIsTold) {
    platform::Trap step;
    step([&] { menus.restore("mnu_none"); });
    EXPECT_EQ(step.number(), 5);
    EXPECT_TRUE(step.description().contains("mnu_none"));
    EXPECT_EQ(menus.menu()->objectName(), "mnu_list") << "and the old one stays";
}

TEST(PopupMenu, BeforeTheFirstRestoreThereIsNone) {
    QWidget window;
    PopupMenu menus(&window);
    EXPECT_EQ(menus.menu(), nullptr);
    EXPECT_EQ(menus.indexOf("new"), 0);
    EXPECT_FALSE(menus.isEnabled(1));
    menus.setEnabled(1, true);
    menus.show({0, 0});
}

TEST_F(PopupMenuTest, AChoiceTellsItsItem) {
    QSignalSpy click(&menus, &PopupMenu::click);
    menus.show({10, 10});
    ASSERT_TRUE(menus.menu()->isVisible());
    QTest::mouseClick(menus.menu(), Qt::LeftButton, {},
                      menus.menu()->actionGeometry(menus.menu()->actions().at(1)).center());
    ASSERT_EQ(click.count(), 1);
    EXPECT_EQ(click.at(0).at(0).toInt(), 2);
    EXPECT_FALSE(menus.menu()->isVisible());
}

TEST_F(PopupMenuTest, WhatIsOffOrAHeaderTellsNothing) {
    QSignalSpy click(&menus, &PopupMenu::click);
    menus.show({10, 10});
    for (const int row : {0, 2, 3}) {
        QTest::mouseClick(menus.menu(), Qt::LeftButton, {},
                          menus.menu()->actionGeometry(menus.menu()->actions().at(row)).center());
    }
    menus.menu()->close();
    EXPECT_EQ(click.count(), 0);
}

TEST_F(PopupMenuTest, AHighlightTellsItemAndState) {
    QSignalSpy highlight(&menus, &PopupMenu::itemHighlight);
    menus.show({10, 10});
    const struct {
        int item;
        bool enabled, separator;
    } told[] = {{2, true, false}, {4, false, false}, {1, false, true}, {2, true, false}, {3, true, true}};
    for (const auto& each : told) {
        highlight.clear();
        const QPoint at = menus.menu()->actionGeometry(menus.menu()->actions().at(each.item - 1)).center();
        // A menu passes over the first few moves close to where the pointer was when it came up.
        for (int step = 0; step < 8; ++step) {
            QTest::mouseMove(menus.menu(), at + QPoint(step, 0));
        }
        ASSERT_EQ(highlight.count(), 1) << each.item << ": once, however long the pointer stays";
        EXPECT_EQ(highlight.at(0).at(0).toInt(), each.item);
        EXPECT_EQ(highlight.at(0).at(1).toBool(), each.enabled) << each.item;
        EXPECT_EQ(highlight.at(0).at(2).toBool(), each.separator) << each.item;
    }
    menus.menu()->close();
}

// Whatever was lit up when the menu was last seen, its hint has gone from the status bar since.
TEST_F(PopupMenuTest, EachShowingTellsItsFirstHighlightWhicheverItIs) {
    for (const int item : {1, 2, 2, 4, 1, 1}) {
        QSignalSpy highlight(&menus, &PopupMenu::itemHighlight);
        menus.show({10, 10});
        const QPoint at = menus.menu()->actionGeometry(menus.menu()->actions().at(item - 1)).center();
        for (int step = -10; step < 10; ++step) {
            QTest::mouseMove(menus.menu(), at + QPoint(step, 0));
        }
        EXPECT_EQ(highlight.value(0).value(0).toInt(), item);
        menus.menu()->close();
    }
}

TEST_F(PopupMenuTest, ASeparatorHasAPlaceOfItsOwn) {
    menus.clear();
    EXPECT_EQ(menus.addItem("Prvi"), 1);
    EXPECT_EQ(menus.addItem("-"), 2);
    EXPECT_EQ(menus.addItem("-Naslov"), 3);
}

TEST_F(PopupMenuTest, TheKeysHighlightToo) {
    QSignalSpy highlight(&menus, &PopupMenu::itemHighlight);
    menus.show({10, 10});
    QTest::keyClick(menus.menu(), Qt::Key_Down);
    ASSERT_EQ(highlight.count(), 1);
    EXPECT_EQ(highlight.at(0).at(0).toInt(), 2) << "what cannot be chosen is passed over";
    menus.menu()->close();
}

TEST_F(PopupMenuTest, TheMenusGoWithTheirOwner) {
    auto owner = std::make_unique<QWidget>();
    auto* own = new PopupMenu(owner.get());
    own->addItem("x");
    own->store("mnu");
    own->addItem("not stored");
    own->restore("mnu");
    const QPointer<QMenu> menu = own->menu();
    delete own;
    EXPECT_TRUE(menu.isNull());
    EXPECT_TRUE(owner->findChildren<QMenu*>().isEmpty());
}

}  // namespace
