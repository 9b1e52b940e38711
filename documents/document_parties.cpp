#include "documents/document_parties.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "common/settings.h"
#include "common/window_helpers.h"
#include "documents/ActiveReport2.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "documents/service_view.h"
#include "platform/controls/dressing.h"
#include "platform/controls/shades.h"

using print_invoice::guarded;
using print_invoice::setTag;
using print_invoice::tag;

namespace {

const QColor kDifferent(255, 0, 0);

void mark(QLabel& label, bool isMarked) {
    QPalette colours;
    if (isMarked) {
        colours.setColor(QPalette::WindowText, platform::readable(kDifferent, QApplication::palette()));
    }
    label.setPalette(colours);
}

constexpr const char* kFieldLabels[] = {
    "&Maticni Broj:", "&Registarski Broj:", "S&ifra Delatnosti:", "&PIB:", "P&DV:",   "Racun Bro&j:",
    "Ime/&Naziv:",    "&Adresa:",           "&Grad i Post. Br.:", "PI&B:", "Osta&lo:"};

// From the first field: the same keys here and in the options, both veiled.
// What this window keeps, and the option that it starts with; both veiled.
struct FirmRow {
    const settings::Setting* own;
    const settings::Setting* option;
};
constexpr FirmRow kFirm[] = {
    {&settings::document.frmSettMatBr, &settings::firm.frmSettMatBr},
    {&settings::document.frmSettRegBr, &settings::firm.frmSettRegBr},
    {&settings::document.frmSettSifDel, &settings::firm.frmSettSifDel},
    {&settings::document.frmSettPIB, &settings::firm.frmSettPIB},
    {&settings::document.frmSettPDV, &settings::firm.frmSettPDV},
    {&settings::document.frmSettRnBr, &settings::firm.frmSettRnBr},
};

}  // namespace

DocumentParties::DocumentParties(QWidget* parent) : QWidget(parent) {
    setObjectName(arrayName("Picture1", 1));
    auto* column = new QVBoxLayout(this);
    column->addWidget(buildFields(QStringLiteral("Fiskalni podaci firme:"), 0, kFirmFields - 1));
    column->addWidget(buildFields(QStringLiteral("Podaci Kupca/Klijenta:"), kFirmFields, kOther));
    column->addStretch(1);
}

QWidget* DocumentParties::buildFields(const QString& title, int from, int to) {
    auto* frame = new QGroupBox(title, this);
    auto* grid = new QGridLayout(frame);
    for (int i = from; i <= to; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const QString text = QLatin1String(kFieldLabels[i]);
        text1_[place] = new QLineEdit(frame);
        text1_[place]->setObjectName(arrayName("Text1", i));
        text1_[place]->setAccessibleName(title + QLatin1Char(' ') + spokenCaption(text));
        label1_[place] = new QLabel(text, frame);
        label1_[place]->setObjectName(arrayName("Label1", i));
        label1_[place]->setBuddy(text1_[place]);
        grid->addWidget(label1_[place], i, 0);
        grid->addWidget(text1_[place], i, 1);
        connect(text1_[place], &QLineEdit::textChanged, this, [this, i] { fieldChanged(i); });
    }
    // The same first column in both frames, so that the fields stand under each other.
    grid->setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(QStringLiteral("Sifra Delatnosti:  ")));
    return frame;
}

void DocumentParties::takeClient(const ServiceView& view) {
    const auto set = [this](int index, auto text) {
        guarded(window(), [&] { setTag(field(index), text()); });
    };
    set(kClientName, [&] {
        return view.isFirm() ? view.clientField(QStringLiteral("FirmName"))
                             : view.clientField(QStringLiteral("Surname")) + QLatin1Char(' ') +
                                   view.clientField(QStringLiteral("GivenName"));
    });
    set(kClientName + 1, [&] { return view.clientField(QStringLiteral("Street")); });
    set(kClientName + 2, [&] {
        return view.clientField(QStringLiteral("City")) + QStringLiteral(", ") +
               view.clientField(QStringLiteral("ZIP"));
    });
    set(kClientPIB, [&] { return view.isFirm() ? view.clientField(QStringLiteral("PIDNo")) : QString(); });
    set(kOther, [] { return QString(); });
}

void DocumentParties::load() {
    for (int i = 0; i < kFirmFields; ++i) {
        const settings::Setting& option = *kFirm[i].option;
        guarded(window(), [&] { setTag(field(i), settings::scrambled(option)); });
    }
    for (int i = 0; i < kFields; ++i) {
        guarded(window(), [&] { field(i)->setText(textAtStart(i)); });
        field(i)->setCursorPosition(0);
        guarded(window(), [&] { fieldChanged(i); });
    }
}

QString DocumentParties::textAtStart(int index) const {
    const QString usual = tag(field(index));
    if (index < kFirmFields) {
        return settings::scrambled(*kFirm[index].own, usual);
    }
    return index == kOther ? settings::text(settings::document.frmSettKupacOstalo) : usual;
}

void DocumentParties::takeDefaults() {
    for (QLineEdit* each : text1_) {
        print_invoice::takeTag(each);
    }
}

bool DocumentParties::differs(int index) const {
    return field(index)->text() != tag(field(index));
}

// Somebody may have typed another client's name by mistake, or for a reason: it is shown, and nothing more.
void DocumentParties::fieldChanged(int index) {
    if (index >= kCompared) {
        return;
    }
    QLabel* label = label1_[static_cast<std::size_t>(index)];
    platform::keepDressed(*label, [label, marked = differs(index)] { mark(*label, marked); });
    bool any = false;
    for (int i = 0; i < kCompared; ++i) {
        any = any || differs(i);
    }
    emit differenceChanged(any);
}

void DocumentParties::save(const print_invoice::Save& save) const {
    for (int i = 0; i < kFirmFields; ++i) {
        save([&] { settings::setScrambled(*kFirm[i].own, field(i)->text().trimmed()); });
    }
    save([&] { settings::setText(settings::document.frmSettKupacOstalo, field(kOther)->text()); });
}

void DocumentParties::fill(ActiveReport2& report) const {
    struct Row {
        QString& text;
        int field;
    };
    PrintedFirm& firm = report.Firma;
    PrintedClient& client = report.Kupac;
    // The firm's tax number stands with the client as well: so the shop's documents have always looked. What
    // is typed as the client's own is not printed.
    const Row kRows[] = {{firm.MatBr, 0},  {firm.RegBr, 1},   {firm.SifraDel, 2}, {firm.PIB, 3},
                         {firm.PDV, 4},    {firm.RacunBr, 5}, {client.Naziv, 6},  {client.Adresa, 7},
                         {client.Grad, 8}, {client.PIB, 3},   {client.Ostalo, 10}};
    for (const Row& row : kRows) {
        guarded(window(), [&] { row.text = field(row.field)->text(); });
    }
}
