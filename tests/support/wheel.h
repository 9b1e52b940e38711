#pragma once

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

// Rolls the wheel over the middle of a widget, by notches (below 0: towards the person). The way is that of a
// real wheel: the window gets it from the window system and finds out itself who lies under the pointer and
// who gets the focus for it. Sent straight to a widget, no wheel ever gives the focus.
inline void rollOver(const QWidget* widget, int notches = -1) {
    QWidget* window = widget->window();
    const QPointF global = widget->mapToGlobal(QPointF(widget->rect().center()));
    QWheelEvent wheel(window->mapFromGlobal(global), global, QPoint(), QPoint(0, notches * 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(window->windowHandle(), &wheel);
}
