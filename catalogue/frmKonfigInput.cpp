#include "catalogue/frmKonfigInput.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTextCursor>
#include <QTimer>

#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "data/session.h"
#include "platform/controls/boxes.h"
#include "platform/controls/keys.h"
#include "platform/dao/dao.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

constexpr int kLimit = 255;  // characters, as the products' table holds them

struct FieldPlace {
    const char* label;
    const char* hint;
    const char* refusal;  // what a text that is no number is called; nullptr: not a number field
    int row, column;      // of the label; the field stands to its right, the note below
};
constexpr FieldPlace kPlaces[] = {
    {"&Naziv:", "Naziv proizvoda.", nullptr, 0, 0},
    {"&Opis:", "Detaljniji opis komponente.", nullptr, 1, 0},
    {"&Cena [EUR]:", "Cena komponente u EUR.", "Cena proizvoda", 2, 0},
    {"&Stanje:", "Raspoloziva kolicina komponente u magacinu.", "Kolicina proizvoda", 2, 2},
    {"N&apomena:", "Dodatne napomene vezane za komponentu.", nullptr, 4, 0},
    {"&Jedinica mere:", nullptr, nullptr, 3, 0},
};
constexpr const char* kNameWanted = "Obavezno upisite naziv proizvoda!";
constexpr const char* kNoteLabelInside = "N&apomena (Ctrl+Enter za novi red):";
constexpr int kNoteRow = 5, kHintRow = 6, kButtonRow = 7, kColumns = 4;

QString spoken(QString label) {
    return label.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

const FieldPlace& placeFor(int index) {
    return kPlaces[static_cast<size_t>(index)];
}

bool isNumberField(int index) {
    return placeFor(index).refusal != nullptr;
}

}  // namespace

// Building --------------------------------------------------------------------------------------------------

frmKonfigInput::frmKonfigInput(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmKonfigInput"));
    setWindowTitle(QStringLiteral(" Proizvodjac - Grupa"));
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    grid->setContentsMargins(14, 14, 14, 12);
    buildFields(grid);

    hint_ = new QLabel(this);
    hint_->setObjectName(QStringLiteral("Label2"));
    hint_->setTextFormat(Qt::PlainText);
    // The line stands empty at times; the window must not grow and shrink with it.
    hint_->setMinimumHeight(hint_->fontMetrics().height() + 6);
    const QString longest = QStringLiteral("Max. 255 karaktera - jos je 255 preostalo. ") +
                            QString::fromLatin1(placeFor(kNote).hint);
    hint_->setMinimumWidth(hint_->fontMetrics().horizontalAdvance(longest) + 8);
    grid->addWidget(hint_, kHintRow, 0, 1, kColumns);

    auto* row = new QHBoxLayout;
    buildButtons(row);
    grid->addLayout(row, kButtonRow, 0, 1, kColumns);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(kNoteRow, 1);
    connectControls();
}

frmKonfigInput::~frmKonfigInput() {
    Unload();
}

void frmKonfigInput::Unload() {
    if (!loaded_ || unloaded_) {
        return;
    }
    unloaded_ = true;
    if (isMinimized()) {
        return;
    }
    platform::Trap step;  // a place that cannot be kept must not disturb the entry of products
    step([&] { settings::setText(settings::KonfigInputWindowData, placeOf(this)); });
}

QLabel* frmKonfigInput::makeLabel(int index, const QString& text, QWidget* field) {
    auto* label = new QLabel(text, this);
    label->setObjectName(arrayName("Label1", index));
    label->setBuddy(field);
    QFont bold = label->font();
    bold.setBold(true);
    // Room for the bold form, so that the fields stand still while the focus walks over them.
    label->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(spoken(text) + QLatin1Char(':')) + 4);
    field->setAccessibleName(spoken(text));
    label_[static_cast<size_t>(index)] = label;
    return label;
}

