#pragma once

#include <QString>
#include <QtGlobal>

class ReportSteps;
namespace report {
class Report;
}

// What the document reckons: the amounts of its rows, their sums, and the total in words. Amounts come at the
// rate of the rows (dinars or euro); percents are whole percents, 18 for eighteen of a hundred.
class PrintedSums {
 public:
    qint32 PriceRoundUp = 2;             // decimals: 0, 1, 2; else: as it was
    float Rabat = 0, PDV = 0, Rest = 0;  // percent; the rest: other costs
    bool CeneDinarske = false;           // how the total is called in words
    bool SlovimaTotal = false;           // the total in words too

    void begin();  // the sums of a document begin anew
    // How the amounts of the rows are written, and the tax in their titles.
    void showFormat(report::Report& report, ReportSteps& step);
    void addRow(report::Report& report, ReportSteps& step);
    void show(report::Report& report, ReportSteps& step) const;

 private:
    QString formatted(float amount) const;
    void showInWords(report::Report& report, ReportSteps& step) const;

    float ofRows_ = 0, withoutTax_ = 0, other_ = 0, discount_ = 0, tax_ = 0;
    QString numberFormat_ = QStringLiteral("#,##0.00");
};
