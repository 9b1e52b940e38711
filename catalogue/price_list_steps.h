#pragma once

#include <QString>
#include <source_location>
#include <utility>

#include "platform/system/trap.h"

// The steps by which a price list is made: each is taken, whatever became of those before it, and one that
// fails adds a line to the text that the person gets to read.
class PriceListSteps {
 public:
    explicit PriceListSteps(QString& errorText) : errorText_(errorText) {}
    template <typename Work>
    void operator()(Work&& work, std::source_location where = std::source_location::current()) {
        platform::Trap step;
        step(std::forward<Work>(work), where);
        if (step.failed()) {
            add(step);
        }
    }
    bool failed() const { return failed_; }

 private:
    // The window had another name when the shop's people learnt to read this one out.
    void add(const platform::Trap& step) {
        failed_ = true;
        errorText_ +=
            QStringLiteral("%1 Prog. linija: %2; frmDobavljaciAll -> DoPrintDataReport procedure.\n")
                .arg(step.line())
                .arg(step.codeLine());
    }

    QString& errorText_;
    bool failed_ = false;
};