void frmKonfigInput::buildFields(QGridLayout* grid) {
    for (int i = 0; i <= kUnit; ++i) {
        const FieldPlace& place = placeFor(i);
        if (i == kNote) {
            note_ = new QPlainTextEdit(this);
            note_->setTabChangesFocus(true);
            note_->setMinimumHeight(fontMetrics().height() * 5);
        } else if (i == kUnit) {
            units_ = new QComboBox(this);
        } else {
            text_[static_cast<size_t>(i)] = new QLineEdit(this);
        }
        QWidget* field = fieldWidget(i);
        field->setObjectName(i == kUnit ? QStringLiteral("Combo1") : arrayName("Text1", i));
        QLabel* label = makeLabel(i, QString::fromLatin1(place.label), field);
        if (i == kNote) {
            grid->addWidget(label, place.row, 0, 1, kColumns);
            grid->addWidget(field, kNoteRow, 0, 1, kColumns);
            continue;
        }
        grid->addWidget(label, place.row, place.column);
        const bool isWide = i == kName || i == kDescription;
        grid->addWidget(field, place.row, place.column + 1, 1, isWide ? kColumns - 1 : 1);
        if (isNumberField(i)) {
            text_[static_cast<size_t>(i)]->setAlignment(Qt::AlignRight);
        }
    }
    text_[kName]->setMaxLength(kLimit);
    text_[kDescription]->setMaxLength(kLimit);
    const int order[] = {kName, kDescription, kPrice, kStock, kUnit, kNote};
    for (size_t i = 1; i < std::size(order); ++i) {
        setTabOrder(fieldWidget(order[i - 1]), fieldWidget(order[i]));
    }
}

void frmKonfigInput::buildButtons(QHBoxLayout* row) {
    const char* const captions[] = {"Nastavi &Unos", "&Zavrsi Unos", "Otkazi"};
    row->setContentsMargins(0, 6, 0, 0);
    // Centred: where the first button is hidden, the others move over by half of its place.
    row->addStretch(1);
    QWidget* before = note_;
    for (int i = 0; i < kButtons; ++i) {
        auto* button = new QPushButton(QString::fromLatin1(captions[i]), this);
        button->setObjectName(arrayName("Command1", i));
        button->setAccessibleName(spoken(button->text()));
        row->addWidget(button);
        setTabOrder(before, button);
        before = button;
        command_[static_cast<size_t>(i)] = button;
    }
    row->addStretch(1);
}

void frmKonfigInput::connectControls() {
    for (int i = 0; i <= kUnit; ++i) {
        fieldWidget(i)->installEventFilter(this);
        if (i < kFields && text_[static_cast<size_t>(i)] != nullptr) {
            connect(text_[static_cast<size_t>(i)], &QLineEdit::textChanged, this,
                    [this, i] { fieldChanged(i); });
        }
    }
    connect(note_, &QPlainTextEdit::textChanged, this, [this] {
        cutNote();
        fieldChanged(kNote);
    });
    connect(units_, &QComboBox::currentIndexChanged, this, [this] { updateButtons(); });
    for (int i = 0; i < kButtons; ++i) {
        command_[static_cast<size_t>(i)]->installEventFilter(this);
        connect(command_[static_cast<size_t>(i)], &QPushButton::clicked, this, [this, i] { store(i); });
    }
    platform::enterPressesButtons(this);
}

// Filling ---------------------------------------------------------------------------------------------------

void frmKonfigInput::Display() {
    if (!loaded_) {
        load();
        loaded_ = true;
    }
    text_[kName]->setFocus(Qt::OtherFocusReason);
    text_[kName]->selectAll();
    exec();
}

void frmKonfigInput::load() {
    moveToPlace(this, settings::text(settings::KonfigInputWindowData));
    const QScopedValueRollback loading(loading_, true);
    fillUnits();
    fillFields();
    updateButtons();
    dressForMode();
}

// Without a password: the catalogue that opens this window holds the file open with the right one.
void frmKonfigInput::fillUnits() {
    platform::Trap step;
    dao::Database database;
    dao::Recordset rows;
    units_->clear();
    step([&] { database = dao::DBEngine::OpenDatabase(databasePath().toStdString()); });
    if (!step.failed()) {
        step([&] { rows = database.OpenRecordset("JM", dao::dbOpenDynaset); });
    }
    if (rows) {
        addUnits(rows, step);
    }
    step([&] { rows.Close(); });
    step([&] { database.Close(); });
    if (step.failed()) {
        platform::showBox(
            {QStringLiteral("Neocekivana greska prilikom popunjavanja Combo box-a jedinicama mera.\n\n") +
                 step.line(),
             GetResString(1), platform::BoxIcon::Exclamation},
            this);
    }
}

// A unit that somebody deletes meanwhile costs its own line only.
void frmKonfigInput::addUnits(dao::Recordset& rows, platform::Trap& step) {
    bool goesOn = false;
    step([&] { goesOn = !rows.EOF(); });
    if (goesOn && OpenMode == Search) {
        units_->addItem(QString(), -1);  // a search need not ask for a unit
    }
    while (goesOn) {
        step([&] {
            const dao::Value name = rows["Naziv"];
            units_->addItem(name.isNull() ? QString() : QString::fromStdString(name.asText()),
                            rows["AID"].asLong());
        });
        goesOn = false;
        step([&] {
            rows.MoveNext();
            goesOn = !rows.EOF() && step.number() != dao::errLocked;
        });
    }
    if (units_->count() > 0) {
        units_->setCurrentIndex(0);
    }
}

