#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "data/session.h"
#include "documents/ActiveReport2.h"
#include "documents/frmPrintInvoiceEx.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "documents/frmPrintInvoiceEx_tables.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/date_field.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"
#include "shell/rate_term.h"
#include "shell/settings.h"

using print_invoice::guarded;
using print_invoice::setting;

namespace {

constexpr int kDiscountColumn = 5, kTaxColumn = 6;
constexpr int kSampleTail = 4;  // ", od"

float singleOf(const QString& text) {
    const std::optional<float> number = platform::readSingle(text);
    if (!number)
        throw platform::RunError(13, QStringLiteral("Type mismatch"));
    return *number;
}

}  // namespace

void print_invoice::tellError(QWidget* owner, const platform::Trap& failure) {
    // The last four lines are asked for over the telephone too; this system has nothing to put there.
    platform::Box box;
    box.text = QStringLiteral(
                   "Error Number: %1\nError description: %2\nError source: %3\nError help file: \n"
                   "Error help context: 0\nLastDllError: 0")
                   .arg(QString::number(failure.number()), failure.description(), GetResString(1));
    box.title = GetResString(1);
    box.icon = platform::BoxIcon::Critical;
    platform::showBox(box, owner);
}

void frmPrintInvoiceEx::print() {
    checkCosts();  // an access key prints without leaving the field that is being typed in
    saveSettings();
    takeNumber();
    ActiveReport2& report = ActiveReport2::instance();
    fillReport(report);
    fillConditions(report);
    showRows(report);
}

// All of them are tried, and the first failure is told: a full disk is one message, not forty.
void frmPrintInvoiceEx::saveSettings() {
    guarded(this, [&] {
        platform::Trap first;
        const auto save = [&](auto step) {
            platform::Trap one;
            one(step);
            if (one.failed() && !first.failed())
                first = one;
        };
        for (std::size_t i = 0; i < kFirmFields; ++i)
            save([&] {
                settings::setScrambled(setting(print_invoice::kFirm[i]), text1_[i]->text().trimmed());
            });
        save([&] { settings::setText(setting(print_invoice::kOstalo), text1_[kOther]->text()); });
        for (const char* key : {"PriceRoundUp", "NumberDelimiter", "NumberSuffix"}) {
            for (const print_invoice::ComboRow& row : print_invoice::kCombos) {
                if (qstrcmp(row.key, key) == 0)
                    save([&] {
                        settings::setInteger(setting(key),
                                             combo_[static_cast<std::size_t>(row.index)]->currentIndex());
                    });
            }
        }
        save([&] { settings::setText(setting("OstaliTrosak"), text2_[0]->text()); });
        save([&] { settings::setInteger(setting("Slovima"), isOn(0) ? 1 : 0); });
        for (const print_invoice::CheckRow& row : print_invoice::kChecked)
            save([&] { settings::setInteger(setting(row.key), isOn(row.index) ? 1 : 0); });
        for (const print_invoice::TextRow& row : print_invoice::kTexts)
            save([&] {
                settings::setText(setting(row.key), text2_[static_cast<std::size_t>(row.index)]->text());
            });
        if (first.failed())
            throw platform::RunError(first.number(), first.description());
    });
}

// Before anything is shown, and never given back: a number that two colleagues have seen is worse than one
// that is missing.
void frmPrintInvoiceEx::takeNumber() {
    guarded(this, [&] { command_[2]->setText(QString::number(ChangeDocumentNumber(-1))); });
    numberFormChanged();
}

float frmPrintInvoiceEx::percentOf(int column) const {
    return singleOf(view_.serviceColumn(column));
}

void frmPrintInvoiceEx::fillReport(ActiveReport2& report) {
    using Setter = void (ActiveReport2::*)(const QString&);
    struct Row {
        Setter set;
        int field;  // of Text1
    };
    // The firm's tax number stands with the client as well: so the shop's documents have always looked. What
    // is typed as the client's own is not printed.
    static constexpr Row kRows[] = {
        {&ActiveReport2::setFirmaMatBr, 0},    {&ActiveReport2::setFirmaRegBr, 1},
        {&ActiveReport2::setFirmaSifraDel, 2}, {&ActiveReport2::setFirmaPIB, 3},
        {&ActiveReport2::setFirmaPDV, 4},      {&ActiveReport2::setFirmaRacunBr, 5},
        {&ActiveReport2::setKupacNaziv, 6},    {&ActiveReport2::setKupacAdresa, 7},
        {&ActiveReport2::setKupacGrad, 8},     {&ActiveReport2::setKupacPIB, 3},
        {&ActiveReport2::setKupacOstalo, 10},
    };
    for (const Row& row : kRows)
        guarded(this, [&] { (report.*row.set)(text1_[static_cast<std::size_t>(row.field)]->text()); });
    guarded(this, [&] { report.setDokumentTip(OpenType != 0 ? 1 : 0); });
    guarded(this, [&] { report.setDokumentBroj(sample_->text().chopped(kSampleTail)); });
    guarded(this, [&] { report.setDokumentDatum(date_->value().value_or(QDate::currentDate())); });
    guarded(this, [&] { report.setCalcPDV(percentOf(kTaxColumn)); });
    guarded(this, [&] { report.setCalcRabat(percentOf(kDiscountColumn)); });
    guarded(this, [&] { report.setCalcRest(singleOf(text2_[0]->text())); });
    guarded(this, [&] { report.setCeneDinarske(CeneDinarske); });
    guarded(this, [&] { report.setSlovimaTotal(isOn(0)); });
    guarded(this, [&] { report.setPriceRoundUp(combo_[2]->currentIndex()); });
}

