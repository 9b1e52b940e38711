#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWheelEvent>
#include <QWindow>
#include <functional>

#include "platform/controls/list_view.h"

// A person's hand on mouse and keyboard: menus are opened where they hang, lists are dropped down, rows and
// buttons are clicked at the place where they are seen. Nothing here calls what stands behind a control.
namespace by_hand {

// The part of a control that takes the mouse.
inline QWidget* surfaceOf(QWidget* widget) {
    auto* area = qobject_cast<QAbstractScrollArea*>(widget);
    return area != nullptr ? area->viewport() : widget;
}

inline void click(QWidget* widget) {
    QTest::mouseClick(surfaceOf(widget), Qt::LeftButton);
}

// A check box takes a click on its box and its text, not on the empty place behind them.
inline void click(QCheckBox* box) {
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
}

// Writes over what stands in the field, after a click into it.
inline void type(QWidget* field, const QString& words) {
    click(field);
    QCoreApplication::processEvents();  // the click is over
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, words);
}

// One key into whatever has the focus.
inline void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

// --- What comes in through the window, which finds the control under the pointer.

inline void rightClick(QWidget* widget, const QPoint& place) {
    QTest::mouseClick(widget->window()->windowHandle(), Qt::RightButton, Qt::NoModifier,
                      surfaceOf(widget)->mapTo(widget->window(), place));
    QCoreApplication::processEvents();
}

// Over the middle of the control; a notch upwards is positive.
inline void rollWheel(QWidget* widget, int notches) {
    QWidget* window = widget->window();
    const QPointF place = widget->mapTo(window, widget->rect().center());
    QWheelEvent event(place, window->mapToGlobal(place), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window->windowHandle(), &event);
}

// --- Lists.

// In the list's surface; rows count from 1.
inline QPoint placeOfRow(platform::ListView* list, int row) {
    return list->visualRect(list->model()->index(row - 1, 0)).center();
}

inline void clickRow(platform::ListView* list, int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOfRow(list, row));
}

inline void rightClickRow(platform::ListView* list, int row) {
    rightClick(list, placeOfRow(list, row));
}

// The header's column by its number from 1.
inline void clickHeader(platform::ListView* list, int column) {
    QHeaderView* header = list->header();
    const int x = header->sectionViewportPosition(column - 1) + header->sectionSize(column - 1) / 2;
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(x, header->height() / 2));
}

// Drops the list down and clicks the entry, which the arrow keys bring into sight first.
inline void pick(QComboBox* selector, int entry) {
    QTest::mouseClick(selector, Qt::LeftButton);
    QAbstractItemView* list = selector->view();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(list->window()));
    // Near the entry's beginning: a long name may be wider than the list.
    const auto place = [&] {
        const QRect row = list->visualRect(selector->model()->index(entry, 0));
        return QPoint(row.left() + 8, row.center().y());
    };
    for (int page = 0; page < 1000 && !list->viewport()->rect().contains(place()); ++page) {
        QTest::keyClick(list, place().y() < 0 ? Qt::Key_PageUp : Qt::Key_PageDown);
    }
    // The list takes a click for one that only opened it until the mouse has moved.
    QTest::mouseMove(list->viewport(), QPoint(1, 1));
    QTest::mouseMove(list->viewport(), place());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place());
    EXPECT_FALSE(list->window()->isVisible());
}

// --- Menus.

inline void closeMenus() {
    while (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
    }
}

// A sub-menu takes its time.
inline void waitUntilOpen(QMenu* menu) {
    EXPECT_TRUE(QTest::qWaitFor([menu] { return menu->isVisible(); }) && QTest::qWaitForWindowExposed(menu))
        << menu->objectName().toStdString();
}

// From the menu bar, or from the menu that it is an entry of.
inline void openMenu(QMenu* menu) {
    if (menu->isVisible()) {
        return;
    }
    QAction* title = menu->menuAction();
    QMenuBar* bar = nullptr;
    QMenu* above = nullptr;
    for (QObject* place : title->associatedObjects()) {
        bar = bar != nullptr ? bar : qobject_cast<QMenuBar*>(place);
        above = above != nullptr ? above : qobject_cast<QMenu*>(place);
    }
    if (bar != nullptr) {
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(title).center());
    } else if (above != nullptr) {
        openMenu(above);
        QTest::mouseClick(above, Qt::LeftButton, Qt::NoModifier, above->actionGeometry(title).center());
    }
    waitUntilOpen(menu);
}

// An entry of a menu that is open. One that may not be chosen leaves the menu open; it is closed then.
inline void clickItem(QMenu* menu, QAction* item) {
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(item).center());
    closeMenus();
}

// Opens the menu of a toolbar's button by its arrow; `work` happens while it is open.
inline void inDropDown(QToolButton* button, const std::function<void(QMenu*)>& work) {
    QMenu* menu = button->defaultAction()->menu();
    bool done = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (!menu->isVisible()) {
            return;
        }
        watch.stop();
        work(menu);
        closeMenus();
        done = true;
    });
    watch.start(1);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier,
                      QPoint(button->width() - 4, button->height() / 2));
    EXPECT_TRUE(QTest::qWaitFor([&] { return done; })) << "the menu did not open";
}

}  // namespace by_hand
