#pragma once

#include <QString>

class QWidget;

// The places of windows, as the settings hold them: left and top edge in twips with a semicolon between. A
// text that is no place leaves the window where it is. When the window is shown, the whole of it is on a
// screen of today, as far as that is large enough.
void moveToPlace(QWidget* window, const QString& place);
QString placeOf(const QWidget* window);
// The same with the size: left, top, width and height, of which the size grows with the desktop's letters.
// With fewer than four figures it is 12000 by 8000 twips. A window is never made larger than the screen; the
// size that it was told is kept all the same, until a person makes it another.
void moveToPlaceAndSize(QWidget* window, const QString& frame);
QString placeAndSizeOf(const QWidget* window);

// A window that is not maximized comes onto the screen with its whole frame: it is moved as far as needed,
// and made smaller where the screen has no room for it. Where it cannot be small enough, its left upper
// corner lies there.
void bringOnScreen(QWidget* window);
