#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "platform/system/end_signals.h"

class frmMain;
class QWidget;

// The end that comes from outside: a signal, the log-out or the shutdown of the desktop. The program is then
// closed as by the main window's close button. What stands over the main window is cancelled before that, one
// window after the other, so that whatever waits for its answer has come to its end: nothing that was typed
// is written, nothing is asked, and what a box would have said goes to the standard error output.
class ProgramEnd : public QObject {
    Q_OBJECT
 public:
    ProgramEnd();

    // The window that is closed; until there is one, the boxes of the start are answered, which ends it.
    // Outlives this object's turns.
    void setWindow(frmMain* window);
    bool isAsked() const { return turns_.isActive(); }
    void ask();  // any number of times

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void turn();
    bool mayClose() const;

    platform::EndSignals signals_;
    QPointer<frmMain> window_;
    QTimer turns_;
};
