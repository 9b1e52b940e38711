#include "documents/document_conditions.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>

#include "common/settings.h"
#include "common/window_helpers.h"
#include "documents/ActiveReport2.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "documents/frmPrintInvoiceEx_tables.h"

using print_invoice::guarded;

namespace {

constexpr const char* kConditionNames[] = {"Nacin placanja", "Rok za uplatu", "Rok isporuke", "Isporuka",
                                           "Napomena"};

// Where a colleague has chosen nothing yet, the shop's usual wording stands.
struct TextRow {
    int index;  // of Text2
    const settings::Setting& setting;
    const char* tag;
};
constexpr TextRow kTexts[] = {
    {1, settings::document.txtNacinPlacanja1, "Nacin placanja:"},
    {2, settings::document.txtNacinPlacanja2, "100% avans."},
    {3, settings::document.txtRokPlacanja1, "Rok za uplatu:"},
    {4, settings::document.txtRokPlacanja2, "Tri dana od datuma dokumenta."},
    {5, settings::document.txtRokIsporuke1, "Rok isporuke:"},
    {6, settings::document.txtRokIsporuke2, "Odmah nakon uplate."},
    {7, settings::document.txtIsporuka1, "Isporuka:"},
    {8, settings::document.txtIsporuka2, "FCO prostorije firme."},
    {9, settings::document.txtNapomena1, "Napomena:"},
    {10, settings::document.txtNapomena2, ""},
    {11, settings::document.txtPecatPotpis,
     "Dokument je uradjen na racunaru i vazi bez pecata i potpisa. U slucaju spora, nadlezan je privredni "
     "sud u Smederevu."},
    {12, settings::document.txtFooter, ""},
};

struct CheckRow {
    int index;  // of Check1
    const settings::Setting& setting;
};
constexpr CheckRow kChecked[] = {
    {1, settings::document.ChkNacinPlacanja}, {2, settings::document.ChkRokPlacanja},
    {3, settings::document.ChkRokIsporuke},   {4, settings::document.ChkIsporuka},
    {5, settings::document.ChkNapomena},      {6, settings::document.ChkPecatPotpis},
    {7, settings::document.ChkFooter},        {8, settings::document.ChkFooterFromSett},
};

QString firmsFooter() {
    const auto firm = [](const settings::Setting& setting) { return settings::scrambled(setting); };
    const QString town = firm(settings::firm.frmSettGrad), phone = firm(settings::firm.frmSettTel),
                  fax = firm(settings::firm.frmSettFax);
    const QString mail = firm(settings::firm.frmSettEmail), web = firm(settings::firm.frmSettWWW);
    const QString dots = QStringLiteral("  ···  ");
    const QChar line = QLatin1Char('\n');

    QString text = firm(settings::firm.frmSettAdresa) + QStringLiteral(", ") +
                   firm(settings::firm.frmSettZip) + QLatin1Char(' ') + town +
                   QStringLiteral(", Srbija i Crna Gora");
    if (!phone.isEmpty()) {
        text += line + phone + (fax.isEmpty() ? QString() : dots + fax);
    } else if (!web.isEmpty()) {
        text += line + fax;
    }
    if (!mail.isEmpty()) {
        text += line + mail + (web.isEmpty() ? QString() : dots + web);
    } else if (!web.isEmpty()) {
        text += line + web;
    }
    return text;
}

}  // namespace

DocumentConditions::DocumentConditions(const int& openType, QWidget* parent)
    : QObject(parent), openType_(openType), window_(parent) {}

void DocumentConditions::addCheck(int index, const QString& caption, const QString& spoken, QWidget* parent) {
    QCheckBox* made = print_invoice::makeCheck(index, caption, spoken, parent);
    check_[static_cast<std::size_t>(index)] = made;
    connect(made, &QCheckBox::toggled, this, [this, index] { checkClicked(index); });
}

void DocumentConditions::addEntry(int index, const QString& spoken, QWidget* parent) {
    text2_[static_cast<std::size_t>(index)] = print_invoice::makeEntry(index, spoken, parent);
}

QWidget* DocumentConditions::buildConditions(QWidget* parent) {
    auto* frame = new QGroupBox(QStringLiteral("Uslovi:"), parent);
    auto* grid = new QGridLayout(frame);
    for (int i = 1; i <= kNote; ++i) {
        const QString name = QLatin1String(kConditionNames[i - 1]);
        addCheck(i, QString(), name, frame);
        addEntry(captionOf(i), name + QStringLiteral(", naslov"), frame);
        addEntry(valueOf(i), name + QStringLiteral(", tekst"), frame);
        grid->addWidget(check(i), i, 0);
        grid->addWidget(entry(captionOf(i)), i, 1);
        grid->addWidget(entry(valueOf(i)), i, 2);
    }
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 5);
    return frame;
}

