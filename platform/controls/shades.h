#pragma once

#include <QColor>

class QLineEdit;
class QPalette;
class QString;

namespace platform {

// Colours that hold on a light desktop and on a dark one: each is made from those of the desktop.

// From `ground` (0) to `other` (1), in the light that the eye sees.
QColor mixed(const QColor& ground, const QColor& other, double share);
bool isDark(const QPalette& palette);  // light letters on a dark ground
// The same hue as letters on the window's ground, light or dark enough to be read there.
QColor readable(const QColor& colour, const QPalette& palette);

// A search box that finds nothing says so: to the eye by a tint, to a screen reader by `description`. Empty:
// it finds something.
void showNothingFound(QLineEdit& box, const QString& description);

}  // namespace platform
