#include "documents/frmPrintInvoiceEx.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "documents/ActiveReport2.h"
#include "documents/document_conditions.h"
#include "documents/document_parties.h"
#include "documents/frmPrintInvoiceEx_tables.h"
#include "platform/controls/date_field.h"
#include "platform/controls/keys.h"
#include "platform/controls/link_label.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"

namespace {

constexpr int kPictureWidth = 40;

// What stands in the lists of the first tab. The years are examples, printed on the form long ago.
const QStringList& itemsOf(int combo) {
    static const QStringList kItems[] = {
        {QStringLiteral("/"), QStringLiteral("-"), QStringLiteral("~"), QStringLiteral("*"),
         QStringLiteral("@"), QStringLiteral("#"), QStringLiteral(" (razmak)")},
        {QStringLiteral("YYYY = 2005"), QStringLiteral("YY = 05"), QStringLiteral("MMYYYY = 052005"),
         QStringLiteral("MMYY = 0505")},
        {QStringLiteral("Ceo broj"), QStringLiteral("Jedna decimala"), QStringLiteral("Dve decimale")},
    };
    return kItems[combo];
}
constexpr const char* kComboNames[] = {"Znak izmedju broja i godine", "Godina u broju dokumenta",
                                       "Zaokruzivanje brojeva"};

}  // namespace

frmPrintInvoiceEx::frmPrintInvoiceEx(const ServiceView& view, QWidget* parent)
    : QDialog(parent), view_(view) {
    setObjectName(QStringLiteral("frmPrintInvoiceEx"));
    onShow = [this](ActiveReport2& report) { report.Show(true, this); };

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("TabStrip1"));
    tabs_->setAccessibleName(QStringLiteral("Podesavanja dokumenta"));
    conditions_ = new DocumentConditions(OpenType, this);
    tabs_->addTab(buildGeneral(), QStringLiteral("Opst&e"));
    tabs_->setTabToolTip(0, QStringLiteral("Opsta podesavanja"));
    parties_ = new DocumentParties(this);
    tabs_->addTab(parties_, QStringLiteral("Firma/&Kupac"));
    tabs_->setTabToolTip(1, QStringLiteral("Dodatna podesavanja"));
    column->addWidget(tabs_);
    column->addWidget(buildButtons());
    connectControls();
}

frmPrintInvoiceEx::~frmPrintInvoiceEx() {
    Unload();
}

void frmPrintInvoiceEx::Display() {
    if (!loaded_) {
        load();
    }
    setModal(true);
    exec();
}

void frmPrintInvoiceEx::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    platform::Trap step;  // a place that cannot be kept must not disturb the end of the program
    step([&] { settings::setInteger(settings::document.TabIndex, tabs_->currentIndex() + 1); });
    step([&] {
        if (!isMinimized()) {
            settings::setText(settings::document.WindowData, placeOf(this));
        }
    });
}

void frmPrintInvoiceEx::reject() {
    hide();
}

QWidget* frmPrintInvoiceEx::buildGeneral() {
    auto* panel = new QWidget(this);
    panel->setObjectName(arrayName("Picture1", 0));
    auto* column = new QVBoxLayout(panel);
    column->addWidget(buildNumberRow());
    column->addWidget(buildSumsRow());
    column->addWidget(conditions_->buildConditions(panel));
    column->addWidget(conditions_->buildOther(panel));
    column->addStretch(1);
    return panel;
}

// Reads as the line on the document does: number, sign, year, "od", date.
QWidget* frmPrintInvoiceEx::buildNumberRow() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    command_[2] = new QPushButton(panel);
    command_[2]->setObjectName(arrayName("Command1", 2));
    command_[2]->setToolTip(QStringLiteral("Poslednji odstampani broj dokumenta"));
    command_[2]->setAccessibleName(command_[2]->toolTip());
    for (int i = 0; i < 3; ++i) {
        auto* box = new QComboBox(panel);
        box->setObjectName(arrayName("Combo1", i));
        box->setAccessibleName(QLatin1String(kComboNames[i]));
        box->addItems(itemsOf(i));
        combo_[static_cast<std::size_t>(i)] = box;
    }
    auto* label = new QLabel(QStringLiteral("&Broj:"), panel);
    label->setObjectName(arrayName("Label3", 0));
    label->setBuddy(combo_[0]);
    sample_ = new QLabel(QStringLiteral("(npr. ..., od)"), panel);
    sample_->setObjectName(arrayName("Label3", 1));
    date_ = new platform::DateField(false, panel);
    date_->setObjectName(QStringLiteral("DTPicker1"));
    date_->edit()->setAccessibleName(QStringLiteral("Datum dokumenta"));
    for (QWidget* part : {static_cast<QWidget*>(label), static_cast<QWidget*>(command_[2]),
                          static_cast<QWidget*>(combo_[0]), static_cast<QWidget*>(combo_[1])}) {
        row->addWidget(part);
    }
    row->addSpacing(12);
    row->addWidget(sample_);
    row->addWidget(date_);
    row->addStretch(1);
    auto* picture = new QLabel(panel);
    picture->setObjectName(QStringLiteral("Image1"));
    picture->setPixmap(platform::picture(QStringLiteral("101"), kPictureWidth));
    row->addWidget(picture);
    return panel;
}

