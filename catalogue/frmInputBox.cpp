#include "catalogue/frmInputBox.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <array>
#include <optional>

#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_help.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/keys.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

constexpr size_t kQuantity = 0, kSerial = 1;
constexpr size_t kCapitals = 0, kAppend = 1;
constexpr size_t kConfirm = 0, kCancel = 1;
constexpr int kProductRow = 0, kFieldsRow = 1, kOptionsRow = 3, kButtonRow = 5;

const char* const kFieldCaptions[] = {"&Kolicina:", "&Serijski Broj:"};
const char* const kOptionCaptions[] = {"Koriguj &mala slova u velika", "&Upisan ser. br. dodaj na postojeci"};
const std::array<const settings::Setting*, 2> kOptions = {&settings::drawInput.MakeProperCase,
                                                          &settings::drawInput.AppendSerialNumber};
const char* const kButtonCaptions[] = {"OK", "Otkazi"};

}  // namespace

frmInputBox::frmInputBox(QWidget* parent) : QDialog(parent), product_(new QLabel(this)) {
    setObjectName(QStringLiteral("frmInputBox"));
    setWindowTitle(WindowCaption);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(14, 14, 14, 12);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(kButtonRow - 1, 1);
    buildProduct(grid);
    buildFields(grid);
    buildOptions(grid);
    buildButtons(grid);
    explainByF1(this, DrawTopic);
}

frmInputBox::~frmInputBox() {
    Unload();
}

// Behind the window stands a list of hundreds of products, and a number typed for the wrong one is stock
// lost.
void frmInputBox::buildProduct(QGridLayout* grid) {
    product_->setObjectName(QStringLiteral("Product"));
    product_->setTextFormat(Qt::PlainText);
    product_->setWordWrap(true);
    QFont bold = product_->font();
    bold.setBold(true);
    product_->setFont(bold);
    grid->addWidget(product_, kProductRow, 0, 1, 2);
}

void frmInputBox::buildFields(QGridLayout* grid) {
    for (size_t i = 0; i < text_.size(); ++i) {
        auto* field = new QLineEdit(this);
        field->setObjectName(arrayName("Text1", static_cast<int>(i)));
        auto* label = new QLabel(QString::fromLatin1(kFieldCaptions[i]), this);
        label->setObjectName(arrayName("Label1", static_cast<int>(i)));
        label->setBuddy(field);
        field->setAccessibleName(spokenCaption(label->text()));
        field->installEventFilter(this);
        grid->addWidget(label, kFieldsRow + static_cast<int>(i), 0);
        grid->addWidget(field, kFieldsRow + static_cast<int>(i), 1);
        text_[i] = field;
    }
    text_[kQuantity]->setAlignment(Qt::AlignRight);
    // Two serial numbers one behind the other can be read without moving the cursor.
    text_[kSerial]->setMinimumWidth(fontMetrics().averageCharWidth() * 36);
    connect(text_[kQuantity], &QLineEdit::textChanged, this, &frmInputBox::quantityChanged);
}

void frmInputBox::buildOptions(QGridLayout* grid) {
    for (size_t i = 0; i < check_.size(); ++i) {
        auto* box = new QCheckBox(QString::fromLatin1(kOptionCaptions[i]), this);
        box->setObjectName(arrayName("Check1", static_cast<int>(i)));
        box->setAccessibleName(spokenCaption(box->text()));
        box->setCursor(Qt::PointingHandCursor);
        box->installEventFilter(this);
        grid->addWidget(box, kOptionsRow + static_cast<int>(i), 1, Qt::AlignLeft | Qt::AlignTop);
        check_[i] = box;
    }
}

void frmInputBox::buildButtons(QGridLayout* grid) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 8, 0, 0);
    row->setSpacing(8);
    row->addStretch(1);
    for (size_t i = 0; i < command_.size(); ++i) {
        auto* button = new QPushButton(QString::fromLatin1(kButtonCaptions[i]), this);
        button->setObjectName(arrayName("Command1", static_cast<int>(i)));
        button->setAccessibleName(spokenCaption(button->text()));
        button->setCursor(Qt::PointingHandCursor);
        row->addWidget(button);
        command_[i] = button;
    }
    command_[kConfirm]->setDefault(true);
    grid->addLayout(row, kButtonRow, 0, 1, 2);
    connect(command_[kConfirm], &QPushButton::clicked, this, &frmInputBox::confirm);
    connect(command_[kCancel], &QPushButton::clicked, this, &frmInputBox::reject);
}

void frmInputBox::load() {
    product_->setText(ProductName);
    product_->setAccessibleName(ProductName);
    product_->setVisible(!ProductName.isEmpty());
    if (!loaded_) {
        adjustSize();
        moveToPlace(this, settings::text(settings::drawInput.WindowData));
        loaded_ = true;
    }
    for (size_t i = 0; i < check_.size(); ++i) {
        check_[i]->setChecked(settings::boolean(*kOptions[i]));
    }
    text_[kQuantity]->setText(platform::textOfSingle(Kolicina));
    text_[kSerial]->setText(SeriskiBroj);
    setWindowTitle(WindowCaption);
}

void frmInputBox::Display() {
    load();
    text_[kQuantity]->setFocus();
    text_[kQuantity]->selectAll();
    exec();
}

void frmInputBox::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    if (isMinimized()) {
        return;
    }
    platform::Trap step;  // a place that cannot be kept must not stop a product from being drawn
    step([&] { settings::setText(settings::drawInput.WindowData, placeOf(this)); });
}

void frmInputBox::quantityChanged() {
    const std::optional<float> quantity = platform::readSingle(text_[kQuantity]->text());
    command_[kConfirm]->setEnabled(quantity && *quantity >= 0);
}

void frmInputBox::confirm() {
    const std::optional<float> quantity = platform::readSingle(text_[kQuantity]->text());
    if (!quantity) {
        return;
    }
    cancelled_ = false;
    platform::Trap step;  // options that cannot be kept: the drawing itself still counts
    for (size_t i = 0; i < check_.size(); ++i) {
        const QString kept = check_[i]->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
        step([&] { settings::setText(*kOptions[i], kept); });
    }
    Kolicina = *quantity;
    if (check_[kCapitals]->isChecked()) {
        text_[kSerial]->setText(text_[kSerial]->text().toUpper());
    }
    SeriskiBroj = text_[kSerial]->text();
    append_ = check_[kAppend]->isChecked();
    accept();
}

void frmInputBox::reject() {
    cancelled_ = true;
    QDialog::reject();
}

bool frmInputBox::eventFilter(QObject* watched, QEvent* event) {
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (platform::isEnter(key)) {
            platform::pressTab(static_cast<QWidget*>(watched));
            return true;
        }
        if (field == text_[kQuantity] && platform::filterNumberKey(*field, key)) {
            return true;
        }
    }
    if (event->type() == QEvent::FocusIn && field) {
        // A click places the cursor after it has brought the focus; what was to be typed over must stay
        // selected then as well.
        if (static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason) {
            QMetaObject::invokeMethod(field, &QLineEdit::selectAll, Qt::QueuedConnection);
        } else {
            field->selectAll();
        }
    }
    return QDialog::eventFilter(watched, event);
}
