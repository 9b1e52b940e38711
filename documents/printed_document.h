#pragma once

#include <QDate>
#include <QString>
#include <QtGlobal>

class ReportSteps;
namespace report {
class Report;
}

// What the document is: its kind, its number, its date. The kind and the number are its title at once.
class PrintedDocument {
 public:
    explicit PrintedDocument(report::Report& report) : report_(report) {}

    void setTip(qint32 type);  // 0 pro-forma invoice, otherwise invoice
    void setBroj(const QString& number);
    void setDatum(const QDate& date) { date_ = date; }

    // At the head of the document.
    void show(ReportSteps& step) const;
    // The places for signatures under each page, which an invoice has.
    void showSignatures(ReportSteps& step) const;

 private:
    void updateTitle();

    report::Report& report_;
    qint32 type_ = 0;
    QString number_;
    QDate date_;
};