QWidget* frmPrintInvoiceEx::buildSumsRow() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    auto* rounding = new QLabel(QStringLiteral("&Zaokruzivanje brojeva:"), panel);
    rounding->setObjectName(arrayName("Label3", 2));
    rounding->setBuddy(combo_[2]);
    row->addWidget(rounding);
    row->addWidget(combo_[2]);
    row->addSpacing(16);
    costs_ = print_invoice::makeEntry(0, QStringLiteral("Ostali troskovi, procenat"), this);
    costs_->setAlignment(Qt::AlignRight);
    costs_->setMaximumWidth(fontMetrics().averageCharWidth() * 8);
    auto* label = new QLabel(QStringLiteral("&Ostali troskovi (%):"), panel);
    label->setObjectName(arrayName("Label3", 3));
    label->setBuddy(costs_);
    row->addWidget(label);
    row->addWidget(costs_);
    row->addStretch(1);
    const QString caption = QStringLiteral("&Prikazi total slovima");
    inWords_ = print_invoice::makeCheck(0, caption, print_invoice::spokenOf(caption), this);
    row->addWidget(inWords_);
    return panel;
}

QWidget* frmPrintInvoiceEx::buildButtons() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 4, 0, 0);
    auto* defaults = new platform::LinkLabel(
        QStringLiteral("Popuni sva polja na izabranom tab-u podrazumevanim vrednostima"), panel);
    defaults->setObjectName(QStringLiteral("Label2"));
    connect(defaults, &platform::LinkLabel::clicked, this, &frmPrintInvoiceEx::setDefaults);
    row->addWidget(defaults);
    row->addSpacing(24);
    row->addStretch(1);
    const char* const captions[] = {"&Stampaj...", "Za&tvori"};
    for (int i = 0; i < 2; ++i) {
        auto* button = new QPushButton(QLatin1String(captions[i]), panel);
        button->setObjectName(arrayName("Command1", i));
        button->setAccessibleName(print_invoice::spokenOf(button->text()));
        command_[static_cast<std::size_t>(i)] = button;
        row->addWidget(button);
    }
    command_[0]->setIcon(platform::icon(QStringLiteral("Print")));
    command_[0]->setToolTip(QStringLiteral("Pregled dokumenta pre stampe"));
    return panel;
}

void frmPrintInvoiceEx::connectControls() {
    for (QPushButton* button : command_) {
        button->setAutoDefault(false);  // a number must not be taken by an Enter meant for a field
    }
    connect(command_[0], &QPushButton::clicked, this, &frmPrintInvoiceEx::print);
    connect(command_[1], &QPushButton::clicked, this, &frmPrintInvoiceEx::reject);
    connect(command_[2], &QPushButton::clicked, this, &frmPrintInvoiceEx::changeNumberByHand);
    connect(parties_, &DocumentParties::differenceChanged, this, &frmPrintInvoiceEx::markParties);
    for (QComboBox* box : {combo_[0], combo_[1]}) {
        connect(box, &QComboBox::currentIndexChanged, this, [this] { numberFormChanged(); });
    }
    for (QWidget* widget : findChildren<QWidget*>()) {
        widget->installEventFilter(this);
    }
    platform::enterPressesButtons(this);  // before the window takes Enter for its fields
}

bool frmPrintInvoiceEx::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && watched == costs_) {
        checkCosts();
    }
    if (event->type() == QEvent::KeyPress) {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && filterKey(widget, *static_cast<QKeyEvent*>(event))) {
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

bool frmPrintInvoiceEx::filterKey(QWidget* field, const QKeyEvent& key) {
    if (platform::isEnter(key)) {
        if (qobject_cast<platform::LinkLabel*>(field) || !field->hasFocus()) {
            return false;
        }
        platform::pressTab(field);
        return true;
    }
    return field == costs_ && platform::filterNumberKey(*costs_, key, {.decimals = false});
}
