#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <cmath>
#include <limits>

#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_places.h"
#include "documents/document_conditions.h"
#include "documents/document_number.h"
#include "documents/document_parties.h"
#include "documents/frmPrintInvoiceEx.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "documents/frmPrintInvoiceEx_tables.h"
#include "platform/controls/boxes.h"
#include "platform/controls/date_field.h"
#include "platform/controls/pictures.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

using print_invoice::guarded;

namespace {

constexpr char kImageProperty[] = "image";  // of a tab: "warning" or "normal"
constexpr int kPartiesTab = 1;

document_number::Kind kindOf(int openType) {
    return openType != 0 ? document_number::Kind::Invoice : document_number::Kind::ProForma;
}

void exclaim(const QString& text, QWidget* owner) {
    platform::Box box;
    box.text = text;
    box.title = GetResString(1);
    box.icon = platform::BoxIcon::Exclamation;
    platform::showBox(box, owner);
}

}  // namespace

void frmPrintInvoiceEx::load() {
    loaded_ = true;
    loadPlace();
    guarded(this, [&] { command_[2]->setText(QString::number(GetDocumentNumber(false))); });
    parties_->takeClient(view_);
    loadGeneral();
    conditions_->loadChecks();
    setWindowTitle(OpenType == Invoice ? QStringLiteral("Stampanje Racuna")
                                       : QStringLiteral("Stampanje Predracuna"));
    loadCosts();
    conditions_->loadTexts();
    parties_->load();
    numberFormChanged();
}

void frmPrintInvoiceEx::loadPlace() {
    guarded(this, [&] {
        adjustSize();
        moveToPlace(this, settings::text(settings::document.WindowData));
    });
    guarded(this, [&] {
        const int index = settings::integer(settings::document.TabIndex);
        if (index < 1 || index > tabs_->count()) {
            throw platform::RunError(35600, QStringLiteral("Index out of bounds"));
        }
        tabs_->setCurrentIndex(index - 1);
    });
}

void frmPrintInvoiceEx::select(QComboBox* box, int index) {
    if (index < 0 || index >= box->count()) {
        throw platform::RunError(380, QStringLiteral("Invalid property value"));
    }
    box->setCurrentIndex(index);
}

void frmPrintInvoiceEx::loadGeneral() {
    for (const print_invoice::ComboRow& row : print_invoice::kCombos) {
        QComboBox* box = combo_[static_cast<std::size_t>(row.index)];
        box->setCurrentIndex(row.usual);
        guarded(this, [&] { select(box, settings::integer(row.setting)); });
    }
    guarded(this, [&] { date_->setValue(QDate::currentDate()); });
    guarded(this, [&] { inWords_->setChecked(settings::integer(settings::document.Slovima) != 0); });
}

void frmPrintInvoiceEx::loadCosts() {
    print_invoice::setTag(costs_, QString());
    guarded(this, [&] { costs_->setText(settings::text(settings::document.OstaliTrosak, QString())); });
    costs_->setCursorPosition(0);
}

void frmPrintInvoiceEx::setDefaults() {
    if (tabs_->currentIndex() == kPartiesTab) {
        parties_->takeDefaults();
        return;
    }
    for (const print_invoice::ComboRow& row : print_invoice::kCombos) {
        combo_[static_cast<std::size_t>(row.index)]->setCurrentIndex(row.usual);
    }
    print_invoice::takeTag(costs_);
    inWords_->setChecked(false);
    conditions_->takeDefaults();
}

void frmPrintInvoiceEx::markParties(bool differ) {
    tabs_->setTabIcon(kPartiesTab, differ ? platform::icon(QStringLiteral("Warning")) : QIcon());
    parties_->setProperty(kImageProperty, differ ? QStringLiteral("warning") : QStringLiteral("normal"));
}

void frmPrintInvoiceEx::checkCosts() {
    const std::optional<double> percent = platform::readNumber(costs_->text());
    if (!percent || *percent < 0 || *percent >= 100) {
        costs_->setText(QStringLiteral("0"));
    }
}

QString frmPrintInvoiceEx::NumberSuffixText(int Index) {
    static const QString kForms[] = {QStringLiteral("yyyy"), QStringLiteral("yy"), QStringLiteral("MMyyyy"),
                                     QStringLiteral("MMyy")};
    return Index >= 0 && Index < 4 ? QDate::currentDate().toString(kForms[Index]) : QString();
}

void frmPrintInvoiceEx::numberFormChanged() {
    sample_->setText(command_[2]->text() + combo_[0]->currentText().left(1) +
                     NumberSuffixText(combo_[1]->currentIndex()) + QStringLiteral(", od"));
}

qint32 frmPrintInvoiceEx::GetDocumentNumber(bool Write) {
    platform::Trap step;
    qint32 number = 0;
    step([&] { number = document_number::last(kindOf(OpenType), Write); });
    if (step.failed()) {
        exclaim(step.line() +
                    QStringLiteral("\nOccured in procedure GetDocumentNumber of Form frmPrintInvoiceEx"),
                this);
    }
    return number;
}

qint32 frmPrintInvoiceEx::ChangeDocumentNumber(qint32 NewNumber) {
    using document_number::Refusal;
    // An optional, since the compiler in use drops what a small structure held before a call that throws.
    std::optional<document_number::Change> made;
    guarded(this, [&] { made = document_number::change(kindOf(OpenType), NewNumber); });
    const document_number::Change change = made.value_or(document_number::Change{});
    if (change.refusal == Refusal::InUse) {
        exclaim(
            QStringLiteral("Promena broja nije moguca sve dok postoje korisnici logovani u bazu podataka. "
                           "Pokusajte ponovo kada vi budete jedini korisnik."),
            this);
    } else if (change.refusal == Refusal::NoTable) {
        exclaim(QStringLiteral("Tabela sa brojevima predracuna i racuna ne postoji. Zapis novog broja nije "
                               "moguc."),
                this);
    } else if (change.refusal == Refusal::NoRow) {
        exclaim(QStringLiteral("Tabela sa brojevima predracuna i racuna je prazna. Nije moguce upisati novi "
                               "broj."),
                this);
    }
    return change.number;
}

void frmPrintInvoiceEx::changeNumberByHand() {
    const std::optional<QString> answer = platform::inputBox(
        QStringLiteral(
            "Mozete da unesete broj dokumenta koji zelite. Naravno, morate da budete jedini korisnik "
            "trenutno Online. Unesite broj koji je za jedan manji od onoga koji zelite da vam se "
            "pojavi na dokumentu:"),
        QStringLiteral("Novi broj dokumenta"), QStringLiteral("0"), this);
    if (!answer || answer->isEmpty()) {
        return;
    }
    const std::optional<double> number = platform::readNumber(*answer);
    if (!number) {
        exclaim(QStringLiteral("Broj dokumenta mora da bude korektna numericka vrednost, dakle ceo broj veci "
                               "ili jednak nuli."),
                this);
        return;
    }
    guarded(this, [&] {
        const double whole = std::nearbyint(*number);
        if (std::abs(whole) > std::numeric_limits<qint32>::max()) {
            throw platform::RunError(6, QStringLiteral("Overflow"));
        }
        command_[2]->setText(QString::number(ChangeDocumentNumber(static_cast<qint32>(whole))));
    });
    numberFormChanged();
}
