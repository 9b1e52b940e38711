#include "records/frmDetails.h"

#include <QDate>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>

#include "common/help.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/date_field.h"
#include "platform/controls/link_label.h"
#include "platform/system/dates.h"
#include "platform/system/trap.h"

namespace {

struct FieldPlace {
    int index;
    const char* label;
    int row, column;  // of the label; the field stands to its right
};
constexpr FieldPlace kPlaces[] = {
    {0, "Service &started on:", 0, 0},
    {1, "Service &to be finished till:", 1, 0},
    {2, "Service &finished on:", 2, 0},
    {5, "&Price:", 0, 4},
    {7, "P&aid:", 1, 4},
    {6, "&Discount:", 2, 4},
    {8, "&GST:", 3, 4},
};
constexpr int kGap = 3, kExtra = 6, kForPaymentRow = 4, kTypesRow = 5, kListRow = 6, kButtonRow = 7;

// In the order that an entry is made in: when, for how much, what.
constexpr int kTabOrder[] = {0, 1, 2, 5, 7, 6, 8};

constexpr int kFirstFieldTopic = 301;  // Text1(0) to Text1(8): 301 to 309
constexpr int kListTopic = 310;
constexpr int kFirstButtonTopic = 311;   // Command1(0) to Command1(2)
constexpr int kFirstPictureTopic = 314;  // Image1(0) to Image1(2)
constexpr int kDeselectTopic = 317;
constexpr int kPriceListTopic = 318;
constexpr int kWindowTopic = 7002;
constexpr char kTopicProperty[] = "HelpContextID";

QString spoken(QString label) {
    return label.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

}  // namespace

frmDetails::frmDetails(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmDetails"));
    setWindowTitle(QStringLiteral("Service"));
    data_.started = platform::formatShortDate(QDate::currentDate());

    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    grid->setContentsMargins(14, 14, 14, 12);
    buildFields(grid);
    buildTypes(grid);
    buildButtons(grid);
    grid->setColumnMinimumWidth(kGap, 20);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(5, 1);
    grid->setRowStretch(kListRow, 1);

    picker_ = new platform::DateField(true, this);
    picker_->setObjectName(QStringLiteral("DTPicker1"));
    picker_->setAccessibleName(QStringLiteral("Date"));
    picker_->hide();
    for (int i = 0; i < kDates; ++i) {
        text_[static_cast<size_t>(i)]->setMinimumWidth(picker_->sizeHint().width());
        text_[static_cast<size_t>(i)]->setMinimumHeight(picker_->sizeHint().height());
    }
    connectControls();
    setContextNumbers();
    setTabChain();
}

frmDetails::~frmDetails() {
    Unload();
}

void frmDetails::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    platform::Trap step;  // a place that cannot be kept must not disturb the end of the program
    step([&] { settings::setText(settings::DetailsPosition, placeOf(this)); });
}

QLabel* frmDetails::makeLabel(int index, const QString& text, QWidget* field) {
    auto* label = new QLabel(text, this);
    label->setObjectName(arrayName("Label1", index));
    label->setBuddy(field);
    label->installEventFilter(this);
    field->setAccessibleName(spoken(text));
    return label;
}

void frmDetails::buildFields(QGridLayout* grid) {
    for (const FieldPlace& place : kPlaces) {
        auto* field = new QLineEdit(this);
        field->setObjectName(arrayName("Text1", place.index));
        text_[static_cast<size_t>(place.index)] = field;
        grid->addWidget(makeLabel(place.index, QString::fromLatin1(place.label), field), place.row,
                        place.column);
        grid->addWidget(field, place.row, place.column + 1);
        if (place.index < kDates) {
            buildDateButton(grid, place.index, place.row);
        } else {
            field->setAlignment(Qt::AlignRight);
        }
    }
    currency_ = new QLabel(this);
    currency_->setObjectName(QStringLiteral("Label4"));
    grid->addWidget(currency_, 0, kExtra);
    priceList_ = new platform::LinkLabel(QStringLiteral("View price list"), this);
    priceList_->setObjectName(QStringLiteral("Label3"));
    grid->addWidget(priceList_, 1, kExtra);

    auto* forPayment = new QLineEdit(this);
    // Wide enough for the largest bill that this shop has written in dinars.
    forPayment->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("-00,000,000.00")) + 20);
    forPayment->setObjectName(arrayName("Text1", kForPayment));
    forPayment->setReadOnly(true);
    forPayment->setFocusPolicy(Qt::NoFocus);
    forPayment->setAlignment(Qt::AlignRight);
    QPalette still = forPayment->palette();
    still.setColor(QPalette::Base, still.color(QPalette::Window));
    forPayment->setPalette(still);
    text_[kForPayment] = forPayment;
    grid->addWidget(forPayment, kForPaymentRow, 5);
    grid->addWidget(makeLabel(kForPayment, QStringLiteral("<--- For payment"), forPayment), kForPaymentRow,
                    kExtra);

    comments_ = new QPlainTextEdit(this);
    comments_->setObjectName(arrayName("Text1", kComments));
    comments_->setTabChangesFocus(true);
    comments_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    comments_->setMinimumHeight(fontMetrics().height() * 8);
    grid->addWidget(makeLabel(kComments, QStringLiteral("Servi&ce description:"), comments_), 3, 0, 1, 3,
                    Qt::AlignBottom | Qt::AlignLeft);
    grid->addWidget(comments_, kForPaymentRow, 0, 3, 3);
}

