#pragma once

#include <QList>

#include "shell/help_file.h"

// The places that a reader of the help has been to: the one on show, and those that lie back and forward.
class HelpHistory {
 public:
    void clear();
    // A new place follows the one on show, and what lay forward of that is forgotten.
    void visit(const HelpPlace& place);
    // -1: back, 1: forward.
    bool canStep(int direction) const;
    void step(int direction);  // where it can

    HelpPlace current() const { return places_.value(at_); }  // nowhere before the first visit

 private:
    QList<HelpPlace> places_;
    qsizetype at_ = -1;
};
