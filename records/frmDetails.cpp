#include "records/frmDetails.h"

#include <QDate>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include "common/help.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "documents/frmInvoiceEx.h"
#include "platform/controls/boxes.h"
#include "platform/controls/keys.h"
#include "platform/controls/link_label.h"
#include "platform/system/dates.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "records/field_labels.h"
#include "records/service_bill.h"
#include "records/service_date_picker.h"
#include "records/service_entry_fields.h"
#include "records/service_kinds_list.h"
#include "records/service_row.h"

namespace {

// The list of kinds is the last and the tallest on the right, and the buttons stand under everything.
constexpr ServiceField::Entry kKinds = serviceField(ServiceColumn::Types).entry;
constexpr int kListRow = kKinds.row + 1, kButtonRow = kKinds.row + 2;
constexpr int kGap = kKinds.column - 1, kColumns = kKinds.column + 3;
constexpr int kFirstButtonTopic = 311;  // Command1(0) to Command1(2)
constexpr int kWindowTopic = 7002;

QGridLayout* makeGrid(QWidget* window) {
    auto* grid = new QGridLayout(window);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    grid->setContentsMargins(14, 14, 14, 12);
    grid->setColumnMinimumWidth(kGap, 20);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(kKinds.column + 1, 1);
    grid->setRowStretch(kListRow, 1);
    return grid;
}

int helpTopicOf(const QWidget* widget) {
    for (; widget != nullptr && !widget->isWindow(); widget = widget->parentWidget()) {
        if (const int topic = widget->property(kTopicProperty).toInt()) {
            return topic;
        }
    }
    return kWindowTopic;
}

}  // namespace

frmDetails::frmDetails(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmDetails"));
    setWindowTitle(QStringLiteral("Service"));
    QGridLayout* grid = makeGrid(this);
    labels_ = std::make_unique<FieldLabels>(*this);
    fields_ = std::make_unique<ServiceEntryFields>(*this, *grid, *labels_);
    fields_->addLines();
    bill_ = std::make_unique<ServiceBill>(*this, *grid, *labels_);
    fields_->addDescriptionAndKinds();
    addButtons(*grid);
    setTabChain();
    connect(fields_.get(), &ServiceEntryFields::changed, this, &frmDetails::renew);
    connect(bill_->partsLink(), &platform::LinkLabel::clicked, this, &frmDetails::viewPriceList);
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

void frmDetails::addButtons(QGridLayout& grid) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 6, 0, 0);
    row->addStretch(1);
    const auto add = [&](int index, const char* caption) {
        auto* button = new QPushButton(QString::fromLatin1(caption), this);
        button->setObjectName(arrayName("Command1", index));
        button->setAccessibleName(spokenCaption(button->text()));
        button->setProperty(kTopicProperty, kFirstButtonTopic + index);
        row->addWidget(button);
        return button;
    };
    ok_ = add(0, "OK");
    ok_->setDefault(true);
    platform::keyPressesButton(QKeySequence(Qt::CTRL | Qt::Key_S), ok_);
    connect(ok_, &QPushButton::clicked, this, &frmDetails::okClicked);
    connect(add(1, "Cancel"), &QPushButton::clicked, this, &frmDetails::reject);
    connect(add(2, "&Help"), &QPushButton::clicked, this, [] { showHelp(kWindowTopic); });
    grid.addLayout(row, kButtonRow, 0, 1, kColumns);
}

void frmDetails::setTabChain() {
    QWidgetList chain = fields_->inTabOrder();
    for (QPushButton* button : findChildren<QPushButton*>(Qt::FindDirectChildrenOnly)) {
        chain.append(button);
    }
    chain << fields_->kinds().deselectLink() << bill_->partsLink();
    for (qsizetype i = 1; i < chain.size(); ++i) {
        setTabOrder(chain[i - 1], chain[i]);
    }
}

void frmDetails::setAllServiceTypes(const QStringList& names) {
    fields_->kinds().setNames(names);
}

void frmDetails::Display(int mode) {
    if (!loaded_) {
        moveToPlace(this, settings::text(settings::DetailsPosition));
        loaded_ = true;
    }
    mode_ = mode;
    fields_->kinds().fill();
    if (mode == EditMode) {
        fields_->show(service());
    } else {
        fields_->show(newService());
        fields_->picker().startFromToday();
    }
    bill_->showUnit();
    renew();
    fields_->widget(ServiceColumn::Started)->setFocus();
    exec();
}

ServiceTexts frmDetails::newService() const {
    ServiceTexts texts;
    texts[ServiceColumn::Started] = platform::formatShortDate(QDate::currentDate());
    texts[ServiceColumn::Tax] = defaultGST_ == 0 ? QString() : QString::number(defaultGST_);
    texts[ServiceColumn::Types] = service_row::kAnyType;
    return texts;
}

void frmDetails::renew() {
    ok_->setEnabled(!fields_->text(ServiceColumn::Started).trimmed().isEmpty());
    bill_->showRest(*fields_);
}

// Every field is tried, and all that is wrong is said in one box.
void frmDetails::okClicked() {
    fields_->picker().commit();
    QStringList refusals;
    QWidget* first = nullptr;
    for (const ServiceField& field : serviceFields()) {
        const TakenText taken = takeTyped(field, fields_->text(field.name));
        if (taken.refusal.isEmpty()) {
            service_[field.name] = taken.text;
            continue;
        }
        refusals.append(taken.refusal);
        first = first == nullptr ? fields_->widget(field.name) : first;
    }
    if (first != nullptr) {
        box(this, refusals.join(QLatin1Char('\n')), platform::BoxIcon::Exclamation);
        first->setFocus(Qt::OtherFocusReason);
        // Whether the field had the focus all along, or gets it only when the window comes forward again
        // behind the box: what is wrong is typed over at once.
        QMetaObject::invokeMethod(first, "selectAll");
        return;
    }
    cancelled_ = false;
    WinHelp(helpFile(), HELP_QUIT);
    accept();
}

void frmDetails::viewPriceList() {
    if (mode_ == EditMode) {
        frmInvoiceEx requisition(this);
        requisition.setParentForm(this);
        requisition.setServiceView(serviceView_);
        requisition.setServiceID(ServiceID());
        requisition.Display();
        fields_->setText(ServiceColumn::Price, platform::textOfSingle(requisition.TotalForPayment()));
        requisition.Unload();
        return;
    }
    box(this,
        QStringLiteral("This feature is available only on existing services. Add this service to the "
                       "database and then open it for editing to view the Parts list."),
        platform::BoxIcon::Information);
}

void frmDetails::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        showHelp(helpTopicOf(focusWidget()));
        return;
    }
    QDialog::keyPressEvent(event);
}

void frmDetails::reject() {
    fields_->picker().close();
    cancelled_ = true;
    WinHelp(helpFile(), HELP_QUIT);
    QDialog::reject();
}
