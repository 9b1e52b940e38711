#pragma once

#include <QGuiApplication>
#include <QScreen>
#include <QSize>

#include "platform/controls/twips.h"

// The size of a window that was told so many twips: it grows with the letters, but not beyond the screen.
inline QSize sizeOfTwips(int width, int height) {
    platform::LetterLength wide, high;
    const QSize size(wide.show(width), high.show(height));
    return size.boundedTo(QGuiApplication::primaryScreen()->availableSize());
}

// Where a window of that size stands that was told a place: there, as far as all of it is on the screen.
inline QPoint placeOnScreen(const QPoint& told, const QSize& size) {
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    return {qMax(room.left(), qMin(told.x(), room.right() + 1 - size.width())),
            qMax(room.top(), qMin(told.y(), room.bottom() + 1 - size.height()))};
}
