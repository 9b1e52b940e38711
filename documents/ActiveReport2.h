#pragma once

#include <QDate>
#include <QString>
#include <array>

#include "platform/report/report.h"
#include "platform/system/trap.h"

// The pro-forma invoice and the invoice. The document window sets the properties, gives it the rows of one
// service, and shows it. Amounts come at the rate of the rows (dinars or euro); percents are whole percents,
// 18 for eighteen of a hundred. Empty texts leave their place on the paper empty.
//
// One instance serves the whole program. It keeps its properties from one document to the next; only the sums
// begin anew.
class ActiveReport2 : public report::Report {
    Q_OBJECT
 public:
    explicit ActiveReport2(QObject* parent = nullptr);
    static ActiveReport2& instance();

    void setPriceRoundUp(qint32 decimals) { priceRoundUp_ = decimals; }  // 0, 1, 2; else: as it was
    void setCalcRabat(float percent) { calcRabat_ = percent; }
    void setFirmaMatBr(const QString& text) { firma_[0] = text; }
    void setFirmaRegBr(const QString& text) { firma_[1] = text; }
    void setFirmaSifraDel(const QString& text) { firma_[2] = text; }
    void setFirmaPIB(const QString& text) { firma_[3] = text; }
    void setFirmaPDV(const QString& text) { firma_[4] = text; }
    void setFirmaRacunBr(const QString& text) { firma_[5] = text; }
    void setKupacNaziv(const QString& text) { kupacNaziv_ = text; }
    void setKupacAdresa(const QString& text) { kupacAdresa_ = text; }
    void setKupacGrad(const QString& text) { kupacGrad_ = text; }
    void setKupacPIB(const QString& text) { kupacPIB_ = text; }
    void setKupacOstalo(const QString& text) { kupacOstalo_ = text; }
    void setDokumentDatum(const QDate& date) { dokumentDatum_ = date; }
    void setDokumentBroj(const QString& number);
    void setCalcPDV(float percent) { calcPDV_ = percent; }
    void setCalcRest(float percent) { calcRest_ = percent; }
    void setOptNacinPlacanja(const QString& caption) { conditions_[0].caption = caption; }
    void setOptRokPlacanja(const QString& caption) { conditions_[1].caption = caption; }
    void setOptRokIsporuke(const QString& caption) { conditions_[2].caption = caption; }
    void setOptIsporuka(const QString& caption) { conditions_[3].caption = caption; }
    void setOptNapomena(const QString& caption) { conditions_[4].caption = caption; }
    void setOptPecatSpor(const QString& text) { optPecatSpor_ = text; }
    void setOptFooter(const QString& text) { optFooter_ = text; }
    void setDokumentTip(qint32 type);  // 0 pro-forma invoice, otherwise invoice
    void setCeneDinarske(bool dinars) { ceneDinarske_ = dinars; }
    void setOptNacinPlacanja2(const QString& value) { conditions_[0].value = value; }
    void setOptRokPlacanja2(const QString& value) { conditions_[1].value = value; }
    void setOptRokIsporuke2(const QString& value) { conditions_[2].value = value; }
    void setOptIsporuka2(const QString& value) { conditions_[3].value = value; }
    void setOptNapomena2(const QString& value) { conditions_[4].value = value; }
    void setSlovimaTotal(bool inWords) { slovimaTotal_ = inWords; }

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
    class Steps;
    struct Condition {
        QString caption, value;
    };

    void updateTitle();
    void chooseFormat();
    QString formatted(float amount) const;
    report::Control& control(const char* section, const char* name);
    void showFirm(Steps& step);
    void showClient(Steps& step);
    void placeClient();
    void showDocument(Steps& step);
    void showConditions(Steps& step);
    void showFooter(Steps& step);
    void addRow(Steps& step);
    void placeSerialNumber(Steps& step);

    qint32 priceRoundUp_ = 2;
    float calcRabat_ = 0, calcPDV_ = 0, calcRest_ = 0;
    std::array<QString, 6> firma_;
    QString kupacNaziv_, kupacAdresa_, kupacGrad_, kupacPIB_, kupacOstalo_;
    QDate dokumentDatum_;
    QString dokumentBroj_;
    qint32 dokumentTip_ = 0;
    bool ceneDinarske_ = false;
    bool slovimaTotal_ = false;
    std::array<Condition, 5> conditions_;
    QString optPecatSpor_, optFooter_;

    float SumMedjuTotal_ = 0, SumBezPDV_ = 0, SumOstalo_ = 0, SumRabat_ = 0, SumPDV_ = 0;
    QString numberFormat_ = QStringLiteral("#,##0.00");
    qint16 rowNumber_ = 1;
    platform::Trap rowFailure_;  // of the rows of this run
};
