#pragma once

#include <QString>

#include "platform/report/report.h"

// The price list: products by groups, each with its maker, name, description and price. What is in stock is
// not the customer's business and is not printed.
//
// The properties are taken over at the start of each page. Texts left empty take no place on the paper.
class ActiveReport1 : public report::Report {
    Q_OBJECT
 public:
    explicit ActiveReport1(QObject* parent = nullptr);

    void setReportHeader(const QString& text) { reportHeader_ = text; }
    void setReportFooter(const QString& text) { reportFooter_ = text; }  // may have several lines
    void setPriceRoundUp(qint32 decimals) { priceRoundUp_ = decimals; }  // 0, 1, 2; else: as it was
    // Whether the groups can be gone to from a pane beside the pages.
    void setTOCVisible(bool visible) { tocVisible_ = visible; }

    // The rows, with the fields Grupa, Proizvodjac, Naziv, Opis, Cena1; a field that the rows do not have
    // stays empty on the paper. A row that a colleague deletes before it is read is left out.
    void setRecordset(const dao::Recordset& rows);

    // What the engine's events run.
    void ActiveReport_PageStart();
    void GroupHeader1_Format();

 protected:
    void PageStart() override;
    void Format(report::Section& section) override;

 private:
    QString reportHeader_, reportFooter_;
    qint32 priceRoundUp_ = 2;
    bool tocVisible_ = true;
};
