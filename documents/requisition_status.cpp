#include "documents/requisition_status.h"

#include <QAction>
#include <QLabel>
#include <QMouseEvent>
#include <QToolBar>

#include "documents/requisition_bar.h"
#include "platform/controls/status_bar.h"

namespace {

constexpr char kPanel[] = "tekst";

}  // namespace

RequisitionStatus::RequisitionStatus(QWidget& window)
    : QObject(&window), statusBar_(new platform::StatusBar(&window)) {
    statusBar_->setObjectName(QStringLiteral("StatusBar1"));
    statusBar_->setAccessibleName(window.windowTitle());
    statusBar_->addPanel(QString::fromLatin1(kPanel), platform::StatusBar::AutoSize::Spring);
}

void RequisitionStatus::watch(const RequisitionBar& bar, const QList<QWidget*>& others) {
    toolbar_ = &bar;
    QList<QWidget*> watched = others;
    watched << statusBar_ << statusBar_->panel(QString::fromLatin1(kPanel)) << bar.toolbar();
    for (QAction* action : bar.toolbar()->actions()) {
        watched.append(bar.toolbar()->widgetForAction(action));
    }
    for (QWidget* widget : watched) {
        widget->setMouseTracking(true);
        widget->installEventFilter(this);
    }
}

bool RequisitionStatus::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseMove) {
        auto* widget = static_cast<QWidget*>(watched);
        const auto* move = static_cast<QMouseEvent*>(event);
        const QToolBar* bar = toolbar_->toolbar();
        if (widget == bar || bar->isAncestorOf(widget)) {
            show(toolbar_->tipAt(widget->mapTo(bar, move->position().toPoint())));
            // It ends here: the window behind would wipe the text out again.
            return move->buttons() == Qt::NoButton;
        }
        show({});
    }
    return QObject::eventFilter(watched, event);
}

void RequisitionStatus::setStanding(const QString& text) {
    standing_ = text;
    show(text);
}

void RequisitionStatus::show(const QString& text) {
    const QString shown = text.isEmpty() ? standing_ : text;
    const QString panel = QString::fromLatin1(kPanel);
    if (statusBar_->panelText(panel) != shown) {
        statusBar_->setPanelText(panel, shown);
    }
}