void frmKonfigInput::fillFields() {
    text_[kName]->setText(Naziv);
    text_[kDescription]->setText(Opis);
    text_[kPrice]->setText(platform::textOfSingle(Cena));
    text_[kStock]->setText(platform::textOfSingle(Stanje));
    note_->setPlainText(Napomena);
    for (int i = 0; i < kFields; ++i) {
        if (text_[static_cast<size_t>(i)] != nullptr) {
            text_[static_cast<size_t>(i)]->setCursorPosition(0);
        }
    }
    int found = -1;
    for (int i = 0; i < units_->count() && found < 0; ++i) {
        if (units_->itemText(i).left(JedinicaMere.size()).compare(JedinicaMere, Qt::CaseInsensitive) == 0) {
            found = i;
        }
    }
    units_->setCurrentIndex(found);
}

void frmKonfigInput::dressForMode() {
    const QString whose = Proizvodjac + QLatin1Char('/') + Grupa;
    command_[kStoreAndGoOn]->setVisible(OpenMode == NewProduct);
    switch (OpenMode) {
        case ExistingProduct:
            command_[kStore]->setText(QStringLiteral("Snimi"));
            setWindowTitle(whose + QStringLiteral(" - Postojeci Proizvod"));
            break;
        case Search:
            command_[kStore]->setText(QStringLiteral("&Trazi"));
            setWindowTitle(QStringLiteral("Pretraga Proizvoda"));
            break;
        default:
            setWindowTitle(whose + QStringLiteral(" - Novi Proizvod"));
            break;
    }
    command_[kStore]->setAccessibleName(spoken(command_[kStore]->text()));
}

// What is typed ---------------------------------------------------------------------------------------------

QWidget* frmKonfigInput::fieldWidget(int index) const {
    if (index == kUnit) {
        return units_;
    }
    if (index == kNote) {
        return note_;
    }
    return text_[static_cast<size_t>(index)];
}

int frmKonfigInput::fieldOf(const QObject* widget) const {
    for (int i = 0; i <= kUnit; ++i) {
        if (widget == fieldWidget(i)) {
            return i;
        }
    }
    return -1;
}

QString frmKonfigInput::fieldText(int index) const {
    return index == kNote ? note_->toPlainText() : text_[static_cast<size_t>(index)]->text();
}

// Of a text that is too long the part that was put in last gives way, as in a field of one line: the cursor
// stands behind it.
void frmKonfigInput::cutNote() {
    const auto length = static_cast<int>(note_->toPlainText().size());
    if (length <= kLimit) {
        return;
    }
    const int tooMany = length - kLimit;
    const int end = note_->textCursor().position() >= tooMany ? note_->textCursor().position() : length;
    QTextCursor cut(note_->document());
    cut.joinPreviousEditBlock();
    cut.setPosition(end - tooMany);
    cut.setPosition(end, QTextCursor::KeepAnchor);
    cut.removeSelectedText();
    cut.endEditBlock();
}

void frmKonfigInput::fieldChanged(int index) {
    if (loading_) {
        return;
    }
    if (!isNumberField(index)) {
        showHint(index);
    }
    updateButtons();
}

void frmKonfigInput::updateButtons() {
    const bool complete = !fieldText(kName).trimmed().isEmpty() && platform::isNumeric(fieldText(kStock)) &&
                          units_->currentIndex() >= 0;
    command_[kStore]->setEnabled(complete);
    command_[kStoreAndGoOn]->setEnabled(complete);
}

void frmKonfigInput::showHint(int index) {
    const QString text = fieldText(index);
    QString hint = QString::fromLatin1(placeFor(index).hint);
    if (isNumberField(index)) {
        if (hint_->text() != hint) {
            hint_->setText(hint);
        }
        return;
    }
    if (index == kName && text.isEmpty()) {
        hint = QString::fromLatin1(kNameWanted);
    }
    hint_->setText(QStringLiteral("Max. %1 karaktera - jos je %2 preostalo. %3")
                       .arg(kLimit)
                       .arg(kLimit - text.size())
                       .arg(hint));
}

