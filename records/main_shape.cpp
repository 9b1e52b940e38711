#include "records/main_shape.h"

#include <QEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QScreen>
#include <QToolBar>

#include "common/window_places.h"
#include "records/main_bars.h"
#include "records/main_choices.h"
#include "records/main_status.h"

namespace {

int heightOf(const QWidget* bar) {
    return bar == nullptr || bar->isHidden() ? 0 : bar->sizeHint().height();
}

}  // namespace

MainShape::MainShape(QMainWindow& window, MainBars& bars, MainStatus& status, MainChoices& choices)
    : QObject(&window), window_(window), bars_(bars), status_(status), choices_(choices) {
    window.installEventFilter(this);
}

void MainShape::ToggleToolbar() {
    toggle(bars_.toolbar.bar(), choices_.ToolbarVisible);
}

void MainShape::ToggleStatusBar() {
    toggle(status_.bar(), choices_.StatusbarVisible);
}

void MainShape::toggle(QWidget* bar, bool& wanted) {
    if (bar == nullptr) {
        return;
    }
    wanted = bar->isHidden();
    bar->setVisible(wanted);
    bars_.renew(Menu::View);
    ArrangeControls();
}

int MainShape::insideHeight() const {
    const QWidget* inside = window_.centralWidget();
    const int known = insideHeight_ > 0 ? insideHeight_ : inside->sizeHint().height();
    return qMax(inside->minimumSizeHint().height(), known);
}

void MainShape::ArrangeControls() {
    if (window_.isMaximized() || window_.isFullScreen()) {
        return;
    }
    const int inside = insideHeight();
    const int frame = window_.frameGeometry().height() - window_.height();
    const int wanted =
        inside + heightOf(window_.menuBar()) + heightOf(bars_.toolbar.bar()) + heightOf(status_.bar());
    arranging_ = true;
    window_.resize(window_.width(), qMin(wanted, window_.screen()->availableGeometry().height() - frame));
    bringOnScreen(&window_);
    arranging_ = false;
    insideHeight_ = inside;
}

// What the person makes of the height by hand holds from then on.
bool MainShape::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowActivate && !activated_) {
        activated_ = true;
        ArrangeControls();
    } else if (event->type() == QEvent::Resize && !arranging_ && window_.isVisible() && activated_) {
        insideHeight_ = window_.centralWidget()->height();
    }
    return QObject::eventFilter(watched, event);
}
