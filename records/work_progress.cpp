#include "records/work_progress.h"

#include <QApplication>
#include <QEvent>
#include <QProgressBar>
#include <algorithm>

#include "platform/controls/persons_doing.h"
#include "platform/controls/status_bar.h"

namespace {

const QString kClockPanel = QStringLiteral("Time");

// A product or a word dropped on a field would be one, too.
bool isCommand(QEvent::Type type) {
    return platform::isPersonsDoing(type) || type == QEvent::InputMethod || type == QEvent::DragEnter ||
           type == QEvent::Drop;
}

}  // namespace

WorkProgress::WorkProgress(QWidget* window, platform::StatusBar* bar, const QString& name, int turn,
                           int first)
    : window_(window), bar_(bar), name_(name), turn_(turn), first_(first) {
    since_.start();
}

WorkProgress::~WorkProgress() {
    if (shown_.isNull()) {
        return;
    }
    if (!bar_.isNull() && !window_.isNull()) {
        bar_->uncover(shown_, window_);
    }
    delete shown_;
}

void WorkProgress::tell(std::int64_t done, std::int64_t total) {
    const QElapsedTimer& last = sinceTurn_.isValid() ? sinceTurn_ : since_;
    if (last.elapsed() < (sinceTurn_.isValid() ? turn_ : std::min(turn_, first_))) {
        return;
    }
    if (since_.elapsed() >= first_) {
        show(done, total);
    }
    qApp->installEventFilter(this);
    QApplication::processEvents();
    qApp->removeEventFilter(this);
    sinceTurn_.start();
}

void WorkProgress::show(std::int64_t done, std::int64_t total) {
    if (bar_.isNull() || window_.isNull()) {
        return;
    }
    if (shown_.isNull()) {
        shown_ = new QProgressBar(window_);
        shown_->setObjectName(QStringLiteral("ProgressBar1"));
        shown_->setAccessibleName(name_);
        shown_->setTextVisible(false);
        bar_->coverPanel(kClockPanel, shown_);
    }
    constexpr std::int64_t kSteps = 1000;
    shown_->setRange(0, static_cast<int>(kSteps));
    shown_->setValue(total > 0 ? static_cast<int>(done * kSteps / total) : 0);
}

// A box that came up meanwhile (a backup that failed while the window was being closed) must be answered.
bool WorkProgress::eventFilter(QObject*, QEvent* event) {
    return isCommand(event->type()) && QApplication::activeModalWidget() == nullptr;
}
