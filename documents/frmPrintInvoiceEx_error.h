#pragma once

#include <utility>

#include "platform/system/trap.h"

class QWidget;

namespace print_invoice {

// The critical box of the document window, with everything there is to read out over the telephone.
void tellError(QWidget* owner, const platform::Trap& failure);

// Runs the step; what fails is told, and the work goes on behind it.
template <typename Step>
void guarded(QWidget* owner, Step&& step) {
    platform::Trap trap;
    trap(std::forward<Step>(step));
    if (trap.failed()) {
        tellError(owner, trap);
    }
}

}  // namespace print_invoice
