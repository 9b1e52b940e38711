#include "records/service_date_picker.h"

#include <QDate>
#include <QDateEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

#include "common/modMain.h"
#include "platform/controls/boxes.h"
#include "platform/controls/date_field.h"
#include "platform/controls/pictures.h"
#include "platform/system/dates.h"
#include "records/field_labels.h"

ServiceDatePicker::ServiceDatePicker(QWidget& window)
    : window_(window), picker_(new platform::DateField(true, &window)) {
    picker_->setObjectName(QStringLiteral("DTPicker1"));
    picker_->setAccessibleName(QStringLiteral("Date"));
    picker_->hide();
    window_.installEventFilter(this);
    connect(picker_, &platform::DateField::focusLeft, this, [this] {
        if (!opening_) {
            commit();
        }
    });
}

void ServiceDatePicker::serve(QLineEdit* field, QToolButton* button) {
    buttons_.insert(field, button);
    field->setMinimumSize(picker_->sizeHint());
    // It lies over the field and needs its place.
    QSizePolicy policy = field->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    field->setSizePolicy(policy);
    field->installEventFilter(this);
    connect(field, &QLineEdit::textChanged, this, [this, field] { showPicture(field); });
    connect(button, &QToolButton::clicked, this, [this, field] { open(field); });
    showPicture(field);
}

void ServiceDatePicker::startFromToday() {
    picker_->setValue(QDate::currentDate());
}

void ServiceDatePicker::open(QLineEdit* field) {
    if (field_ == field) {
        return;
    }
    commit();
    opening_ = true;
    field_ = field;
    picker_->setProperty(kTopicProperty, field->property(kTopicProperty));
    place();
    // Before the field goes, so that the focus does not wander over the rest of the window.
    picker_->show();
    picker_->raise();
    picker_->setFocus();
    field->hide();
    takeValue();
    showPicture(field);
    // Tab goes on from where the field would have gone on.
    QWidget::setTabOrder(field, picker_->edit());
    picker_->edit()->setFocus(Qt::OtherFocusReason);
    opening_ = false;
}

void ServiceDatePicker::takeValue() {
    const QString text = field_->text().trimmed();
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
        &window_);
    field_->setText(QString());
    picker_->setValue(std::nullopt);
}

void ServiceDatePicker::commit() {
    if (field_ == nullptr) {
        return;
    }
    QLineEdit* field = field_;
    const auto value = picker_->value();
    close();
    field->setText(value ? platform::formatShortDate(*value) : QString());
}

void ServiceDatePicker::close() {
    if (field_ == nullptr) {
        return;
    }
    QLineEdit* field = field_;
    const QWidget* focus = window_.focusWidget();
    const bool hadFocus = picker_->isAncestorOf(focus) || focus == picker_;
    field_ = nullptr;
    field->show();
    if (hadFocus && window_.isVisible()) {
        field->setFocus(Qt::OtherFocusReason);
    }
    picker_->hide();
    picker_->setProperty(kTopicProperty, QVariant());
    showPicture(field);
}

void ServiceDatePicker::place() {
    if (field_ != nullptr) {
        picker_->setGeometry(field_->geometry());
    }
}

void ServiceDatePicker::showPicture(QLineEdit* field) {
    const QString name = field_ == field                     ? QStringLiteral("DateOpen")
                         : field->text().trimmed().isEmpty() ? QStringLiteral("DateEmpty")
                                                             : QStringLiteral("DateFilled");
    QToolButton* button = buttons_.value(field);
    button->setIcon(platform::icon(name));
    button->setProperty("picture", name);
}

bool ServiceDatePicker::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_) {
        if (event->type() == QEvent::MouseButtonPress) {
            commit();
        } else if (event->type() == QEvent::Resize) {
            place();
        }
    } else if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.key() == Qt::Key_Down && key.modifiers().testFlag(Qt::AltModifier)) {
            open(static_cast<QLineEdit*>(watched));
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
