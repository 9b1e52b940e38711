#pragma once

#include "documents/printed_client.h"
#include "documents/printed_conditions.h"
#include "documents/printed_document.h"
#include "documents/printed_firm.h"
#include "documents/printed_sums.h"
#include "platform/report/report.h"
#include "platform/system/trap.h"

// The pro-forma invoice and the invoice. The document window sets the properties of its parts, gives it the
// rows of one service, and shows it. Each part fills what it has on the paper; the report itself tells them
// when, and lays out the rows.
//
// One instance serves the whole program. It keeps its properties from one document to the next; only the sums
// begin anew.
class ActiveReport2 : public report::Report {
    Q_OBJECT
 public:
    explicit ActiveReport2(QObject* parent = nullptr);
    static ActiveReport2& instance();

    PrintedFirm Firma;
    PrintedClient Kupac;
    PrintedDocument Dokument{*this};
    PrintedConditions Opt;
    PrintedSums Calc;

    // The rows, with the fields XXX, SN, JM, Stanje, Cena1, MedjuTotal, PDV, PDVPrice. A closed record set: a
    // document without rows. Rows that cannot be read are told at the end, and the document comes without
    // them.
    void setRecordset(const dao::Recordset& rows);

    // What the engine's events run. Each goes on past a failing step and tells all of them in one box.
    void ActiveReport_ReportStart();
    void ActiveReport_PageStart();
    void Detail_Format();
    void GroupFooter1_BeforePrint();

 protected:
    void ReportStart() override;
    void PageStart() override;
    void Arrange(report::Section& section) override;
    void Format(report::Section& section) override;
    void BeforePrint(report::Section& section) override;
    void ReportEnd() override;

 private:
    void placeSerialNumber(ReportSteps& step);

    qint16 rowNumber_ = 1;
    platform::Trap rowFailure_;  // of the rows of this run
};
