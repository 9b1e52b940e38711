#include "platform/controls/soft_modal.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QShortcut>
#include <QTimer>
#include <QWidget>
#include <algorithm>

#include "platform/controls/persons_doing.h"

namespace platform {
namespace {

// What the windows below must not get; drags they may have.
bool isHeldBack(QEvent::Type type) {
    return isPersonsDoing(type) || type == QEvent::MouseMove || type == QEvent::TabletMove ||
           type == QEvent::Close;
}

bool wantsForward(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::TouchBegin || type == QEvent::TabletPress ||
           type == QEvent::WindowActivate;
}

bool isWithin(const QWidget* widget, const QWidget* ancestor) {
    while (widget && widget != ancestor) {
        widget = widget->parentWidget();
    }
    return widget != nullptr;
}

// A shortcut is no widget, but belongs to one.
const QWidget* widgetOf(const QObject* watched) {
    if (watched->isWidgetType()) {
        return static_cast<const QWidget*>(watched);
    }
    if (qobject_cast<const QShortcut*>(watched) || qobject_cast<const QAction*>(watched)) {
        return qobject_cast<const QWidget*>(watched->parent());
    }
    return nullptr;
}

}  // namespace

SoftModal::SoftModal(QWidget* window) : window_(window) {
    for (QWidget* other : QApplication::topLevelWidgets()) {
        if (!isWithin(other, window)) {
            blocked_.append(other);
        }
    }
    qApp->installEventFilter(this);
}

SoftModal::~SoftModal() {
    qApp->removeEventFilter(this);
}

bool SoftModal::isBlocked(const QObject* watched) const {
    const QWidget* widget = widgetOf(watched);
    return widget && std::any_of(blocked_.cbegin(), blocked_.cend(),
                                 [top = widget->window()](const QPointer<QWidget>& each) {
                                     return each && each.data() == top;
                                 });
}

// A box that stands over the window keeps the front for itself.
void SoftModal::bringForward() {
    if (!window_) {
        return;
    }
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal && modal != window_ && isWithin(modal, window_)) {
        return;
    }
    window_->raise();
    window_->activateWindow();
}

bool SoftModal::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (!(isHeldBack(type) || type == QEvent::WindowActivate) || !isBlocked(watched)) {
        return QObject::eventFilter(watched, event);
    }
    if (wantsForward(type)) {
        QTimer::singleShot(0, this, &SoftModal::bringForward);
    }
    if (!isHeldBack(type)) {
        return false;
    }
    event->setAccepted(type != QEvent::Close);  // a close that is ignored does not happen
    return true;
}

}  // namespace platform