void frmDetails::buildDateButton(QGridLayout* grid, int index, int row) {
    auto* button = new QToolButton(this);
    button->setObjectName(arrayName("Image1", index));
    button->setAccessibleName(QStringLiteral("Pick: ") + text_[static_cast<size_t>(index)]->accessibleName());
    button->setToolTip(QStringLiteral("Alt+Down"));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    image_[static_cast<size_t>(index)] = button;
    grid->addWidget(button, row, 2);

    // The picker lies over the field and needs its place.
    QLineEdit* field = text_[static_cast<size_t>(index)];
    QSizePolicy policy = field->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    field->setSizePolicy(policy);
}

void frmDetails::buildTypes(QGridLayout* grid) {
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("List1"));
    list_->setSelectionMode(QAbstractItemView::MultiSelection);
    list_->setMinimumWidth(fontMetrics().averageCharWidth() * 34);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    grid->addWidget(makeLabel(kTypesLabel, QStringLiteral("Ser&vice type:"), list_), kTypesRow, 4, 1, 2);
    deselect_ = new platform::LinkLabel(QStringLiteral("Deselect all items"), this);
    deselect_->setObjectName(QStringLiteral("Label2"));
    grid->addWidget(deselect_, kTypesRow, kExtra, Qt::AlignRight);
    grid->addWidget(list_, kListRow, 4, 1, 3);
}

void frmDetails::buildButtons(QGridLayout* grid) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 6, 0, 0);
    row->addStretch(1);
    const char* const captions[] = {"OK", "Cancel", "&Help"};
    for (int i = 0; i < 3; ++i) {
        auto* button = new QPushButton(QString::fromLatin1(captions[i]), this);
        button->setObjectName(arrayName("Command1", i));
        button->setAccessibleName(spoken(button->text()));
        row->addWidget(button);
        command_[static_cast<size_t>(i)] = button;
    }
    command_[0]->setDefault(true);
    grid->addLayout(row, kButtonRow, 0, 1, kExtra + 1);
}

void frmDetails::connectControls() {
    for (int i = 0; i < kFields; ++i) {
        fieldWidget(i)->installEventFilter(this);
        if (QLineEdit* field = text_[static_cast<size_t>(i)]) {
            connect(field, &QLineEdit::textChanged, this, [this, i] { fieldChanged(i); });
        }
    }
    for (int i = 0; i < kDates; ++i) {
        connect(image_[static_cast<size_t>(i)], &QToolButton::clicked, this, [this, i] { openPicker(i); });
    }
    connect(picker_, &platform::DateField::focusLeft, this, [this] {
        if (!openingPicker_) {
            commitPicker();
        }
    });
    connect(deselect_, &platform::LinkLabel::clicked, this, [this] { selectTypes(Selection::None); });
    connect(priceList_, &platform::LinkLabel::clicked, this, &frmDetails::viewPriceList);
    connect(command_[0], &QPushButton::clicked, this, &frmDetails::okClicked);
    connect(command_[1], &QPushButton::clicked, this, &frmDetails::reject);
    connect(command_[2], &QPushButton::clicked, this, [] { showHelp(kWindowTopic); });
}

