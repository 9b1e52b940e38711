#include "records/field_labels.h"

#include <QFocusEvent>
#include <QLabel>
#include <QListWidget>
#include <QTimer>

#include "common/window_helpers.h"

namespace {

void selectFor(QWidget* field, Qt::FocusReason reason) {
    const auto selectAll = [field] { QMetaObject::invokeMethod(field, "selectAll"); };
    // A click sets the cursor after it has brought the focus, so the selecting waits until it is done.
    if (reason == Qt::MouseFocusReason) {
        QTimer::singleShot(0, field, selectAll);
    } else if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
        selectAll();
    }
}

}  // namespace

FieldLabels::FieldLabels(QWidget& window) : window_(window) {}

QLabel* FieldLabels::add(int number, const QString& caption, QWidget* field) {
    auto* label = new QLabel(caption, &window_);
    label->setObjectName(arrayName("Label1", number));
    label->setBuddy(field);
    label->installEventFilter(this);
    field->setAccessibleName(spokenCaption(caption));
    // In a list everything selected is everything chosen.
    if (qobject_cast<QListWidget*>(field) == nullptr) {
        field->installEventFilter(this);
    }
    return label;
}

bool FieldLabels::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* label = qobject_cast<QLabel*>(watched);
        // Where the date picker lies over the field, the same click takes its date.
        if (label != nullptr && !label->buddy()->isHidden()) {
            label->buddy()->setFocus(Qt::OtherFocusReason);
        }
    } else if (event->type() == QEvent::FocusIn && qobject_cast<QLabel*>(watched) == nullptr) {
        selectFor(static_cast<QWidget*>(watched), static_cast<QFocusEvent*>(event)->reason());
    }
    return QObject::eventFilter(watched, event);
}
