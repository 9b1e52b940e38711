#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "common/modMain.h"
#include "common/rate_term.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "data/session.h"
#include "documents/ActiveReport2.h"
#include "documents/document_conditions.h"
#include "documents/document_parties.h"
#include "documents/frmPrintInvoiceEx.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "documents/frmPrintInvoiceEx_tables.h"
#include "platform/controls/data_control.h"
#include "platform/controls/date_field.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

using print_invoice::guarded;

namespace {

constexpr int kSampleTail = 4;  // ", od"

}  // namespace

void frmPrintInvoiceEx::print() {
    checkCosts();  // an access key prints without leaving the field that is being typed in
    saveSettings();
    takeNumber();
    ActiveReport2& report = ActiveReport2::instance();
    fillReport(report);
    conditions_->fill(report);
    showRows(report);
}

// All of them are tried, and the first failure is told: a full disk is one message, not forty.
void frmPrintInvoiceEx::saveSettings() {
    guarded(this, [&] {
        platform::Trap first;
        const auto save = [&](const std::function<void()>& step) {
            platform::Trap one;
            one(step);
            if (one.failed() && !first.failed()) {
                first = one;
            }
        };
        parties_->save(save);
        for (const int index : {2, 0, 1}) {  // the rounding, then the two parts of the number
            const print_invoice::ComboRow& row = print_invoice::kCombos[index];
            save([&] {
                settings::setInteger(row.setting, combo_[static_cast<std::size_t>(index)]->currentIndex());
            });
        }
        save([&] { settings::setText(settings::document.OstaliTrosak, costs_->text()); });
        save([&] { settings::setInteger(settings::document.Slovima, inWords_->isChecked() ? 1 : 0); });
        conditions_->saveChecks(save);
        conditions_->saveTexts(save);
        if (first.failed()) {
            throw platform::RunError(first.number(), first.description());
        }
    });
}

// Before anything is shown, and never given back: a number that two colleagues have seen is worse than one
// that is missing.
void frmPrintInvoiceEx::takeNumber() {
    guarded(this, [&] { command_[2]->setText(QString::number(ChangeDocumentNumber(-1))); });
    numberFormChanged();
}

void frmPrintInvoiceEx::fillReport(ActiveReport2& report) {
    parties_->fill(report);
    guarded(this, [&] { report.setDokumentTip(OpenType != 0 ? 1 : 0); });
    guarded(this, [&] { report.setDokumentBroj(sample_->text().chopped(kSampleTail)); });
    guarded(this, [&] { report.setDokumentDatum(date_->value().value_or(QDate::currentDate())); });
    guarded(this, [&] { report.setCalcPDV(singleOf(view_.serviceTax())); });
    guarded(this, [&] { report.setCalcRabat(singleOf(view_.serviceDiscount())); });
    guarded(this, [&] { report.setCalcRest(singleOf(costs_->text())); });
    guarded(this, [&] { report.setCeneDinarske(CeneDinarske); });
    guarded(this, [&] { report.setSlovimaTotal(inWords_->isChecked()); });
    guarded(this, [&] { report.setPriceRoundUp(combo_[2]->currentIndex()); });
}

QString frmPrintInvoiceEx::rowsQuery() const {
    const QString name =
        QStringLiteral("InvoiceData.Grupa & ', ' & InvoiceData.Proizvodjac & ', ' & InvoiceData.Naziv");
    const std::optional<qint32> service = view_.serviceId();
    const QString price = QStringLiteral("InvoiceData.Cena*") + rateTerm();
    const QString tax = platform::textOfSingle(singleOf(view_.serviceTax()));
    QString query = QStringLiteral("SELECT ") + name +
                    QStringLiteral(" AS XXX, InvoiceData.SN, InvoiceData.JM, InvoiceData.Stanje, ");
    query += price + QStringLiteral(" AS Cena1, ");
    query += QStringLiteral("InvoiceData.Cena*InvoiceData.Stanje*") + rateTerm() + QStringLiteral("*(1+") +
             tax + QStringLiteral("/100) AS MedjuTotal, ");
    query += price + QStringLiteral("*(") + tax + QStringLiteral("/100) AS PDV, ");
    query += price + QStringLiteral("*(1+") + tax + QStringLiteral("/100) AS PDVPrice ");
    return query + QStringLiteral("FROM InvoiceData WHERE InvoiceData.ServiceID = ") +
           (service ? QString::number(*service) : QString()) + QStringLiteral(" ORDER BY ") + name;
}

void frmPrintInvoiceEx::showRows(ActiveReport2& report) {
    platform::DataControl source;
    {
        const platform::WaitPointer wait;
        guarded(this, [&] { source.DatabaseName = databasePath(); });
        guarded(this, [&] { source.Connect = connectText(); });
        guarded(this, [&] { source.setRecordSource(rowsQuery()); });
        guarded(this, [&] { source.Refresh(); });
    }
    guarded(this, [&] { report.setRecordset(source.isOpen() ? source.Recordset() : dao::Recordset()); });
    guarded(this, [&] { onShow(report); });
    // The report lives on; the colleagues' exclusive use of the file must not wait for its next document.
    report.setRecordset({});
    source.Close();
}

QString frmPrintInvoiceEx::BuildFooterText() const {
    return conditions_->footerText();
}
