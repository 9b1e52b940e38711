#include "documents/ActiveReport2.h"

#include <limits>

#include "documents/ActiveReport2_design.h"
#include "documents/report_steps.h"
#include "platform/dao/recordset.h"

using namespace active_report2;

namespace {

const QString kWrongSums = QStringLiteral(
    "Doslo je do neocekivane greske prilikom sracunavanja rabata, poreza i ostalih troskova. Dokument ce "
    "biti generisan ali ce rezultati biti nekorektni.");

}  // namespace

ActiveReport2::ActiveReport2(QObject* parent) : report::Report(parent) {
    active_report2::design(*this);
    setRecordset({});
}

ActiveReport2& ActiveReport2::instance() {
    static ActiveReport2 report;
    return report;
}

void ActiveReport2::setRecordset(const dao::Recordset& rows) {
    rowFailure_.clear();
    // A document whose rows could not be had, or not all of them, is still a document: its number is taken.
    setRows(report::rowsOf(rows, {.failure = &rowFailure_}));
}

void ActiveReport2::ReportStart() {
    ActiveReport_ReportStart();
}

void ActiveReport2::PageStart() {
    ActiveReport_PageStart();
}

void ActiveReport2::Arrange(report::Section& section) {
    if (section.kind() == report::Section::Kind::Detail) {
        ReportSteps step;  // the row's Format comes to the same failure, and tells it
        placeSerialNumber(step);
    }
}

void ActiveReport2::Format(report::Section& section) {
    if (section.kind() == report::Section::Kind::Detail) {
        Detail_Format();
    }
}

void ActiveReport2::BeforePrint(report::Section& section) {
    if (section.kind() == report::Section::Kind::GroupFooter) {
        GroupFooter1_BeforePrint();
    }
}

// The sums lack the rows that could not be had, also where that left none to be summed up.
void ActiveReport2::ReportEnd() {
    ReportSteps step;
    step.add(rowFailure_);
    step.tell(kWrongSums);
}

void ActiveReport2::ActiveReport_ReportStart() {
    Calc.begin();
}

void ActiveReport2::ActiveReport_PageStart() {
    ReportSteps step;
    rowNumber_ = 1;
    Calc.showFormat(*this, step);
    Firma.show(*this, step);
    Kupac.show(*this, step);
    Dokument.show(step);
    Opt.show(*this, step, Calc.SlovimaTotal);
    Dokument.showSignatures(step);
    Opt.showFooter(*this, step);
    step.tell(
        QStringLiteral("Doslo je do neocekivane greske prilikom formiranja dokumenta. Dokument ce biti "
                       "generisan ali ce njegov izgled i podaci biti nekorektni."));
}

void ActiveReport2::Detail_Format() {
    ReportSteps step;
    step([&] { control(*this, kDetail, "txtRedniBr").Text = QString::number(rowNumber_); });
    step([&] {
        if (rowNumber_ == std::numeric_limits<qint16>::max()) {
            throw platform::RunError(6, QStringLiteral("Overflow"));
        }
        ++rowNumber_;
    });
    Calc.addRow(*this, step);
    placeSerialNumber(step);
    step.tell(QStringLiteral(
        "Doslo je do neocekivane greske prilikom formiranja Details dela dokumenta. Dokument ce "
        "biti generisan ali ce njegov izgled i podaci biti nekorektni."));
}

void ActiveReport2::placeSerialNumber(ReportSteps& step) {
    bool isShown = false;
    step([&] { isShown = !control(*this, kDetail, "txtSN").Text.isEmpty(); });
    for (const char* name : {"txtSN", "lblSNtext"}) {
        step([&] { control(*this, kDetail, name).Visible = isShown; });
    }
    step([&] {
        const report::Control& above = control(*this, kDetail, isShown ? "txtSN" : "txtNaziv");
        report::Control& rule = control(*this, kDetail, "Line3");
        rule.Y1 = rule.Y2 = above.Top + above.Height;
    });
}

void ActiveReport2::GroupFooter1_BeforePrint() {
    ReportSteps step;
    Calc.show(*this, step);
    step.tell(kWrongSums);
}
