#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <cmath>
#include <limits>

#include "documents/document_number.h"
#include "documents/frmPrintInvoiceEx.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "documents/frmPrintInvoiceEx_tables.h"
#include "platform/controls/boxes.h"
#include "platform/controls/date_field.h"
#include "platform/controls/pictures.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"
#include "shell/settings.h"

using print_invoice::guarded;
using print_invoice::setting;

namespace {

constexpr char kTagProperty[] = "Tag";
constexpr char kImageProperty[] = "image";  // of a tab: "warning" or "normal"
constexpr int kPartiesTab = 1;
const QColor kDifferent(255, 0, 0);

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

bool frmPrintInvoiceEx::isOn(int check) const {
    return check_[static_cast<std::size_t>(check)]->isChecked();
}

QString frmPrintInvoiceEx::tag(const QLineEdit* field) const {
    return field->property(kTagProperty).toString();
}

void frmPrintInvoiceEx::setTag(QLineEdit* field, const QString& text) {
    field->setProperty(kTagProperty, text);
}

void frmPrintInvoiceEx::load() {
    loaded_ = true;
    loadPlace();
    guarded(this, [&] { command_[2]->setText(QString::number(GetDocumentNumber(false))); });
    setClientTags();
    loadGeneral();
    loadConditions();
    setWindowTitle(OpenType == Invoice ? QStringLiteral("Stampanje Racuna")
                                       : QStringLiteral("Stampanje Predracuna"));
    loadTexts();
    loadParties();
    numberFormChanged();
}

void frmPrintInvoiceEx::loadPlace() {
    guarded(this, [&] {
        adjustSize();
        moveToPlace(this, settings::text(setting("WindowData")));
    });
    guarded(this, [&] {
        const int index = settings::integer(setting("TabIndex"));
        if (index < 1 || index > tabs_->count())
            throw platform::RunError(35600, QStringLiteral("Index out of bounds"));
        tabs_->setCurrentIndex(index - 1);
    });
}

void frmPrintInvoiceEx::select(QComboBox* box, int index) {
    if (index < 0 || index >= box->count())
        throw platform::RunError(380, QStringLiteral("Invalid property value"));
    box->setCurrentIndex(index);
}

void frmPrintInvoiceEx::loadGeneral() {
    for (const print_invoice::ComboRow& row : print_invoice::kCombos) {
        QComboBox* box = combo_[static_cast<std::size_t>(row.index)];
        box->setCurrentIndex(row.usual);
        guarded(this, [&] { select(box, settings::integer(setting(row.key))); });
    }
    guarded(this, [&] { date_->setValue(QDate::currentDate()); });
    guarded(this, [&] { check_[0]->setChecked(settings::integer(setting("Slovima")) != 0); });
}

void frmPrintInvoiceEx::loadConditions() {
    for (const print_invoice::CheckRow& row : print_invoice::kChecked) {
        guarded(this, [&] {
            check_[static_cast<std::size_t>(row.index)]->setChecked(settings::integer(setting(row.key)) != 0);
        });
        guarded(this, [&] { checkClicked(row.index); });
    }
    if (OpenType != Invoice)
        return;
    // An invoice is for what has been paid and delivered: nothing is left to agree upon.
    for (int i = 1; i < kNote; ++i) {
        check_[static_cast<std::size_t>(i)]->setEnabled(false);
        text2_[static_cast<std::size_t>(2 * i - 1)]->setEnabled(false);
        text2_[static_cast<std::size_t>(2 * i)]->setEnabled(false);
    }
}

void frmPrintInvoiceEx::loadTexts() {
    for (const print_invoice::TextRow& row : print_invoice::kTexts) {
        QLineEdit* field = text2_[static_cast<std::size_t>(row.index)];
        setTag(field, QString::fromUtf8(row.tag));
        guarded(this, [&] { field->setText(settings::text(setting(row.key), tag(field))); });
        field->setCursorPosition(0);
    }
}

void frmPrintInvoiceEx::setClientTags() {
    const auto set = [&](int index, auto text) {
        guarded(this, [&] { setTag(text1_[static_cast<std::size_t>(index)], text()); });
    };
    set(kClientName, [&] {
        return view_.isFirm() ? view_.clientField(QStringLiteral("FirmName"))
                              : view_.clientField(QStringLiteral("Surname")) + QLatin1Char(' ') +
                                    view_.clientField(QStringLiteral("GivenName"));
    });
    set(kClientName + 1, [&] { return view_.clientField(QStringLiteral("Street")); });
    set(kClientName + 2, [&] {
        return view_.clientField(QStringLiteral("City")) + QStringLiteral(", ") +
               view_.clientField(QStringLiteral("ZIP"));
    });
    set(kClientPIB, [&] { return view_.isFirm() ? view_.clientField(QStringLiteral("PIDNo")) : QString(); });
    set(kOther, [] { return QString(); });
}

void frmPrintInvoiceEx::loadParties() {
    for (int i = 0; i < kFirmFields; ++i) {
        const settings::Setting& option =
            settings::find(QStringLiteral("Settings"), QLatin1String(print_invoice::kFirm[i]));
        guarded(this, [&] { setTag(text1_[static_cast<std::size_t>(i)], settings::scrambled(option)); });
    }
    const auto textOf = [this](int i) {
        const QString usual = tag(text1_[static_cast<std::size_t>(i)]);
        if (i < kFirmFields)
            return settings::scrambled(setting(print_invoice::kFirm[i]), usual);
        return i == kOther ? settings::text(setting(print_invoice::kOstalo)) : usual;
    };
    for (int i = 0; i < kFields; ++i) {
        QLineEdit* field = text1_[static_cast<std::size_t>(i)];
        guarded(this, [&] { field->setText(textOf(i)); });
        field->setCursorPosition(0);
        guarded(this, [&] { fieldChanged(i); });
    }
}

void frmPrintInvoiceEx::setDefaults() {
    const auto takeTag = [this](QLineEdit* field) {
        field->setText(tag(field));
        field->setCursorPosition(0);
    };
    if (tabs_->currentIndex() == kPartiesTab) {
        for (QLineEdit* field : text1_)
            takeTag(field);
        return;
    }
    for (const print_invoice::ComboRow& row : print_invoice::kCombos)
        combo_[static_cast<std::size_t>(row.index)]->setCurrentIndex(row.usual);
    for (QLineEdit* field : text2_)
        takeTag(field);
    check_[0]->setChecked(false);
    const auto turnOn = [this](int index) {
        QCheckBox* check = check_[static_cast<std::size_t>(index)];
        if (check->isEnabled() || index == kFirmsFooter)
            check->setChecked(true);
    };
    for (const int index : {1, 2, 3, 4, kNote, kFirmsFooter, kStamp, kFooter})
        turnOn(index);
}

void frmPrintInvoiceEx::checkClicked(int index) {
    const auto enable = [this](int entry, bool on) {
        text2_[static_cast<std::size_t>(entry)]->setEnabled(on);
    };
    if (index < kNote && OpenType == Invoice)
        return;
    if (index <= kNote) {
        enable(2 * index - 1, isOn(index));
        enable(2 * index, isOn(index));
    } else if (index == kStamp) {
        enable(kStampText, isOn(kStamp));
    } else if (index == kFooter) {
        enable(kFooterText, isOn(kFooter) && !isOn(kFirmsFooter));
        check_[kFirmsFooter]->setEnabled(isOn(kFooter));
    } else {
        enable(kFooterText, !isOn(kFirmsFooter));
    }
}

// Somebody may have typed another client's name by mistake, or for a reason: it is shown, and nothing more.
void frmPrintInvoiceEx::fieldChanged(int index) {
    if (index >= kCompared)
        return;
    const auto differs = [this](int field) {
        const QLineEdit* text = text1_[static_cast<std::size_t>(field)];
        return text->text() != tag(text);
    };
    QPalette colours;
    if (differs(index))
        colours.setColor(QPalette::WindowText, kDifferent);
    label1_[static_cast<std::size_t>(index)]->setPalette(colours);

    bool any = false;
    for (int i = 0; i < kCompared; ++i)
        any = any || differs(i);
    tabs_->setTabIcon(kPartiesTab, any ? platform::icon(QStringLiteral("Warning")) : QIcon());
    tabs_->widget(kPartiesTab)
        ->setProperty(kImageProperty, any ? QStringLiteral("warning") : QStringLiteral("normal"));
}

void frmPrintInvoiceEx::checkCosts() {
    const std::optional<double> percent = platform::readNumber(text2_[0]->text());
    if (!percent || *percent < 0 || *percent >= 100)
        text2_[0]->setText(QStringLiteral("0"));
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
    if (!answer || answer->isEmpty())
        return;
    const std::optional<double> number = platform::readNumber(*answer);
    if (!number) {
        exclaim(QStringLiteral("Broj dokumenta mora da bude korektna numericka vrednost, dakle ceo broj veci "
                               "ili jednak nuli."),
                this);
        return;
    }
    guarded(this, [&] {
        const double whole = std::nearbyint(*number);
        if (std::abs(whole) > std::numeric_limits<qint32>::max())
            throw platform::RunError(6, QStringLiteral("Overflow"));
        command_[2]->setText(QString::number(ChangeDocumentNumber(static_cast<qint32>(whole))));
    });
    numberFormChanged();
}