QWidget* DocumentConditions::buildOther(QWidget* parent) {
    auto* frame = new QGroupBox(QStringLiteral("Ostalo:"), parent);
    auto* grid = new QGridLayout(frame);
    addCheck(kStamp, QString(), QStringLiteral("Pecat i spor"), frame);
    addEntry(kStampText, QStringLiteral("Pecat i spor, tekst"), frame);
    addCheck(kFooter, QString(), QStringLiteral("Footer"), frame);
    addEntry(kFooterText, QStringLiteral("Footer tekst"), frame);
    const QString caption =
        QStringLiteral("&Footer tekst - koristi postojece podatke o firmi (adresa, telefoni i dr.)");
    addCheck(kFirmsFooter, caption, spokenCaption(caption), frame);
    grid->addWidget(check(kStamp), 0, 0);
    grid->addWidget(entry(kStampText), 0, 1);
    grid->addWidget(check(kFooter), 1, 0);
    grid->addWidget(entry(kFooterText), 1, 1);
    grid->addWidget(check(kFirmsFooter), 2, 1);
    grid->setColumnStretch(1, 1);
    return frame;
}

bool DocumentConditions::isOn(int index) const {
    return check(index)->isChecked();
}

void DocumentConditions::loadChecks() {
    for (const CheckRow& row : kChecked) {
        guarded(window_, [&] { check(row.index)->setChecked(settings::integer(row.setting) != 0); });
        guarded(window_, [&] { checkClicked(row.index); });
    }
    if (openType_ != print_invoice::kInvoice) {
        return;
    }
    // An invoice is for what has been paid and delivered: nothing is left to agree upon.
    for (int i = 1; i < kNote; ++i) {
        check(i)->setEnabled(false);
        entry(captionOf(i))->setEnabled(false);
        entry(valueOf(i))->setEnabled(false);
    }
}

void DocumentConditions::loadTexts() {
    for (const TextRow& row : kTexts) {
        QLineEdit* field = entry(row.index);
        print_invoice::setTag(field, QString::fromUtf8(row.tag));
        guarded(window_, [&] { field->setText(settings::text(row.setting, print_invoice::tag(field))); });
        field->setCursorPosition(0);
    }
}

void DocumentConditions::takeDefaults() {
    for (const TextRow& row : kTexts) {
        print_invoice::takeTag(entry(row.index));
    }
    for (const int index : {1, 2, 3, 4, kNote, kFirmsFooter, kStamp, kFooter}) {
        if (check(index)->isEnabled() || index == kFirmsFooter) {
            check(index)->setChecked(true);
        }
    }
}

void DocumentConditions::checkClicked(int index) {
    if (index < kNote && openType_ == print_invoice::kInvoice) {
        return;
    }
    if (index <= kNote) {
        entry(captionOf(index))->setEnabled(isOn(index));
        entry(valueOf(index))->setEnabled(isOn(index));
    } else if (index == kStamp) {
        entry(kStampText)->setEnabled(isOn(kStamp));
    } else if (index == kFooter) {
        entry(kFooterText)->setEnabled(isOn(kFooter) && !isOn(kFirmsFooter));
        check(kFirmsFooter)->setEnabled(isOn(kFooter));
    } else {
        entry(kFooterText)->setEnabled(!isOn(kFirmsFooter));
    }
}

void DocumentConditions::saveChecks(const print_invoice::Save& save) const {
    for (const CheckRow& row : kChecked) {
        save([&] { settings::setInteger(row.setting, isOn(row.index) ? 1 : 0); });
    }
}

void DocumentConditions::saveTexts(const print_invoice::Save& save) const {
    for (const TextRow& row : kTexts) {
        save([&] { settings::setText(row.setting, entry(row.index)->text()); });
    }
}

void DocumentConditions::fill(ActiveReport2& report) const {
    using Printed = PrintedConditions;
    static constexpr Printed::Condition Printed::*kConditions[] = {
        &Printed::NacinPlacanja, &Printed::RokPlacanja, &Printed::RokIsporuke, &Printed::Isporuka,
        &Printed::Napomena};
    guarded(window_, [&] { report.Opt.Footer = footerText(); });
    for (int i = 1; i <= kNote; ++i) {
        Printed::Condition& condition = report.Opt.*kConditions[i - 1];
        const bool wanted = isOn(i) && (i == kNote || openType_ == print_invoice::kProForma);
        const auto text = [&](int index) { return wanted ? entry(index)->text() : QString(); };
        guarded(window_, [&] { condition.caption = text(captionOf(i)); });
        guarded(window_, [&] { condition.value = text(valueOf(i)); });
    }
    guarded(window_, [&] { report.Opt.PecatSpor = isOn(kStamp) ? entry(kStampText)->text() : QString(); });
}

QString DocumentConditions::footerText() const {
    if (!isOn(kFooter)) {
        return {};
    }
    return isOn(kFirmsFooter) ? firmsFooter() : entry(kFooterText)->text();
}
