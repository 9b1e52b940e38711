#include "shell/program_end.h"

#include <QApplication>
#include <QDialog>
#include <QDrag>
#include <QEvent>
#include <QMessageBox>
#include <QThread>

#include "platform/controls/long_wait.h"
#include "records/frmMain.h"

namespace {

constexpr int kTurn = 20;  // milliseconds

bool standsOn(const QWidget* window, const QWidget* owner) {
    const QWidget* below = window->parentWidget();
    while (below && below != owner) {
        below = below->parentWidget();
    }
    return below != nullptr;
}

// The dialog that was opened last from `owner`, or from anywhere: of the visible ones one that no other
// stands on.
QDialog* topDialog(const QWidget* owner) {
    QDialog* top = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QDialog*>(window);
        if (dialog && dialog->isVisible() && (!owner || standsOn(dialog, owner)) &&
            (!top || standsOn(dialog, top))) {
            top = dialog;
        }
    }
    return top;
}

// The window that waits for somebody; nullptr where none does. The catalogue is not modal, and stands on the
// modal requisition all the same: hidden together with it, it would wait for ever.
QWidget* waitingWindow() {
    if (QWidget* popup = QApplication::activePopupWidget()) {
        return popup;
    }
    QWidget* modal = QApplication::activeModalWidget();
    QDialog* dialog = topDialog(modal);
    return dialog ? dialog : modal;
}

// A box that demands an answer takes no close button; cancelled it means No.
void cancel(QWidget* window) {
    if (const auto* box = qobject_cast<const QMessageBox*>(window)) {
        qWarning("%s", qUtf8Printable(box->text()));
    }
    if (auto* dialog = qobject_cast<QDialog*>(window)) {
        dialog->reject();
    } else {
        window->close();
    }
}

}  // namespace

ProgramEnd::ProgramEnd() {
    connect(&signals_, &platform::EndSignals::received, this, &ProgramEnd::ask);
    connect(
        qApp, &QGuiApplication::commitDataRequest, this, [this] { ask(); }, Qt::DirectConnection);
    connect(&turns_, &QTimer::timeout, this, &ProgramEnd::turn);
    qApp->installEventFilter(this);
}

void ProgramEnd::setWindow(frmMain* window) {
    window_ = window;
}

void ProgramEnd::ask() {
    turns_.start(kTurn);
}

// The desktop's word to end. The toolkit would close one window after the other, and give up at the first
// that another one blocks.
bool ProgramEnd::eventFilter(QObject* watched, QEvent* event) {
    const bool isOurs = watched == qApp && event->type() == QEvent::Quit && window_ && !window_->isUnloaded();
    if (!isOurs) {
        return QObject::eventFilter(watched, event);
    }
    ask();
    return true;
}

// Only from the program's own loop: in a loop above it some routine still waits, and works with what the
// closing takes away.
bool ProgramEnd::mayClose() const {
    return window_ && QThread::currentThread()->loopLevel() == 1;
}

// Again and again, as the next window may open when one has been cancelled; the failure of the backup is told
// while the main window closes.
void ProgramEnd::turn() {
    if (platform::LongWait::isAway()) {  // what a cancelled window does might ask the engine
        platform::LongWait::leave();
        return;
    }
    if (mayClose()) {
        if (!window_->isUnloaded()) {
            window_->unload();
        }
        return;
    }
    QDrag::cancel();
    if (QWidget* window = waitingWindow()) {
        cancel(window);
    }
}
