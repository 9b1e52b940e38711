#pragma once

#include <QString>
#include <QStringList>
#include <source_location>
#include <utility>

#include "platform/system/trap.h"

// Goes on past a failing step, so that one odd value does not cost the customer his document, and tells all
// that failed at once.
class ReportSteps {
 public:
    template <typename Step>
    void operator()(Step&& step, std::source_location where = std::source_location::current()) {
        platform::Trap trap;
        trap(std::forward<Step>(step), where);
        add(trap);
    }
    void add(const platform::Trap& trap);     // a failure that was kept elsewhere; none: nothing
    void tell(const QString& message) const;  // in one box, `message` before the failures; none: no box

 private:
    QStringList errors_;
};
