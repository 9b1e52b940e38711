#include "shell/help_history.h"

void HelpHistory::clear() {
    places_.clear();
    at_ = -1;
}

void HelpHistory::visit(const HelpPlace& place) {
    if (place == current()) {
        return;
    }
    places_ = places_.mid(0, at_ + 1);
    places_ += place;
    at_ = places_.size() - 1;
}

bool HelpHistory::canStep(int direction) const {
    const qsizetype at = at_ + direction;
    return at >= 0 && at < places_.size();
}

void HelpHistory::step(int direction) {
    if (canStep(direction)) {
        at_ += direction;
    }
}
