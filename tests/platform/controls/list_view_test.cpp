#include "platform/controls/list_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <numeric>

#include "platform/controls/twips.h"
#include "platform/dao/error.h"
#include "platform/system/trap.h"

namespace {

using platform::HeaderAlignment;
using platform::ListItem;
using platform::ListView;
using platform::RunError;

ListItem row(int number) {
    ListItem item;
    item.Key = QString("K%1").arg(number);
    item.Text = QString("row %1").arg(number);
    item.setSubItems(1, QString::number(number * 10));
    return item;
}

int numberOf(const QString& key) {
    const int number = QStringView(key).mid(1).toInt();
    return number >= 1 ? number : 0;
}

template <typename Step>
int errorOf(Step step) {
    platform::Trap trap;
    trap(step);
    return trap.number();
}

class ListViewTest : public ::testing::Test {
 protected:
    void SetUp() override {
        view.columns().add("ServiceStarted", "Service started at", HeaderAlignment::Left);
        view.columns().add("Price", "Price [EUR]", HeaderAlignment::Right);
        view.columns().add("Paid", "Paid [EUR]", HeaderAlignment::Center);
        view.resize(500, 240);
    }
    void addRows(int count) {
        for (int i = 1; i <= count; ++i) {
            view.addItem(row(i));
        }
    }
    void makeLazily(int count) {
        view.setLazyItems(
            count,
            [this](int i) {
                made.append(i);
                return row(i);
            },
            [this, count](const QString& key) {
                ++asked;
                return numberOf(key) <= count ? numberOf(key) : 0;
            });
    }
    void show() {
        view.show();
        view.activateWindow();
        view.setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    }
    QRect rectOf(int index) { return view.visualRect(view.model()->index(index - 1, 0)); }
    void click(int index, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(view.viewport(), button, keys, rectOf(index).center());
    }
    void rightClick(const QPoint& at) {
        QTest::mousePress(view.viewport(), Qt::RightButton, {}, at);
        QContextMenuEvent menu(QContextMenuEvent::Mouse, at, view.viewport()->mapToGlobal(at));
        QApplication::sendEvent(view.viewport(), &menu);
        QTest::mouseRelease(view.viewport(), Qt::RightButton, {}, at);
    }
    QString shown(int index, int column) const {
        return view.model()->index(index - 1, column - 1).data().toString();
    }

