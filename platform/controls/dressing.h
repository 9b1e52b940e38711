#pragma once

#include <functional>

class QWidget;

namespace platform {

// Runs `dress` now, and again whenever the desktop goes over to other colours, as long as `widget` lives: for
// what was drawn or mixed from those colours once. Takes the place of the one that the widget had before.
void keepDressed(QWidget& widget, std::function<void()> dress);

}  // namespace platform
