#pragma once

#include <QString>

class ReportSteps;
namespace report {
class Report;
}

// The firm's fiscal numbers, at the head of the document. One that is empty leaves its place empty.
struct PrintedFirm {
    QString MatBr, RegBr, SifraDel, PIB, PDV, RacunBr;

    void show(report::Report& report, ReportSteps& step) const;
};