    ListView view;
    QList<int> made;
    int asked = 0;
};

// Columns

TEST_F(ListViewTest, ColumnsAreFoundByTheirKeys) {
    EXPECT_EQ(view.columns().count(), 3);
    EXPECT_EQ(view.columns().key(1), "ServiceStarted");
    EXPECT_EQ(view.columns().indexOf("price"), 2);
    EXPECT_EQ(view.columns().indexOf("Discount"), 0);
    EXPECT_EQ(view.columns().text(2), "Price [EUR]");
    view.columns().setText(2, "Price [DIN]");
    EXPECT_EQ(view.columns().text(2), "Price [DIN]");
    EXPECT_EQ(view.model()->headerData(1, Qt::Horizontal).toString(), "Price [DIN]");
}

TEST_F(ListViewTest, AColumnThatIsNotThereIsOutOfBounds) {
    EXPECT_EQ(errorOf([&] { view.columns().key(0); }), 35600);
    EXPECT_EQ(errorOf([&] { view.columns().text(4); }), 35600);
    EXPECT_EQ(errorOf([&] { view.columns().setWidth(-1, 15); }), 35600);
    EXPECT_EQ(errorOf([&] { view.columns().setPosition(1, 4); }), 35600);
    EXPECT_EQ(errorOf([&] { view.columns().setIcon(9, "SortUp"); }), 35600);
}

TEST_F(ListViewTest, AmountsStandRightAndDatesLeft) {
    addRows(1);
    const auto side = [&](int column) {
        return view.model()->index(0, column - 1).data(Qt::TextAlignmentRole).toInt() &
               Qt::AlignHorizontal_Mask;
    };
    EXPECT_EQ(side(1), Qt::AlignLeft);
    EXPECT_EQ(side(2), Qt::AlignRight);
    EXPECT_EQ(side(3), Qt::AlignHCenter);
}

TEST_F(ListViewTest, AWidthIsInTwipsAndGrowsWithTheLetters) {
    view.columns().setWidth(1, 1440);
    EXPECT_EQ(view.header()->sectionSize(0), qRound(96 * platform::letterFactor()));
    EXPECT_EQ(view.columns().width(1), 1440);
    view.columns().setWidth(2, 0);
    EXPECT_EQ(view.columns().width(2), 0);
    view.columns().setWidth(2, -300);
    EXPECT_EQ(view.columns().width(2), 0);
}

TEST_F(ListViewTest, AWidthIsReadAsItWasToldUntilAPersonDragsTheColumn) {
    for (const int told : {1, 7, 99, 1441, 1447, 2000, 12345}) {
        view.columns().setWidth(1, told);
        EXPECT_EQ(view.columns().width(1), told);
    }
    view.columns().setWidth(1, 1441);
    view.header()->resizeSection(0, 200);
    EXPECT_EQ(view.columns().width(1), qRound(200 * 15 / platform::letterFactor()));
}

TEST_F(ListViewTest, APositionIsThePlaceOnScreenFromOne) {
    EXPECT_EQ(view.columns().position(3), 3);
    view.columns().setPosition(3, 1);
    EXPECT_EQ(view.columns().position(3), 1);
    EXPECT_EQ(view.columns().position(1), 2);
    EXPECT_EQ(view.columns().position(2), 3);
}

TEST_F(ListViewTest, AnyOrderOfColumnsIsRestored) {
    view.columns().add("Discount", "Discount", HeaderAlignment::Right);
    QList<int> wanted = {1, 2, 3, 4};
    do {
        view.columns().setPositions(wanted);
        for (int column = 1; column <= 4; ++column) {
            ASSERT_EQ(view.columns().position(column), wanted.at(column - 1));
        }
    } while (std::next_permutation(wanted.begin(), wanted.end()));
}

TEST_F(ListViewTest, ColumnsWithoutAUsablePositionTakeTheFreePlaces) {
    view.columns().setPositions({3, 3, 77});
    EXPECT_EQ(view.columns().position(1), 3);
    EXPECT_EQ(view.columns().position(2), 1);
    EXPECT_EQ(view.columns().position(3), 2);
    view.columns().setPositions({2});
    EXPECT_EQ(view.columns().position(1), 2);
}

TEST_F(ListViewTest, EveryHeaderCanBeDraggedAndClicked) {
    EXPECT_TRUE(view.header()->sectionsMovable());
    EXPECT_TRUE(view.header()->isFirstSectionMovable());
    show();
    QSignalSpy clicked(&view, &ListView::columnClicked);
    view.columns().setPosition(2, 1);
    QTest::mouseClick(view.header()->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.at(0).at(0).toInt(), 2) << "the column, not its place";
}

TEST_F(ListViewTest, CtrlAndAPlaceClickTheColumnThatIsSeenThere) {
    view.columns().setPositions({3, 1, 2});
    view.columns().setWidth(3, 0);
    QSignalSpy clicked(&view, &ListView::columnClicked);
    const auto place = [&](Qt::Key key, Qt::KeyboardModifiers held) {
        clicked.clear();
        QTest::keyClick(&view, key, held);
        return clicked.isEmpty() ? 0 : clicked.first().first().toInt();
    };
    EXPECT_EQ(place(Qt::Key_1, Qt::ControlModifier), 2);
    EXPECT_EQ(place(Qt::Key_2, Qt::ControlModifier | Qt::KeypadModifier), 1)
        << "what has no width has no place";
    EXPECT_EQ(place(Qt::Key_3, Qt::ControlModifier), 0);
    EXPECT_EQ(place(Qt::Key_0, Qt::ControlModifier), 0);
    EXPECT_EQ(place(Qt::Key_1, Qt::NoModifier), 0);
    EXPECT_EQ(place(Qt::Key_1, Qt::ControlModifier | Qt::ShiftModifier), 0);
}

TEST_F(ListViewTest, HeaderIconsComeFromTheColumnImages) {
    QPixmap blank(8, 8);
    blank.fill(Qt::transparent);
    view.columns().setImages({{"SortUp", QIcon(blank)}, {"Dummy", QIcon(blank)}});
    view.columns().setIcon(2, "SortUp");
    EXPECT_EQ(view.columns().icon(2), "SortUp");
    const auto iconAt = [&](int column) {
        return view.model()->headerData(column - 1, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
    };
    EXPECT_FALSE(iconAt(2).isNull());
    EXPECT_TRUE(iconAt(1).isNull());
    view.columns().setIcon(2, "");
    EXPECT_TRUE(iconAt(2).isNull());
}

TEST_F(ListViewTest, TakingTheColumnImagesAwayTakesAllHeaderIcons) {
    QPixmap blank(8, 8);
    blank.fill(Qt::transparent);
    view.columns().setImages({{"SortUp", QIcon(blank)}});
    view.columns().setIcon(1, "SortUp");
    view.columns().setImages({});
    EXPECT_EQ(view.columns().icon(1), "");
    view.columns().setImages({{"SortUp", QIcon(blank)}});
    EXPECT_FALSE(view.model()->headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid())
        << "an old mark does not come back with the images";
}

// Rows

TEST_F(ListViewTest, RowsStayInTheOrderTheyWereAdded) {
    view.addItem(row(3));
    view.addItem(row(1));
    view.addItem(row(2));
    EXPECT_EQ(view.count(), 3);
    EXPECT_EQ(view.item(1).Key, "K3");
    EXPECT_EQ(view.indexOf("K2"), 3);
    EXPECT_EQ(view.indexOf("K4"), 0);
    EXPECT_TRUE(view.hasItem("K1"));
    EXPECT_FALSE(view.hasItem(""));
    EXPECT_EQ(view.item("K1").Text, "row 1");
    EXPECT_EQ(shown(1, 1), "row 3");
    EXPECT_EQ(shown(1, 2), "30");
    EXPECT_EQ(shown(1, 3), "") << "a cell nobody filled is empty";
}

TEST_F(ListViewTest, EachBadAddressHasItsError) {
    addRows(2);
    EXPECT_EQ(errorOf([&] { view.item(0); }), 35600);
    EXPECT_EQ(errorOf([&] { view.item(3); }), 35600);
    EXPECT_EQ(errorOf([&] { view.item("K9"); }), 35601);
    EXPECT_EQ(errorOf([&] { view.select(3); }), 35600);
    EXPECT_EQ(errorOf([&] { view.select("K9"); }), 35601);
    EXPECT_EQ(errorOf([&] { view.removeItem(0); }), 35600);
    EXPECT_EQ(errorOf([&] { view.ensureVisible(3); }), 35600);
    EXPECT_EQ(errorOf([&] { view.changeItem("K9", [](ListItem&) {}); }), 35601);
    EXPECT_EQ(errorOf([&] { view.addItem(row(2)); }), 35602);
    EXPECT_EQ(errorOf([&] { view.addItem(ListItem()); }), 35602);
    EXPECT_EQ(view.count(), 2);
}

TEST_F(ListViewTest, ARowIsChangedInPlace) {
    addRows(2);
    view.changeItem("K1", [](ListItem& item) {
        item.Text = "later";
        item.setSubItems(2, "5.00");
        item.Tag = "1##note";
    });
    EXPECT_EQ(shown(1, 1), "later");
    EXPECT_EQ(shown(1, 3), "5.00");
    EXPECT_EQ(view.item("K1").Tag, "1##note");
    EXPECT_EQ(view.item("K1").SubItems(1), "10");
}

TEST_F(ListViewTest, AChangedKeyIsFoundAndMustStayUnique) {
    addRows(2);
    view.changeItem("K1", [](ListItem& item) { item.Key = "K7"; });
    EXPECT_EQ(view.indexOf("K7"), 1);
    EXPECT_FALSE(view.hasItem("K1"));
    EXPECT_EQ(errorOf([&] { view.changeItem("K7", [](ListItem& item) { item.Key = "K2"; }); }), 35602);
    EXPECT_EQ(view.item(1).Key, "K7");
}

TEST_F(ListViewTest, SmallIconsGoByKey) {
    QPixmap disc(16, 16);
    disc.fill(Qt::red);
    view.setSmallIcons({{"FinishedPayed", QIcon(disc)}});
    addRows(2);
    view.changeItem("K2", [](ListItem& item) { item.SmallIcon = "FinishedPayed"; });
    EXPECT_TRUE(view.model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_FALSE(view.model()->index(1, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_FALSE(view.model()->index(1, 1).data(Qt::DecorationRole).isValid());
}

TEST_F(ListViewTest, ARowsPictureKeepsItsColoursWhileSelected) {
    QPixmap disc(16, 16);
    disc.fill(Qt::red);
    view.setSmallIcons({{"FinishedNotPayed", QIcon(disc)}});
    addRows(2);
    view.changeItem("K1", [](ListItem& item) { item.SmallIcon = "FinishedNotPayed"; });
    show();
    view.select(1);
    view.clearFocus();
    const QImage image = view.viewport()->grab().toImage();
    EXPECT_EQ(image.pixelColor(10, rectOf(1).center().y()), QColor(Qt::red));
}

TEST_F(ListViewTest, ClearingTakesRowsAndSelectionButNotColumns) {
    addRows(3);
    view.select(2);
    QSignalSpy clicked(&view, &ListView::itemClicked);
    view.clearItems();
    EXPECT_EQ(view.count(), 0);
    EXPECT_EQ(view.selectedIndex(), 0);
    EXPECT_EQ(view.selectedItem(), nullptr);
    EXPECT_EQ(view.columns().count(), 3);
    EXPECT_EQ(clicked.count(), 0);
    addRows(1);
    EXPECT_EQ(view.indexOf("K1"), 1);
}

// Selection

TEST_F(ListViewTest, SelectingByProgramIsNoClick) {
    addRows(5);
    show();
    QSignalSpy clicked(&view, &ListView::itemClicked);
    view.select(2);
    EXPECT_EQ(view.selectedIndex(), 2);
    view.select("K4");
    ASSERT_NE(view.selectedItem(), nullptr);
    EXPECT_EQ(view.selectedItem()->Key, "K4");
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(ListViewTest, AddingRowsSelectsNothing) {
    show();
    addRows(3);
    QTest::qWait(1);
    EXPECT_EQ(view.selectedIndex(), 0);
}

TEST_F(ListViewTest, AClickAndEachArrowKeyChooseARow) {
    addRows(5);
    show();
    QSignalSpy clicked(&view, &ListView::itemClicked);
    click(2);
    EXPECT_EQ(view.selectedIndex(), 2);
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_End);
    QTest::keyClick(&view, Qt::Key_Up);
    QTest::keyClick(&view, Qt::Key_Home);
    QStringList keys;
    for (const QList<QVariant>& each : clicked) {
        keys.append(each.at(0).toString());
    }
    EXPECT_EQ(keys, QStringList({"K2", "K3", "K5", "K4", "K1"}));
}

TEST_F(ListViewTest, PageKeysMoveByPages) {
    addRows(100);
    show();
    view.select(1);
    QTest::keyClick(&view, Qt::Key_PageDown);
    const int page = view.selectedIndex() - 1;
    EXPECT_GT(page, 3);
    QTest::keyClick(&view, Qt::Key_PageDown);
    QTest::keyClick(&view, Qt::Key_PageUp);
    EXPECT_EQ(view.selectedIndex(), 1 + page);
}

TEST_F(ListViewTest, AClickOnTheChosenRowIsAClickToo) {
    addRows(3);
    show();
    view.select(2);
    QSignalSpy clicked(&view, &ListView::itemClicked);
    click(2);
    EXPECT_EQ(clicked.count(), 1);
    click(2);
    EXPECT_EQ(clicked.count(), 2);
}

TEST_F(ListViewTest, AClickBesideTheRowsKeepsTheSelection) {
    addRows(2);
    show();
    view.select(2);
    QSignalSpy clicked(&view, &ListView::itemClicked);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(30, view.viewport()->height() - 5));
    EXPECT_EQ(view.selectedIndex(), 2);
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(ListViewTest, OneRowAtATimeWhateverKeyIsHeld) {
    addRows(5);
    show();
    click(1);
    click(3, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(view.selectedIndex(), 3);
    click(3, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(view.selectedIndex(), 3) << "it cannot be taken away";
    click(5, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(view.selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(view.selectedIndex(), 5);
}

TEST_F(ListViewTest, TheSelectionSpansTheWholeRow) {
    addRows(2);
    show();
    view.select(1);
    EXPECT_TRUE(view.selectionModel()->isSelected(view.model()->index(0, 2)));
    const QImage image = view.viewport()->grab().toImage();
    for (const int column : {0, 2}) {
        const QRect cell = view.visualRect(view.model()->index(0, column));
        EXPECT_EQ(image.pixelColor(cell.right() - 6, cell.top() + 3),
                  view.palette().color(QPalette::Active, QPalette::Highlight));
    }
}

TEST_F(ListViewTest, ADesktopThatPalesSelectionsWithoutFocusDoesNotPaleThisOne) {
    const QPalette usual = QApplication::palette();
    QPalette paling = usual;
    paling.setColor(QPalette::Active, QPalette::Highlight, QColor(10, 90, 30));
    paling.setColor(QPalette::Inactive, QPalette::Highlight, Qt::lightGray);
    QApplication::setPalette(paling);
    QEvent changed(QEvent::PaletteChange);  // a running program sends it to every window
    QApplication::sendEvent(&view, &changed);
    const ListView later;
    EXPECT_EQ(view.palette().color(QPalette::Inactive, QPalette::Highlight), QColor(10, 90, 30));
    EXPECT_EQ(later.palette().color(QPalette::Inactive, QPalette::Highlight), QColor(10, 90, 30));
    QApplication::setPalette(usual);
}

TEST_F(ListViewTest, GridLinesStandBetweenTheRowsAndBelowThem) {
    addRows(1);
    show();
    const QImage image = view.viewport()->grab().toImage();
    const int edge = view.header()->sectionSize(0) - 1;
    const QColor ground = view.palette().color(QPalette::Base);
    EXPECT_NE(image.pixelColor(edge, rectOf(1).center().y()), ground);
    EXPECT_NE(image.pixelColor(edge, image.height() - 3), ground) << "also where there are no rows";
    const int free = view.header()->length() + 5;
    EXPECT_NE(image.pixelColor(free, rectOf(1).bottom()), ground);
    EXPECT_EQ(image.pixelColor(free, rectOf(1).bottom() - 2), ground);
}

TEST_F(ListViewTest, ALineOfTheGridLiesUnderEachRow) {
    addRows(4);
    show();
    const QImage image = view.viewport()->grab().toImage();
    for (int index = 1; index <= 4; ++index) {
        EXPECT_NE(image.pixelColor(view.header()->length() + 3, rectOf(index).bottom()),
                  view.palette().color(QPalette::Base));
    }
}

TEST_F(ListViewTest, MovingToARowKeepsTheColumnsWhereTheyWereScrolledTo) {
    addRows(50);
    for (int column = 1; column <= 3; ++column) {
        view.columns().setWidth(column, 6000);
    }
    show();
    view.horizontalScrollBar()->setValue(300);
    view.select(40);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 300);
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 300);
    EXPECT_TRUE(view.viewport()->rect().contains(QPoint(10, rectOf(41).center().y())));
}

// Keys and mouse

TEST_F(ListViewTest, EnterActivatesTheSelectedRowAndIsUsedUp) {
    addRows(3);
    show();
    view.select(2);
    QSignalSpy activated(&view, &ListView::itemActivated);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(&view, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QTest::keyClick(&view, Qt::Key_Enter);
    ASSERT_EQ(activated.count(), 2);
    EXPECT_EQ(activated.at(0).at(0).toString(), "K2");
}

TEST_F(ListViewTest, EnterWithNothingSelectedIsLeftToTheWindow) {
    addRows(1);
    QSignalSpy activated(&view, &ListView::itemActivated);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(&view, &enter);
    EXPECT_FALSE(enter.isAccepted());
    EXPECT_EQ(activated.count(), 0);
}

TEST_F(ListViewTest, DeleteAsksForADeletionAndTakesNothingItself) {
    addRows(2);
    show();
    QSignalSpy pressed(&view, &ListView::deletePressed);
    QTest::keyClick(&view, Qt::Key_Delete);
    EXPECT_EQ(pressed.count(), 1);
    EXPECT_EQ(view.count(), 2);
}

TEST_F(ListViewTest, ADoubleClickActivatesTheRowUnderIt) {
    addRows(3);
    show();
    QSignalSpy activated(&view, &ListView::itemActivated);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, rectOf(3).center());
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated.at(0).at(0).toString(), "K3");
    EXPECT_EQ(view.selectedIndex(), 3);
    QTest::mouseDClick(view.viewport(), Qt::RightButton, {}, rectOf(3).center());
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(ListViewTest, ADoubleClickBesideTheRowsActivatesTheSelectedOne) {
    addRows(2);
    show();
    QSignalSpy activated(&view, &ListView::itemActivated);
    const QPoint beside(30, view.viewport()->height() - 5);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, beside);
    EXPECT_EQ(activated.count(), 0);
    view.select(1);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, beside);
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(ListViewTest, TheRightButtonSelectsTheRowUnderItAndAsksForTheMenu) {
    addRows(3);
    show();
    view.select(1);
    QSignalSpy clicked(&view, &ListView::itemClicked);
    QSignalSpy menu(&view, &ListView::contextMenuAsked);
    int selectedThen = 0;
    const QObject test;
    QObject::connect(&view, &ListView::contextMenuAsked, &test, [&] { selectedThen = view.selectedIndex(); });
    rightClick(rectOf(3).center());
    ASSERT_EQ(menu.count(), 1);
    EXPECT_EQ(menu.at(0).at(0).toPoint(), view.viewport()->mapToGlobal(rectOf(3).center()));
    EXPECT_EQ(selectedThen, 3);
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.at(0).at(0).toString(), "K3");
}

TEST_F(ListViewTest, TheMenuCanBeAskedForBesideTheRows) {
    show();
    QSignalSpy menu(&view, &ListView::contextMenuAsked);
    rightClick(QPoint(30, 100));
    EXPECT_EQ(menu.count(), 1);
}

TEST_F(ListViewTest, TheMenuBesideTheRowsKeepsTheSelection) {
    addRows(3);
    show();
    click(2);
    const QPoint below(30, view.viewport()->height() - 3);
    ASSERT_FALSE(view.indexAt(below).isValid());
    rightClick(below);
    EXPECT_EQ(view.selectedIndex(), 2);
    rightClick(rectOf(2).center());
    EXPECT_EQ(view.selectedIndex(), 2);
}

TEST_F(ListViewTest, ARowThatIsSelectedByProgramComesIntoSight) {
    addRows(60);
    show();
    view.select(60);
    EXPECT_TRUE(view.viewport()->rect().contains(rectOf(60).center()));
    view.select("K1");
    EXPECT_TRUE(view.viewport()->rect().contains(rectOf(1).center()));
}

TEST_F(ListViewTest, TheFirstAndTheLastRowCanBeBroughtIntoSight) {
    addRows(60);
    show();
    view.ensureVisible(60);
    EXPECT_TRUE(view.viewport()->rect().contains(rectOf(60).center()));
    view.ensureVisible(1);
    EXPECT_TRUE(view.viewport()->rect().contains(rectOf(1).center()));
    EXPECT_EQ(errorOf([&] { view.ensureVisible(61); }), 35600);
    EXPECT_EQ(errorOf([&] { view.ensureVisible(0); }), 35600);
}

TEST_F(ListViewTest, TheMenuKeyAsksAtTheSelectedRow) {
    addRows(60);
    show();
    view.select(50);
    view.verticalScrollBar()->setValue(0);
    QSignalSpy menu(&view, &ListView::contextMenuAsked);
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(1, 1), view.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(view.viewport(), &key);
    QTest::keyClick(&view, Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_EQ(menu.count(), 2);
    for (int i = 0; i < 2; ++i) {
        const QPoint at = view.viewport()->mapFromGlobal(menu.at(i).at(0).toPoint());
        EXPECT_TRUE(view.viewport()->rect().contains(at)) << "in sight, not where the row would be";
        EXPECT_EQ(view.indexAt(at).row(), 49);
    }
}

TEST_F(ListViewTest, ALetterFindsARowThatBeginsWithIt) {
    view.addItem(row(1));
    ListItem other = row(2);
    other.Text = "zebra";
    view.addItem(other);
    show();
    view.select(1);
    QTest::keyClick(&view, Qt::Key_Z);
    EXPECT_EQ(view.selectedIndex(), 2);
}

// Removing

TEST_F(ListViewTest, AfterTheSelectedRowIsRemovedTheNextOneIsSelected) {
    addRows(4);
    show();
    QSignalSpy clicked(&view, &ListView::itemClicked);
    view.select(2);
    view.removeItem(2);
    EXPECT_EQ(view.selectedItem()->Key, "K3");
    view.select("K4");
    view.removeItem(3);
    EXPECT_EQ(view.selectedItem()->Key, "K3") << "the last one, where there is none behind it";
    view.removeItem(2);
    view.removeItem(1);
    EXPECT_EQ(view.count(), 0);
    EXPECT_EQ(view.selectedItem(), nullptr);
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(ListViewTest, RemovingAnotherRowKeepsTheSelection) {
    addRows(4);
    view.select(3);
    view.removeItem(1);
    EXPECT_EQ(view.selectedItem()->Key, "K3");
    EXPECT_EQ(view.selectedIndex(), 2);
    EXPECT_EQ(view.indexOf("K1"), 0);
    EXPECT_EQ(view.indexOf("K4"), 3);
}

TEST_F(ListViewTest, AListenerMayRefillTheListUnderTheClick) {
    addRows(5);
    show();
    QObject::connect(&view, &ListView::itemClicked, [&] {
        view.clearItems();
        view.addItem(row(9));
    });
    click(3);
    EXPECT_EQ(view.count(), 1);
    EXPECT_EQ(view.item(1).Key, "K9");
}

// Rows made on demand

TEST_F(ListViewTest, OnlyRowsInSightAreMade) {
    makeLazily(300000);
    EXPECT_EQ(view.count(), 300000);
    show();
    view.grab();
    const int inSight = view.viewport()->height() / std::max(1, rectOf(1).height()) + 2;
    EXPECT_GE(made.size(), 3);
    EXPECT_LE(made.size(), inSight);
    EXPECT_EQ(view.madeCount(), made.size());
    EXPECT_EQ(shown(1, 2), "10");
}

TEST_F(ListViewTest, AMadeRowIsKept) {
    makeLazily(300000);
    view.item(7);
    view.item(7);
    view.item("K7");
    show();
    view.grab();
    view.grab();
    EXPECT_EQ(made.count(7), 1);
}

TEST_F(ListViewTest, JumpingToTheEndMakesTheLastRowsOnly) {
    makeLazily(300000);
    show();
    QTest::keyClick(&view, Qt::Key_End);
    view.grab();
    EXPECT_EQ(view.selectedIndex(), 300000);
    EXPECT_LT(made.size(), 60);
    EXPECT_EQ(view.selectedItem()->Key, "K300000");
}

TEST_F(ListViewTest, ALetterMakesNoRows) {
    makeLazily(300000);
    show();
    view.select(1);
    view.grab();
    const qsizetype before = made.size();
    QTest::keyClicks(&view, "zx");
    view.grab();
    EXPECT_EQ(made.size(), before);
    EXPECT_EQ(view.selectedIndex(), 1);
}

TEST_F(ListViewTest, ALetterLooksThroughAllRowsOfAListThatIsNotTooLong) {
    makeLazily(400);
    show();
    view.select(1);
    QTest::keyClicks(&view, "row 39");
    EXPECT_EQ(view.selectedIndex(), 39);
}

TEST_F(ListViewTest, AKeyIsLookedUpAmongTheMadeRowsFirst) {
    makeLazily(300000);
    view.item(5);
    EXPECT_EQ(view.indexOf("K5"), 5);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(view.indexOf("K250000"), 250000);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(made.size(), 1) << "finding a row does not make it";
    EXPECT_EQ(view.indexOf("K300001"), 0);
    view.select("K250000");
    EXPECT_EQ(view.selectedIndex(), 250000);
}

TEST_F(ListViewTest, RowsAreRemovedAndAddedOnTopOfThoseToBeMade) {
    makeLazily(1000);
    view.removeItem(10);
    EXPECT_EQ(view.count(), 999);
    EXPECT_EQ(view.item(10).Key, "K11");
    EXPECT_EQ(view.indexOf("K10"), 0);
    EXPECT_EQ(view.indexOf("K500"), 499);
    view.removeItem(10);
    EXPECT_EQ(view.indexOf("K11"), 0) << "a made row is gone for good, too";
    EXPECT_EQ(view.madeCount(), 0);
    view.addItem(row(10));
    EXPECT_EQ(view.indexOf("K10"), 999);
    view.addItem(row(2000));
    EXPECT_EQ(view.item(1000).Key, "K2000");
    EXPECT_EQ(errorOf([&] { view.addItem(row(600)); }), 35602) << "also the key of a row nobody has made";
    view.removeItem(1);
    EXPECT_EQ(view.indexOf("K2000"), 999);
    EXPECT_EQ(view.indexOf("K1000"), 997);
}

// Any rows may go, made ones and others, and each of those that stay is found where it is then.
TEST_F(ListViewTest, RowsThatAreTakenAwayLeaveTheOthersInTheirPlaces) {
    makeLazily(40);
    QList<int> left(40);
    std::iota(left.begin(), left.end(), 1);
    for (const int place : {40, 1, 5, 5, 5, 20, 19, 1, 30, 10, 11, 9}) {
        view.item(view.count() / 2);
        view.removeItem(place);
        left.removeAt(place - 1);
        ASSERT_EQ(view.count(), left.size());
        for (int number = 1; number <= 41; ++number) {
            EXPECT_EQ(view.indexOf(row(number).Key), left.indexOf(number) + 1)
                << number << " after " << place;
        }
    }
    view.addItem(row(50));
    left.append(50);
    for (int index = 1; index <= view.count(); ++index) {
        EXPECT_EQ(view.item(index).Key, row(left[index - 1]).Key);
    }
}

TEST_F(ListViewTest, AListThatNobodySeesIsLaidOutWhenItIsShown) {
    makeLazily(1000);
    QScrollBar* const bar = view.verticalScrollBar();
    view.select(1);
    view.select(600);
    EXPECT_EQ(view.selectedItem()->Key, "K600");
    view.columns().setWidth(1, 2000);
    QTest::qWait(0);
    EXPECT_EQ(bar->maximum(), 0) << "the lines are counted where they are laid out";
    show();
    EXPECT_GT(bar->maximum(), 900);
    EXPECT_TRUE(view.viewport()->rect().contains(rectOf(600)));
    bar->setValue(0);
    view.hide();
    view.select(600);
    show();
    EXPECT_TRUE(view.viewport()->rect().contains(rectOf(600))) << "selected again, and in sight again";
}

TEST_F(ListViewTest, ARowThatIsMadeAndRemovedBeforeAnybodyLooksForItIsGone) {
    makeLazily(1000);
    EXPECT_EQ(view.item(10).Key, "K10");
    EXPECT_EQ(view.item(20).Key, "K20");
    view.removeItem(10);
    EXPECT_EQ(view.madeCount(), 1);
    EXPECT_EQ(view.indexOf("K10"), 0);
    EXPECT_EQ(view.indexOf("K20"), 19);
}

TEST_F(ListViewTest, AChangeMakesTheRowAndStays) {
    makeLazily(1000);
    view.changeItem("K800", [](ListItem& item) { item.Text = "changed"; });
    EXPECT_EQ(view.item(800).Text, "changed");
    EXPECT_EQ(made, QList<int>({800}));
    view.changeItem("K800", [](ListItem& item) { item.Key = "K5000"; });
    EXPECT_EQ(view.indexOf("K5000"), 800);
    EXPECT_EQ(view.indexOf("K800"), 0);
}

TEST_F(ListViewTest, ARowWhoseRecordIsGoneStaysBlankAndTellsTheProgram) {
    view.setLazyItems(
        3,
        [](int i) {
            if (i == 2) {
                throw dao::Error(dao::errRecordDeleted, "Record is deleted.");
            }
            return row(i);
        },
        numberOf);
    show();
    view.grab();
    EXPECT_EQ(shown(2, 1), "");
    EXPECT_EQ(shown(3, 1), "row 3");
    EXPECT_EQ(errorOf([&] { view.item(2); }), 3167);
    QSignalSpy clicked(&view, &ListView::itemClicked);
    QSignalSpy activated(&view, &ListView::itemActivated);
    click(2);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(clicked.count() + activated.count(), 0);
    click(3);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(ListViewTest, ANewFillingForgetsTheOldRows) {
    makeLazily(10);
    view.item(4);
    view.select(4);
    makeLazily(5);
    EXPECT_EQ(view.selectedIndex(), 0);
    EXPECT_EQ(view.madeCount(), 0);
    EXPECT_EQ(view.indexOf("K9"), 0);
    view.clearItems();
    EXPECT_EQ(view.indexOf("K4"), 0);
    makeLazily(0);
    EXPECT_EQ(view.count(), 0);
}

}  // namespace
