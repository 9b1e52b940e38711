#pragma once

#include "catalogue/sort_state.h"

// What the commands do to the pane that they are given for.
class PaneCommands {
 public:
    virtual ~PaneCommands() = default;
    virtual void add() = 0;
    virtual void edit() = 0;  // the selected row; nothing without one, as remove
    virtual void remove() = 0;
    virtual void removeAll() = 0;  // nothing where there are no rows
    virtual void sort(SortMode mode) = 0;
};
