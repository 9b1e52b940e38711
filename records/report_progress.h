#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <cstdint>

class QProgressBar;
class QWidget;
namespace platform {
class StatusBar;
}

// Keeps the windows alive while a long report is being written: they are painted, can be moved and closed,
// and take no other command meanwhile. A report that takes a while shows how far it is, in the place of the
// clock.
class ReportProgress : public QObject {
    Q_OBJECT
 public:
    // `bar` may be nullptr: then nothing is shown. Both may go while this lives. `turn`: milliseconds.
    ReportProgress(QWidget* window, platform::StatusBar* bar, int turn);
    ~ReportProgress() override;

    // Cheap; once in a turn it lets the windows do what waits for them, and anything may be closed then.
    void tell(std::int64_t done, std::int64_t total);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void show(std::int64_t done, std::int64_t total);

    QPointer<QWidget> window_;
    QPointer<platform::StatusBar> bar_;
    QPointer<QProgressBar> shown_;
    int turn_;
    QElapsedTimer sinceTurn_;
};
