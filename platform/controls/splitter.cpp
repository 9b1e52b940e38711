#include "platform/controls/splitter.h"

#include <algorithm>
#include <cmath>

namespace platform {

Splitter::Splitter(Qt::Orientation orientation, QWidget* parent) : QSplitter(orientation, parent) {
    setChildrenCollapsible(false);
    connect(this, &QSplitter::splitterMoved, this, &Splitter::barMoved);
}

void Splitter::setPanes(QWidget* first, QWidget* second) {
    addWidget(first);
    addWidget(second);
    apply();
}

void Splitter::setLimits(int lower, int upper) {
    lower_ = lower;
    upper_ = upper;
    setPosition(position_);
}

void Splitter::setPosition(int percent) {
    position_ = std::clamp(percent, lower_, upper_);
    apply();
}

int Splitter::room() const {
    return (orientation() == Qt::Horizontal ? width() : height()) - handleWidth();
}

void Splitter::apply() {
    if (count() < 2 || room() <= 0) {
        return;
    }
    applying_ = true;
    const int first = static_cast<int>(std::lround(room() * position_ / 100.0));
    setSizes({first, room() - first});
    applying_ = false;
}

// The bar goes where the hand takes it, but no further than the limits.
void Splitter::barMoved() {
    if (applying_ || room() <= 0) {
        return;
    }
    const int wanted = static_cast<int>(std::lround(100.0 * sizes().constFirst() / room()));
    position_ = std::clamp(wanted, lower_, upper_);
    if (position_ != wanted) {
        apply();
    }
}

void Splitter::resizeEvent(QResizeEvent* event) {
    QSplitter::resizeEvent(event);
    apply();
}

void Splitter::showEvent(QShowEvent* event) {
    QSplitter::showEvent(event);
    apply();
}

}  // namespace platform
