#pragma once

#include <QString>

class ReportSteps;
namespace report {
class Report;
}

// What the document says behind its sums and under each page. A condition is printed where both its caption
// and its value are there; an empty text leaves its place empty.
struct PrintedConditions {
    struct Condition {
        QString caption, value;
    };
    Condition NacinPlacanja, RokPlacanja, RokIsporuke, Isporuka, Napomena;
    QString PecatSpor, Footer;  // under each page

    // `belowWords`: the total in words stands over them.
    void show(report::Report& report, ReportSteps& step, bool belowWords) const;
    void showFooter(report::Report& report, ReportSteps& step) const;
};
