#pragma once

#include <QString>

class QWidget;

// The places of windows, as the settings hold them: left and top edge in twips with a semicolon between. A
// text that is no place, or a place on no screen of today, leaves the window where it is.
void moveToPlace(QWidget* window, const QString& place);
QString placeOf(const QWidget* window);
// The same with the size: left, top, width and height. With fewer than four figures the size is 12000 by
// 8000 twips. A window is never made larger than the screen.
void moveToPlaceAndSize(QWidget* window, const QString& frame);
QString placeAndSizeOf(const QWidget* window);
