#include "documents/document_number_fields.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <cmath>
#include <limits>

#include "common/window_helpers.h"
#include "documents/ActiveReport2.h"
#include "documents/document_number.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "platform/controls/date_field.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

using print_invoice::guarded;

namespace {

constexpr int kSampleTail = 4;  // ", od"

constexpr const char* kSigns[] = {"/", "-", "~", "*", "@", "#", " (razmak)"};
// The years are examples, printed on the form long ago.
constexpr const char* kYears[] = {"YYYY = 2005", "YY = 05", "MMYYYY = 052005", "MMYY = 0505"};
constexpr DocumentChoice::Facts kSign{0, "Znak izmedju broja i godine", kSigns,
                                      settings::document.NumberDelimiter, 0};
constexpr DocumentChoice::Facts kYear{1, "Godina u broju dokumenta", kYears, settings::document.NumberSuffix,
                                      0};

document_number::Kind kindOf(int openType) {
    return openType != 0 ? document_number::Kind::Invoice : document_number::Kind::ProForma;
}

void exclaim(QWidget* owner, const QString& text) {
    box(owner, text, platform::BoxIcon::Exclamation);
}

QString textOf(document_number::Refusal refusal) {
    using document_number::Refusal;
    switch (refusal) {
        case Refusal::InUse:
            return QStringLiteral(
                "Promena broja nije moguca sve dok postoje korisnici logovani u bazu podataka. "
                "Pokusajte ponovo kada vi budete jedini korisnik.");
        case Refusal::NoTable:
            return QStringLiteral(
                "Tabela sa brojevima predracuna i racuna ne postoji. Zapis novog broja nije "
                "moguc.");
        case Refusal::NoRow:
            return QStringLiteral(
                "Tabela sa brojevima predracuna i racuna je prazna. Nije moguce upisati novi "
                "broj.");
        case Refusal::None:
            break;
    }
    return {};
}

}  // namespace

DocumentNumberFields::DocumentNumberFields(const int& openType, QWidget* window)
    : QObject(window), openType_(openType), window_(window), sign_(kSign), year_(kYear) {}

void DocumentNumberFields::build(QWidget* panel, QBoxLayout* row) {
    number_ = new QPushButton(panel);
    number_->setObjectName(arrayName("Command1", 2));
    number_->setToolTip(QStringLiteral("Poslednji odstampani broj dokumenta"));
    number_->setAccessibleName(number_->toolTip());
    number_->setAutoDefault(false);  // a number must not be changed by an Enter meant for a field
    connect(number_, &QPushButton::clicked, this, &DocumentNumberFields::changeByHand);
    for (DocumentChoice* choice : {&sign_, &year_}) {
        connect(choice->build(panel), &QComboBox::currentIndexChanged, this,
                &DocumentNumberFields::showSample);
    }
    auto* label = new QLabel(QStringLiteral("&Broj:"), panel);
    label->setObjectName(arrayName("Label3", 0));
    label->setBuddy(sign_.box());
    sample_ = new QLabel(QStringLiteral("(npr. ..., od)"), panel);
    sample_->setObjectName(arrayName("Label3", 1));
    date_ = new platform::DateField(false, panel);
    date_->setObjectName(QStringLiteral("DTPicker1"));
    date_->setAccessibleName(QStringLiteral("Datum dokumenta"));
    date_->edit()->setAccessibleName(date_->accessibleName());
    sample_->setBuddy(date_);
    for (QWidget* part : std::initializer_list<QWidget*>{label, number_, sign_.box(), year_.box()}) {
        row->addWidget(part);
    }
    row->addSpacing(12);
    row->addWidget(sample_);
    row->addWidget(date_);
}

QWidget* DocumentNumberFields::last() const {
    return year_.box();
}

void DocumentNumberFields::loadNumber() {
    guarded(window_, [&] { number_->setText(QString::number(GetDocumentNumber(false))); });
}

void DocumentNumberFields::loadForm() {
    sign_.load(window_);
    year_.load(window_);
}

void DocumentNumberFields::loadDate() {
    guarded(window_, [&] { date_->setValue(QDate::currentDate()); });
}

void DocumentNumberFields::takeDefaults() {
    sign_.takeUsual();
    year_.takeUsual();
}

void DocumentNumberFields::save(const print_invoice::Save& save) const {
    sign_.save(save);
    year_.save(save);
}

void DocumentNumberFields::fill(ActiveReport2& report) const {
    guarded(window_, [&] { report.Dokument.setTip(openType_ != 0 ? 1 : 0); });
    guarded(window_, [&] { report.Dokument.setBroj(sample_->text().chopped(kSampleTail)); });
    guarded(window_, [&] { report.Dokument.setDatum(date_->value().value_or(QDate::currentDate())); });
}

QString DocumentNumberFields::NumberSuffixText(int Index) {
    static const QString kForms[] = {QStringLiteral("yyyy"), QStringLiteral("yy"), QStringLiteral("MMyyyy"),
                                     QStringLiteral("MMyy")};
    return Index >= 0 && Index < 4 ? QDate::currentDate().toString(kForms[Index]) : QString();
}

void DocumentNumberFields::showSample() {
    sample_->setText(number_->text() + sign_.box()->currentText().left(1) +
                     NumberSuffixText(year_.box()->currentIndex()) + QStringLiteral(", od"));
}

void DocumentNumberFields::takeNext() {
    guarded(window_, [&] { number_->setText(QString::number(ChangeDocumentNumber(-1))); });
    showSample();
}

qint32 DocumentNumberFields::GetDocumentNumber(bool Write) {
    platform::Trap step;
    qint32 number = 0;
    step([&] { number = document_number::last(kindOf(openType_), Write); });
    if (step.failed()) {
        exclaim(window_,
                step.line() +
                    QStringLiteral("\nOccured in procedure GetDocumentNumber of Form frmPrintInvoiceEx"));
    }
    return number;
}

qint32 DocumentNumberFields::ChangeDocumentNumber(qint32 NewNumber) {
    // An optional, since the compiler in use drops what a small structure held before a call that throws.
    std::optional<document_number::Change> made;
    guarded(window_, [&] { made = document_number::change(kindOf(openType_), NewNumber); });
    const document_number::Change change = made.value_or(document_number::Change{});
    if (change.refusal != document_number::Refusal::None) {
        exclaim(window_, textOf(change.refusal));
    }
    return change.number;
}

void DocumentNumberFields::changeByHand() {
    const std::optional<QString> answer = platform::inputBox(
        QStringLiteral(
            "Mozete da unesete broj dokumenta koji zelite. Naravno, morate da budete jedini korisnik "
            "trenutno Online. Unesite broj koji je za jedan manji od onoga koji zelite da vam se "
            "pojavi na dokumentu:"),
        QStringLiteral("Novi broj dokumenta"), QStringLiteral("0"), window_);
    if (!answer || answer->isEmpty()) {
        return;
    }
    const std::optional<double> number = platform::readNumber(*answer);
    if (!number) {
        exclaim(window_,
                QStringLiteral("Broj dokumenta mora da bude korektna numericka vrednost, dakle ceo broj veci "
                               "ili jednak nuli."));
        return;
    }
    guarded(window_, [&] {
        const double whole = std::nearbyint(*number);
        if (std::abs(whole) > std::numeric_limits<qint32>::max()) {
            throw platform::RunError(6, QStringLiteral("Overflow"));
        }
        number_->setText(QString::number(ChangeDocumentNumber(static_cast<qint32>(whole))));
    });
    showSample();
}
