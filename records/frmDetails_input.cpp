// What happens while a service is being typed in: keys, the figure for payment, the date picker.
#include <QDateEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

#include "common/modMain.h"
#include "documents/frmInvoiceEx.h"
#include "platform/controls/boxes.h"
#include "platform/controls/date_field.h"
#include "platform/controls/keys.h"
#include "platform/controls/pictures.h"
#include "platform/system/dates.h"
#include "platform/system/numbers.h"
#include "records/frmDetails.h"
#include "records/service_row.h"

namespace {

// Taxes in this country are mostly 18 percent; the figure for payment counts with them until something is
// typed.
constexpr float kUsualGST = 18;

float numberOr(const QString& text, float otherwise) {
    return platform::readSingle(text).value_or(otherwise);
}

}  // namespace

void frmDetails::fieldChanged(int index) {
    if (loading_ || index == kForPayment || index == kComments) {
        return;
    }
    if (index < kDates) {
        showDatePicture(index);
        if (index == 0) {
            command_[0]->setEnabled(!fieldText(0).trimmed().isEmpty());
        }
        return;
    }
    showForPayment();
}

void frmDetails::showForPayment() {
    const float price = numberOr(fieldText(kPrice), 0);
    const float paid = numberOr(fieldText(kPaid), 0);
    const float discount = numberOr(fieldText(kDiscount), 0);
    const float gst = numberOr(fieldText(kGST), kUsualGST);
    setFieldText(kForPayment,
                 platform::formatGrouped(service_row::editorRemainder(price, discount, gst, paid)));
}

void frmDetails::showDatePicture(int index) {
    const QString name = openField_ == index                    ? QStringLiteral("DateOpen")
                         : fieldText(index).trimmed().isEmpty() ? QStringLiteral("DateEmpty")
                                                                : QStringLiteral("DateFilled");
    QToolButton* button = image_[static_cast<size_t>(index)];
    button->setIcon(platform::icon(name));
    button->setProperty("picture", name);
}

bool frmDetails::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::MouseButtonPress) {
        for (int i = 0; i <= kTypesLabel; ++i) {
            if (widget->objectName() == QStringLiteral("Label1(%1)").arg(i)) {
                focusField(i);
            }
        }
        return QDialog::eventFilter(watched, event);
    }
    for (int i = 0; i < kFields; ++i) {
        if (widget != fieldWidget(i)) {
            continue;
        }
        if (event->type() == QEvent::KeyPress && filterKey(i, *static_cast<QKeyEvent*>(event))) {
            return true;
        }
        if (event->type() == QEvent::FocusIn) {
            const auto reason = static_cast<QFocusEvent*>(event)->reason();
            const auto selectAll = [widget] { QMetaObject::invokeMethod(widget, "selectAll"); };
            // A click sets the cursor after it has brought the focus, so the selecting waits until it is
            // done.
            if (reason == Qt::MouseFocusReason) {
                QTimer::singleShot(0, widget, selectAll);
            } else if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
                selectAll();
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

// True where the key has been dealt with. Only what belongs in a number comes through in the number fields;
// the point key of the numeric pad, and the point, write the separator that this user's numbers have.
bool frmDetails::filterKey(int index, const QKeyEvent& key) {
    if (index < kDates && key.key() == Qt::Key_Down && key.modifiers().testFlag(Qt::AltModifier)) {
        openPicker(index);
        return true;
    }
    if (index < kPrice) {
        return false;
    }
    return platform::filterNumberKey(*text_[static_cast<size_t>(index)], key,
                                     {.decimals = index != kDiscount && index != kGST});
}

void frmDetails::focusField(int index) {
    if (index == kTypesLabel) {
        list_->setFocus(Qt::OtherFocusReason);
    } else if (index == openField_) {
        picker_->edit()->setFocus(Qt::OtherFocusReason);
    } else {
        fieldWidget(index)->setFocus(Qt::OtherFocusReason);
    }
}

void frmDetails::openPicker(int index) {
    if (openField_ == index) {
        return;
    }
    if (openField_ >= 0) {
        commitPicker();
    }
    openingPicker_ = true;
    openField_ = index;
    QLineEdit* field = text_[static_cast<size_t>(index)];
    placePicker();
    // Before the field goes, so that the focus does not wander over the rest of the window.
    picker_->show();
    picker_->raise();
    picker_->setFocus();
    field->hide();
    takePickerValue(index);
    showDatePicture(index);
    // Tab goes on from where the field would have gone on.
    setTabOrder(field, picker_->edit());
    picker_->edit()->setFocus(Qt::OtherFocusReason);
    openingPicker_ = false;
}

void frmDetails::takePickerValue(int index) {
    const QString text = fieldText(index).trimmed();
    if (text.isEmpty()) {
        picker_->setValue(QDate::currentDate());  // the month that it opens on
        picker_->setValue(std::nullopt);
        return;
    }
    if (const auto date = platform::readDate(text)) {
        picker_->setValue(platform::toQDate(*date));
        return;
    }
    platform::showBox(
        {GetResString(310, {{QStringLiteral("%1"), text}}), GetResString(1), platform::BoxIcon::Exclamation},
        this);
    setFieldText(index, QString());
    picker_->setValue(std::nullopt);
}

void frmDetails::commitPicker() {
    if (openField_ < 0) {
        return;
    }
    const int index = openField_;
    const auto value = picker_->value();
    closePicker();
    setFieldText(index, value ? platform::formatShortDate(*value) : QString());
    showDatePicture(index);
}

void frmDetails::closePicker() {
    if (openField_ < 0) {
        return;
    }
    QLineEdit* field = text_[static_cast<size_t>(openField_)];
    const bool hadFocus = picker_->isAncestorOf(focusWidget()) || focusWidget() == picker_;
    openField_ = -1;
    field->show();
    if (hadFocus && isVisible()) {
        field->setFocus(Qt::OtherFocusReason);
    }
    picker_->hide();
}

void frmDetails::placePicker() {
    if (openField_ >= 0) {
        picker_->setGeometry(text_[static_cast<size_t>(openField_)]->geometry());
    }
}

void frmDetails::mousePressEvent(QMouseEvent* event) {
    commitPicker();
    QDialog::mousePressEvent(event);
}

void frmDetails::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    placePicker();
}

void frmDetails::viewPriceList() {
    if (mode_ == EditMode) {
        frmInvoiceEx requisition(this);
        requisition.setParentForm(this);
        requisition.setServiceView(serviceView_);
        requisition.setServiceID(serviceId_);
        requisition.Display();
        setFieldText(kPrice, platform::textOfSingle(requisition.TotalForPayment()));
        requisition.Unload();
        return;
    }
    platform::showBox(
        {QStringLiteral("This feature is available only on existing services. Add this service to the "
                        "database and then open it for editing to view the Parts list."),
         GetResString(1), platform::BoxIcon::Information},
        this);
}
