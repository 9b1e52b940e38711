#include "platform/controls/long_wait.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEventLoop>
#include <QMainWindow>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <exception>
#include <future>
#include <optional>
#include <thread>

#include "platform/controls/persons_doing.h"
#include "platform/controls/wait_sign.h"
#include "platform/dao/breaking_off.h"

namespace platform {
namespace {

LongWait* current = nullptr;
bool away = false;

// The window that a person looks at; nullptr where there is none yet.
QWidget* windowInFront() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    if (QWidget* active = QApplication::activeWindow()) {
        return active;
    }
    const QWidgetList all = QApplication::topLevelWidgets();
    const auto isMain = [](const QWidget* window) {
        return window->isVisible() && qobject_cast<const QMainWindow*>(window) != nullptr;
    };
    const auto found = std::find_if(all.begin(), all.end(), isMain);
    return found == all.end() ? nullptr : *found;
}

// Rows that came into sight meanwhile could not be read.
void paintLists() {
    for (QWidget* widget : QApplication::allWidgets()) {
        if (auto* list = qobject_cast<QAbstractItemView*>(widget); list && list->isVisible()) {
            list->viewport()->update();
        }
    }
}

bool isRefused(QEvent::Type type) {
    return isPersonsDoing(type) || type == QEvent::InputMethod || type == QEvent::DragEnter ||
           type == QEvent::Drop || type == QEvent::Close;
}

// As long as it lives the engine is away. Not everything waits in the queue: input methods, drags and closing
// come straight to a window, which would ask the engine.
class Absence : public QObject {
 public:
    Absence(const std::unique_ptr<WaitSign>& sign, TypedAhead& typed) : sign_(sign), typed_(typed) {
        away = true;
        qApp->installEventFilter(this);
    }
    ~Absence() override { away = false; }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (!isRefused(event->type()) || isOfSign(watched)) {
            return false;
        }
        if (sign_ != nullptr || !typed_.keep(watched, *event)) {
            event->ignore();
        }
        return true;
    }

 private:
    bool isOfSign(const QObject* watched) const {
        if (sign_ != nullptr && watched == sign_->windowHandle()) {
            return true;
        }
        while (watched != nullptr && watched != sign_.get()) {
            watched = watched->parent();
        }
        return watched != nullptr;
    }

    const std::unique_ptr<WaitSign>& sign_;
    TypedAhead& typed_;
};

}  // namespace

WaitTimes& waitTimes() {
    static WaitTimes times;
    return times;
}

LongWait::LongWait(const QString& doing) : whole_(current != nullptr ? current : this), doing_(doing) {
    current = whole_;
    since_.start();
    turned_.start();
}

LongWait::~LongWait() {
    if (whole_ == this) {
        current = nullptr;
        typed_.giveBack();
    }
}

void LongWait::run(const std::function<void()>& work) {
    give(work, Kind::Leavable);
}

void LongWait::finish(const std::function<void()>& work) {
    give(work, Kind::Whole);
}

void LongWait::needStay() {
    if (current != nullptr) {
        const dao::Leavable here(current->left_);
        dao::needGoingOn();
    }
}

void LongWait::leave() {
    if (current != nullptr) {
        current->left_ = true;
    }
}

bool LongWait::wasLeft() {
    return current != nullptr && current->left_;
}

bool LongWait::isAway() {
    return away;
}

void LongWait::give(const std::function<void()>& work, Kind kind) {
    if (current == nullptr || away) {
        return work();
    }
    if (waitTimes().atPiece) {
        waitTimes().atPiece();
    }
    if (kind == Kind::Leavable) {
        needStay();
    }
    current->doAside(work, kind);
}

void LongWait::doAside(const std::function<void()>& work, Kind kind) {
    const Absence absence(sign_, typed_);
    std::atomic<bool> done{false};
    std::promise<void> promise;
    std::future<void> result = promise.get_future();
    QEventLoop loop;
    std::thread worker([&] {
        try {
            std::optional<dao::Leavable> leavable;
            if (kind == Kind::Leavable) {
                leavable.emplace(left_);
            }
            work();
            promise.set_value();
        } catch (...) {  // thrown on where the work is waited for
            promise.set_exception(std::current_exception());
        }
        done = true;
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    if (result.wait_for(std::chrono::milliseconds(untilTurning())) != std::future_status::ready) {
        leavable_ = kind == Kind::Leavable;
        if (sign_ != nullptr) {
            sign_->setLeavable(leavable_);
        }
        turn(loop, done);
        turned_.restart();
        paintLists();
    }
    worker.join();
    result.get();
}

void LongWait::turn(QEventLoop& loop, const std::atomic<bool>& done) {
    QTimer untilItIsLong;
    untilItIsLong.setSingleShot(true);
    QObject::connect(&untilItIsLong, &QTimer::timeout, &loop, [&] {
        showSign();
        loop.quit();
    });
    if (sign_ == nullptr) {
        untilItIsLong.start(untilSign());
    }
    while (!done) {
        loop.exec(sign_ == nullptr ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents);
    }
}

int LongWait::untilSign() const {
    return std::max(0, waitTimes().untilSign - static_cast<int>(since_.elapsed()));
}

// Several pieces that are short by themselves must not keep the windows still for long together.
int LongWait::untilTurning() const {
    const int still = waitTimes().untilTurning - static_cast<int>(turned_.elapsed());
    return sign_ != nullptr ? 0 : std::max(0, still);
}

// What was typed until then was meant for the window, and stands in the queue still.
void LongWait::showSign() {
    QCoreApplication::processEvents();
    sign_ = std::make_unique<WaitSign>(windowInFront(), doing_, since_);
    QObject::connect(sign_.get(), &WaitSign::left, sign_.get(), [] { leave(); });
    sign_->setLeavable(leavable_);
    sign_->show();
}

}  // namespace platform
