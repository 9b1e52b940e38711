#include "catalogue/frmKonfigInput.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include "catalogue/product_entry_fields.h"
#include "catalogue/product_hint.h"
#include "common/settings.h"
#include "common/window_help.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/keys.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

constexpr int kNoteRow = 5, kHintRow = 6, kButtonRow = 7;

}  // namespace

// Building --------------------------------------------------------------------------------------------------

frmKonfigInput::frmKonfigInput(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmKonfigInput"));
    setWindowTitle(QStringLiteral(" Proizvodjac - Grupa"));
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    grid->setContentsMargins(14, 14, 14, 12);
    fields_ = std::make_unique<ProductEntryFields>(this, grid);
    hint_ = std::make_unique<ProductHint>(this);
    grid->addWidget(hint_->label(), kHintRow, 0, 1, kProductFieldColumns);
    auto* row = new QHBoxLayout;
    buildButtons(row);
    grid->addLayout(row, kButtonRow, 0, 1, kProductFieldColumns);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(kNoteRow, 1);
    connectParts();
    explainByF1(this, ProductTopic);
}

frmKonfigInput::~frmKonfigInput() {
    Unload();
}

void frmKonfigInput::buildButtons(QHBoxLayout* row) {
    const char* const captions[] = {"Nastavi &Unos", "&Zavrsi Unos", "Otkazi"};
    row->setContentsMargins(0, 6, 0, 0);
    // Centred: where the first button is hidden, the others move over by half of its place.
    row->addStretch(1);
    QWidget* before = fields_->widget(ProductField::Note);
    for (int i = 0; i < Count; ++i) {
        auto* button = new QPushButton(QString::fromLatin1(captions[i]), this);
        button->setObjectName(arrayName("Command1", i));
        button->setAccessibleName(spokenCaption(button->text()));
        button->installEventFilter(this);
        connect(button, &QPushButton::clicked, this, [this, i] { press(static_cast<Button>(i)); });
        row->addWidget(button);
        setTabOrder(before, button);
        before = button;
        command_[static_cast<size_t>(i)] = button;
    }
    row->addStretch(1);
}

void frmKonfigInput::connectParts() {
    connect(fields_.get(), &ProductEntryFields::changed, this, [this](ProductField field) {
        if (!isFigure(field) && field != ProductField::Unit) {
            hint_->show(field, fields_->text(field));
        }
        updateButtons();
    });
    connect(fields_.get(), &ProductEntryFields::entered, this,
            [this](ProductField field) { hint_->show(field, fields_->text(field)); });
    platform::enterPressesButtons(this);
}

// Opening and closing ---------------------------------------------------------------------------------------

void frmKonfigInput::Display() {
    if (!loaded_) {
        load();
        loaded_ = true;
    }
    QWidget* name = fields_->widget(ProductField::Name);
    name->setFocus(Qt::OtherFocusReason);
    QMetaObject::invokeMethod(name, "selectAll");
    exec();
}

void frmKonfigInput::load() {
    moveToPlace(this, settings::text(settings::KonfigInputWindowData));
    {
        const QSignalBlocker quiet(fields_.get());
        fields_->units().fill(OpenMode == Search);  // a search need not ask for a unit
        showProduct();
    }
    updateButtons();
    dressForMode();
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

void frmKonfigInput::showProduct() {
    fields_->setText(ProductField::Name, Naziv);
    fields_->setText(ProductField::Description, Opis);
    fields_->setText(ProductField::Price, platform::textOfSingle(Cena));
    fields_->setText(ProductField::Stock, platform::textOfSingle(Stanje));
    fields_->setText(ProductField::Note, Napomena);
    fields_->setText(ProductField::Unit, JedinicaMere);
}

void frmKonfigInput::dressForMode() {
    const QString whose = Proizvodjac + QLatin1Char('/') + Grupa;
    command_[StoreAndGoOn]->setVisible(OpenMode == NewProduct);
    switch (OpenMode) {
        case ExistingProduct:
            command_[Store]->setText(QStringLiteral("Snimi"));
            setWindowTitle(whose + QStringLiteral(" - Postojeci Proizvod"));
            break;
        case Search:
            command_[Store]->setText(QStringLiteral("&Trazi"));
            setWindowTitle(QStringLiteral("Pretraga Proizvoda"));
            break;
        default:
            setWindowTitle(whose + QStringLiteral(" - Novi Proizvod"));
            break;
    }
    command_[Store]->setAccessibleName(spokenCaption(command_[Store]->text()));
    if (OpenMode != Search) {
        platform::keyPressesButton(QKeySequence(Qt::CTRL | Qt::Key_S), command_[Store]);
    }
}

// Buttons ---------------------------------------------------------------------------------------------------

void frmKonfigInput::updateButtons() {
    const bool complete = !fields_->text(ProductField::Name).trimmed().isEmpty() &&
                          platform::isNumeric(fields_->text(ProductField::Stock)) &&
                          fields_->units().isChosen();
    command_[Store]->setEnabled(complete);
    command_[StoreAndGoOn]->setEnabled(complete);
}

bool frmKonfigInput::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        hint_->clear();
    }
    // The focus has tried to leave for the button by now, and the person has been told: a button must not
    // take the window away from under a number that is still to be mended.
    if (event->type() == QEvent::MouseButtonPress && fields_->isHeld()) {
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmKonfigInput::press(Button button) {
    if (button == Cancel) {
        reject();
        return;
    }
    if (fields_->hasRefused()) {
        return;
    }
    Cancelled = false;
    ContinueInput = button == StoreAndGoOn;
    takeProduct();
    accept();
}

void frmKonfigInput::takeProduct() {
    Naziv = fields_->text(ProductField::Name).trimmed();
    Opis = fields_->text(ProductField::Description).trimmed();
    Napomena = fields_->text(ProductField::Note).trimmed();
    Cena = numberOf(fields_->text(ProductField::Price));
    Stanje = numberOf(fields_->text(ProductField::Stock));
    JedinicaMere = fields_->text(ProductField::Unit);
}

void frmKonfigInput::reject() {
    Cancelled = true;
    ContinueInput = false;
    QDialog::reject();
}