void frmPrintInvoiceEx::fillConditions(ActiveReport2& report) {
    guarded(this, [&] { report.setOptFooter(BuildFooterText()); });
    using Setter = void (ActiveReport2::*)(const QString&);
    struct Row {
        Setter caption, value;
    };
    static constexpr Row kRows[] = {
        {&ActiveReport2::setOptNacinPlacanja, &ActiveReport2::setOptNacinPlacanja2},
        {&ActiveReport2::setOptRokPlacanja, &ActiveReport2::setOptRokPlacanja2},
        {&ActiveReport2::setOptRokIsporuke, &ActiveReport2::setOptRokIsporuke2},
        {&ActiveReport2::setOptIsporuka, &ActiveReport2::setOptIsporuka2},
        {&ActiveReport2::setOptNapomena, &ActiveReport2::setOptNapomena2},
    };
    for (int i = 1; i <= kNote; ++i) {
        const Row& row = kRows[i - 1];
        const bool wanted = isOn(i) && (i == kNote || OpenType == ProForma);
        const auto entry = static_cast<std::size_t>(2 * i - 1);
        guarded(this, [&] { (report.*row.caption)(wanted ? text2_[entry]->text() : QString()); });
        guarded(this, [&] { (report.*row.value)(wanted ? text2_[entry + 1]->text() : QString()); });
    }
    guarded(this, [&] { report.setOptPecatSpor(isOn(kStamp) ? text2_[kStampText]->text() : QString()); });
}

QString frmPrintInvoiceEx::rowsQuery() const {
    const QString name =
        QStringLiteral("InvoiceData.Grupa & ', ' & InvoiceData.Proizvodjac & ', ' & InvoiceData.Naziv");
    const QString price = QStringLiteral("InvoiceData.Cena*") + rateTerm();
    const QString tax = platform::textOfSingle(percentOf(kTaxColumn));
    QString query = QStringLiteral("SELECT ") + name +
                    QStringLiteral(" AS XXX, InvoiceData.SN, InvoiceData.JM, InvoiceData.Stanje, ");
    query += price + QStringLiteral(" AS Cena1, ");
    query += QStringLiteral("InvoiceData.Cena*InvoiceData.Stanje*") + rateTerm() + QStringLiteral("*(1+") +
             tax + QStringLiteral("/100) AS MedjuTotal, ");
    query += price + QStringLiteral("*(") + tax + QStringLiteral("/100) AS PDV, ");
    query += price + QStringLiteral("*(1+") + tax + QStringLiteral("/100) AS PDVPrice ");
    return query + QStringLiteral("FROM InvoiceData WHERE InvoiceData.ServiceID = ") +
           view_.serviceKey().mid(1) + QStringLiteral(" ORDER BY ") + name;
}

void frmPrintInvoiceEx::showRows(ActiveReport2& report) {
    platform::DataControl source;
    {
        const platform::WaitPointer wait;
        guarded(this, [&] { source.DatabaseName = databasePath(); });
        guarded(this, [&] { source.Connect = connectText(); });
        guarded(this, [&] { source.RecordSource = rowsQuery(); });
        guarded(this, [&] { source.Refresh(); });
    }
    guarded(this, [&] { report.setRecordset(source.isOpen() ? source.Recordset() : dao::Recordset()); });
    guarded(this, [&] { onShow(report); });
    // The report lives on; the colleagues' exclusive use of the file must not wait for its next document.
    report.setRecordset({});
    source.Close();
}

QString frmPrintInvoiceEx::BuildFooterText() const {
    if (!isOn(kFooter))
        return {};
    if (!isOn(kFirmsFooter))
        return text2_[kFooterText]->text();
    const auto firm = [](const char* key) {
        return settings::scrambled(settings::find(QStringLiteral("Settings"), QLatin1String(key)));
    };
    const QString town = firm("frmSettGrad"), phone = firm("frmSettTel"), fax = firm("frmSettFax");
    const QString mail = firm("frmSettEmail"), web = firm("frmSettWWW");
    const QString dots = QStringLiteral("  ···  ");
    const QChar line = QLatin1Char('\n');

    QString text = firm("frmSettAdresa") + QStringLiteral(", ") + firm("frmSettZip") + QLatin1Char(' ') +
                   town + QStringLiteral(", Srbija i Crna Gora");
    if (!phone.isEmpty())
        text += line + phone + (fax.isEmpty() ? QString() : dots + fax);
    else if (!web.isEmpty())
        text += line + fax;
    if (!mail.isEmpty())
        text += line + mail + (web.isEmpty() ? QString() : dots + web);
    else if (!web.isEmpty())
        text += line + web;
    return text;
}