void frmDetails::setContextNumbers() {
    for (int i = 0; i < kFields; ++i) {
        fieldWidget(i)->setProperty(kTopicProperty, kFirstFieldTopic + i);
    }
    list_->setProperty(kTopicProperty, kListTopic);
    for (int i = 0; i < 3; ++i) {
        command_[static_cast<size_t>(i)]->setProperty(kTopicProperty, kFirstButtonTopic + i);
        image_[static_cast<size_t>(i)]->setProperty(kTopicProperty, kFirstPictureTopic + i);
    }
    deselect_->setProperty(kTopicProperty, kDeselectTopic);
    priceList_->setProperty(kTopicProperty, kPriceListTopic);
}

void frmDetails::setTabChain() {
    QWidget* last = nullptr;
    const auto append = [&](QWidget* widget) {
        if (last) {
            setTabOrder(last, widget);
        }
        last = widget;
    };
    for (int index : kTabOrder) {
        append(fieldWidget(index));
    }
    append(list_);
    append(comments_);
    for (QPushButton* button : command_) {
        append(button);
    }
    append(deselect_);
    append(priceList_);
}

void frmDetails::Display(int mode) {
    if (!loaded_) {
        moveToPlace(this, settings::text(settings::DetailsPosition));
        loaded_ = true;
    }
    fillTypeList();
    loading_ = true;
    mode_ = mode;
    if (mode == EditMode) {
        fillFields();
    } else {
        fillEmpty();
    }
    currency_->setText(CeneDinarske ? QStringLiteral("DIN") : QStringLiteral("EUR"));
    loading_ = false;
    for (int index : {0, 1, 2, kPrice}) {
        fieldChanged(index);
    }
    text_[0]->setFocus();
    exec();
}

void frmDetails::fillFields() {
    const QString* const values[kFields] = {&data_.started,  &data_.toBeFinished, &data_.finished,
                                            nullptr,         &data_.comments,     &data_.price,
                                            &data_.discount, &data_.paid,         &data_.gst};
    for (int i = 0; i < kFields; ++i) {
        if (values[i]) {
            setFieldText(i, *values[i]);
        }
    }
    selectTypes(Selection::Given, data_.types);
}

void frmDetails::fillEmpty() {
    setFieldText(0, platform::formatShortDate(QDate::currentDate()));
    for (int i = 1; i < kGST; ++i) {
        setFieldText(i, QString());
    }
    picker_->setValue(QDate::currentDate());
    setFieldText(kGST, defaultGST_ == 0 ? QString() : QString::number(defaultGST_));
    selectTypes(Selection::None);
}

void frmDetails::fillTypeList() {
    list_->clear();
    if (allTypes_.size() > 1) {
        list_->addItems(allTypes_.mid(1));
    } else {
        list_->addItem(QStringLiteral("Other services"));
    }
}

void frmDetails::selectTypes(Selection selection, const QString& positions) {
    if (allTypes_.size() <= 1) {
        return;
    }
    const auto select = [this](int line, bool on) {
        if (QListWidgetItem* item = list_->item(line)) {
            item->setSelected(on);
        }
    };
    list_->setUpdatesEnabled(false);
    for (int line = 0; line < list_->count(); ++line) {
        select(line, selection == Selection::All);
    }
    switch (selection) {
        case Selection::All:
            select(0, false);
            break;
        case Selection::None:
            select(0, true);
            break;
        case Selection::Given:
            for (const QString& position : positions.split(QLatin1Char('|'))) {
                select(position.toInt() - 1, true);
            }
            break;
    }
    list_->scrollToTop();
    list_->setUpdatesEnabled(true);
}

QWidget* frmDetails::fieldWidget(int index) const {
    return index == kComments ? static_cast<QWidget*>(comments_) : text_[static_cast<size_t>(index)];
}

QString frmDetails::fieldText(int index) const {
    return index == kComments ? comments_->toPlainText() : text_[static_cast<size_t>(index)]->text();
}

void frmDetails::setFieldText(int index, const QString& text) {
    if (index == kComments) {
        comments_->setPlainText(text);
    } else {
        text_[static_cast<size_t>(index)]->setText(text);
    }
}

int frmDetails::helpContextOf(const QWidget* widget) const {
    for (; widget && widget != this; widget = widget->parentWidget()) {
        if (widget == picker_) {
            return kFirstFieldTopic + openField_;
        }
        if (const int topic = widget->property(kTopicProperty).toInt()) {
            return topic;
        }
    }
    return kWindowTopic;
}

void frmDetails::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        showHelp(helpContextOf(focusWidget()));
        return;
    }
    QDialog::keyPressEvent(event);
}

void frmDetails::reject() {
    closePicker();
    cancelled_ = true;
    WinHelp(helpFile(), HELP_QUIT);
    QDialog::reject();
}
