#pragma once

#include <QGuiApplication>
#include <QScreen>
#include <QSize>
#include <QWidget>

#include "platform/controls/twips.h"

// The size of a window that was told so many twips: it grows with the letters, but not beyond the screen.
inline QSize sizeOfTwips(int width, int height) {
    platform::LetterLength wide, high;
    const QSize size(wide.show(width), high.show(height));
    return size.boundedTo(QGuiApplication::primaryScreen()->availableSize());
}

// The same of a window on show: its frame lies on the screen, too.
inline QSize sizeOnScreen(const QWidget& window, int width, int height) {
    const QSize frame = window.frameGeometry().size() - window.size();
    return sizeOfTwips(width, height).boundedTo(QGuiApplication::primaryScreen()->availableSize() - frame);
}

// Where it stands if it was told a place: there, as far as all of it is on the screen.
inline QPoint placeOnScreen(const QWidget& window, const QPoint& told) {
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    const QSize size = window.frameGeometry().size();
    return {qMax(room.left(), qMin(told.x(), room.right() + 1 - size.width())),
            qMax(room.top(), qMin(told.y(), room.bottom() + 1 - size.height()))};
}