bool frmKonfigInput::eventFilter(QObject* watched, QEvent* event) {
    const int field = fieldOf(watched);
    switch (event->type()) {
        case QEvent::KeyPress:
            if (field >= 0 && filterKey(field, *static_cast<QKeyEvent*>(event))) {
                return true;
            }
            break;
        case QEvent::FocusIn:
            if (field >= 0) {
                entered(field, static_cast<QFocusEvent*>(event)->reason());
            }
            break;
        case QEvent::FocusOut:
            if (field >= 0) {
                left(field, static_cast<QFocusEvent*>(event)->reason());
            } else {
                hint_->clear();
            }
            break;
        case QEvent::MouseButtonPress:
            // The focus has tried to leave for the button by now, and the user has been told: a button must
            // not take the window away from under a number that is still to be mended.
            if (field < 0 && focusedNumberField() >= 0 &&
                !platform::readSingle(fieldText(focusedNumberField()))) {
                return true;
            }
            break;
        default:
            break;
    }
    return QDialog::eventFilter(watched, event);
}

void frmKonfigInput::entered(int index, Qt::FocusReason reason) {
    QLabel* label = label_[static_cast<size_t>(index)];
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    if (index == kUnit) {
        return;
    }
    if (index == kNote) {
        label->setText(QString::fromLatin1(kNoteLabelInside));
    }
    showHint(index);
    if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason) {
        return;
    }
    const auto selectAll = [field = fieldWidget(index)] { QMetaObject::invokeMethod(field, "selectAll"); };
    // A click sets the cursor after it has brought the focus, so the selecting waits until it is done.
    if (reason == Qt::MouseFocusReason) {
        QTimer::singleShot(0, fieldWidget(index), selectAll);
    } else {
        selectAll();
    }
}

void frmKonfigInput::left(int index, Qt::FocusReason reason) {
    // A menu of the field, or another program in front: nobody has left.
    if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason) {
        return;
    }
    QLabel* label = label_[static_cast<size_t>(index)];
    QFont plain = label->font();
    plain.setBold(false);
    label->setFont(plain);
    if (index == kNote) {
        label->setText(QString::fromLatin1(placeFor(kNote).label));
    }
    if (isVisible() && isNumberField(index) && isRefused(index)) {
        fieldWidget(index)->setFocus(Qt::OtherFocusReason);
    }
}

int frmKonfigInput::focusedNumberField() const {
    const int field = fieldOf(focusWidget());
    return field >= 0 && isNumberField(field) ? field : -1;
}

// True where the text is no number, and the user has been told so.
bool frmKonfigInput::isRefused(int index) {
    QLineEdit* field = text_[static_cast<size_t>(index)];
    if (field->text().isEmpty()) {
        field->setText(QStringLiteral("0"));
    }
    if (platform::readSingle(field->text())) {
        return false;
    }
    if (refusing_) {
        return true;
    }
    const QScopedValueRollback refusing(refusing_, true);
    platform::showBox({QString::fromLatin1(placeFor(index).refusal) +
                           QStringLiteral(" mora da bude ispravna numericka vrednost. Proverite unos."),
                       GetResString(1), platform::BoxIcon::Exclamation},
                      this);
    return true;
}

bool frmKonfigInput::filterKey(int index, const QKeyEvent& key) {
    const bool isAnyEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isAnyEnter && index == kNote && key.modifiers().testFlag(Qt::ControlModifier)) {
        note_->insertPlainText(QStringLiteral("\n"));
        return true;
    }
    if (isAnyEnter) {
        platform::pressTab(fieldWidget(index));
        return true;
    }
    return isNumberField(index) &&
           platform::filterNumberKey(*text_[static_cast<size_t>(index)], key, {.letterNCounts = true});
}

// Buttons ---------------------------------------------------------------------------------------------------

void frmKonfigInput::store(int button) {
    if (button == kCancel) {
        reject();
        return;
    }
    for (const int index : {kPrice, kStock}) {
        if (isRefused(index)) {
            fieldWidget(index)->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
    Cancelled = false;
    ContinueInput = button == kStoreAndGoOn;
    Naziv = fieldText(kName).trimmed();
    Opis = fieldText(kDescription).trimmed();
    Napomena = fieldText(kNote).trimmed();
    Cena = platform::readSingle(fieldText(kPrice)).value_or(0);
    Stanje = platform::readSingle(fieldText(kStock)).value_or(0);
    JedinicaMere = units_->currentText();
    accept();
}

void frmKonfigInput::reject() {
    Cancelled = true;
    ContinueInput = false;
    QDialog::reject();
}
