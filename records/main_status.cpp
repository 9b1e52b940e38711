#include "records/main_status.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>
#include <utility>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/system/launch.h"
#include "platform/system/trap.h"
#include "records/main_start.h"
#include "records/quick_filters.h"

namespace {

const QString kTextPanel = QStringLiteral("Text");
const QString kTimePanel = QStringLiteral("Time");
const QString kFilterPanel = QStringLiteral("Filter");

}  // namespace

MainStatus::MainStatus(QMainWindow& window, const MainStart& start)
    : QObject(&window), window_(window), start_(start) {}

bool MainStatus::CreateStatusBar(bool visible, QString& errorText) {
    platform::Trap step;
    step([&] {
        start_.begin(StartStep::StatusBar);
        build(visible);
    });
    return outcome(step, 109, errorText);
}

void MainStatus::build(bool visible) {
    auto* bar = new platform::StatusBar(&window_);
    bar->setObjectName(QStringLiteral("StatusBar1"));
    bar->addPanel(kTextPanel, platform::StatusBar::AutoSize::Spring);
    bar->addClock(kTimePanel);
    bar->setPanelAlignment(kTimePanel, Qt::AlignCenter);
    window_.setStatusBar(bar);
    bar->setVisible(visible);
    bar_ = bar;
    connect(bar, &platform::StatusBar::panelDoubleClicked, this, &MainStatus::panelDoubleClicked);
    connect(bar, &platform::StatusBar::barClicked, this, &MainStatus::barClicked);
}

// --- What it says.

void MainStatus::SetStatusText(const QString& text, bool sticky) {
    if (sticky) {
        stickyText_ = text;
    }
    if (bar_ == nullptr) {
        return;
    }
    const QString shown = text.isEmpty() ? stickyText_ : text;
    if (shown != bar_->panelText(kTextPanel)) {
        bar_->setPanelText(kTextPanel, shown);
    }
}

QString MainStatus::text() const {
    return bar_ == nullptr ? QString() : bar_->panelText(kTextPanel);
}

void MainStatus::ShowFilterCaption(int number, bool remove) {
    if (bar_ == nullptr) {
        return;
    }
    if (remove) {
        return removeFilterPanel();
    }
    if (!quick_filters::isFilter(number)) {
        return;
    }
    if (bar_->firstPanelKey() != kFilterPanel) {
        bar_->addPanel(kFilterPanel, platform::StatusBar::AutoSize::Contents, 1);
    }
    bar_->setPanelText(kFilterPanel, quick_filters::caption(number));
    bar_->panel(kFilterPanel)->setFrameStyle(QFrame::NoFrame);
}

void MainStatus::removeFilterPanel() {
    if (bar_->firstPanelKey() == kFilterPanel) {
        bar_->removePanel(kFilterPanel);
    }
}

// --- Clicks on it.

void MainStatus::panelDoubleClicked(const QString& key) {
    if (key != kTimePanel) {
        return;
    }
    clickPending_ = false;
    if (!platform::openDateTimePanel()) {
        box(&window_, GetResString(162), platform::BoxIcon::Exclamation);
    }
}

// What opens on a click would cover the clock before anybody could click it a second time.
void MainStatus::barClicked() {
    clickPending_ = true;
    QTimer::singleShot(QApplication::doubleClickInterval(), this, [this] {
        if (std::exchange(clickPending_, false) && QApplication::activeModalWidget() == nullptr) {
            emit clicked();
        }
    });
}
