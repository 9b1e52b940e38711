#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QProgressBar;

namespace report {

// How far a report has come, with a way out. Comes up only when the run takes noticeably long: a window that
// flashes by for an invoice of three rows only startles.
class ProgressWindow : public QDialog {
    Q_OBJECT
 public:
    explicit ProgressWindow(QWidget* owner);
    // Shows the rows done and lets the person act. False once the run has been cancelled.
    bool show(qint64 done, qint64 all);
    void reject() override { cancelled_ = true; }

 private:
    QProgressBar* bar_;
    QElapsedTimer running_, shown_;
    bool cancelled_ = false;
};

}  // namespace report
