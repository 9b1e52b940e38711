#pragma once

#include <QString>

class ReportSteps;
namespace report {
class Report;
}

// The client, in his box at the head of the document. Empty texts leave no gap.
struct PrintedClient {
    QString Naziv, Adresa, Grad, PIB, Ostalo;

    // For each page: the tax number says then what it is.
    void show(report::Report& report, ReportSteps& step);
};
