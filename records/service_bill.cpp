#include "records/service_bill.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/dressing.h"
#include "platform/controls/link_label.h"
#include "platform/system/numbers.h"
#include "records/field_labels.h"
#include "records/service_entry_fields.h"
#include "records/service_row.h"

namespace {

constexpr int kForPayment = 3;  // Text1(3), Label1(3)
// Under the figures, and over the kinds of work.
constexpr ServiceField::Entry kKinds = serviceField(ServiceColumn::Types).entry;
constexpr int kForPaymentRow = kKinds.row - 1, kForPaymentColumn = kKinds.column + 1;
constexpr int kExtraColumn = kKinds.column + 2;
constexpr int kForPaymentTopic = 304, kPartsLinkTopic = 318;

// Taxes in this country are mostly 18 percent; the figure for payment counts with them until something is
// typed.
constexpr float kUsualGST = 18;

QLineEdit* makeForPayment(QWidget& window) {
    auto* field = new QLineEdit(&window);
    // Wide enough for the largest bill that this shop has written in dinars.
    field->setMinimumWidth(window.fontMetrics().horizontalAdvance(QStringLiteral("-00,000,000.00")) + 20);
    field->setObjectName(arrayName("Text1", kForPayment));
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::NoFocus);
    field->setAlignment(Qt::AlignRight);
    field->setProperty(kTopicProperty, kForPaymentTopic);
    platform::keepDressed(*field, [field] {
        QPalette still;
        still.setColor(QPalette::Base, still.color(QPalette::Window));
        field->setPalette(still);
    });
    return field;
}

}  // namespace

ServiceBill::ServiceBill(QWidget& window, QGridLayout& grid, FieldLabels& labels)
    : unit_(new QLabel(&window)),
      partsLink_(new platform::LinkLabel(QStringLiteral("View price list"), &window)),
      forPayment_(makeForPayment(window)) {
    unit_->setObjectName(QStringLiteral("Label4"));
    grid.addWidget(unit_, serviceField(ServiceColumn::Price).entry.row, kExtraColumn);
    partsLink_->setObjectName(QStringLiteral("Label3"));
    partsLink_->setProperty(kTopicProperty, kPartsLinkTopic);
    grid.addWidget(partsLink_, serviceField(ServiceColumn::Paid).entry.row, kExtraColumn);
    grid.addWidget(forPayment_, kForPaymentRow, kForPaymentColumn);
    grid.addWidget(labels.add(kForPayment, QStringLiteral("<--- For payment"), forPayment_), kForPaymentRow,
                   kExtraColumn);
}

void ServiceBill::showUnit() {
    unit_->setText(CeneDinarske ? QStringLiteral("DIN") : QStringLiteral("EUR"));
}

void ServiceBill::showRest(const ServiceEntryFields& fields) {
    const auto typed = [&](ServiceColumn column, float otherwise = 0) {
        return platform::readSingle(fields.text(column)).value_or(otherwise);
    };
    forPayment_->setText(platform::formatGrouped(
        service_row::editorRemainder(typed(ServiceColumn::Price), typed(ServiceColumn::Discount),
                                     typed(ServiceColumn::Tax, kUsualGST), typed(ServiceColumn::Paid))));
}
