#include "records/number_watch.h"

#include <QApplication>
#include <QPointer>
#include <chrono>
#include <utility>

#include "data/session.h"
#include "platform/controls/long_wait.h"

namespace {

constexpr std::chrono::seconds kOften{1};
// A restart that did not come about is not asked for again at once: a person is to put something right first.
constexpr std::chrono::seconds kSeldom{30};

bool isPersonBusy() {
    return QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr ||
           QApplication::mouseButtons() != Qt::NoButton;
}

}  // namespace

NumberWatch::NumberWatch(std::function<void()> restart) : restart_(std::move(restart)) {
    connect(&timer_, &QTimer::timeout, this, &NumberWatch::look);
}

void NumberWatch::start() {
    timer_.start(kOften);
}

void NumberWatch::look() {
    if (platform::LongWait::isAway() || !WorkNumberLost() || isPersonBusy()) {
        return;
    }
    const QPointer<NumberWatch> watch = this;
    restart_();
    if (!watch.isNull()) {  // the window may have been closed
        timer_.setInterval(WorkNumberLost() ? kSeldom : kOften);
    }
}
