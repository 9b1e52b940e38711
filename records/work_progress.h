#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>
#include <cstdint>

class QProgressBar;
class QWidget;
namespace platform {
class StatusBar;
}

// Keeps the windows alive while something long is being done, a report being written or a backup: they are
// painted, can be moved and closed, and take no other command meanwhile. What takes a while shows how far it
// is, in the place of the clock.
class WorkProgress : public QObject {
    Q_OBJECT
 public:
    // `bar` may be nullptr: then nothing is shown. Both may go while this lives. `name`: what is being done,
    // for those who hear the window. `turn`: milliseconds between two turns of the windows; `first`: before
    // anything is shown.
    WorkProgress(QWidget* window, platform::StatusBar* bar, const QString& name, int turn, int first);
    ~WorkProgress() override;

    // Cheap; once in a turn it lets the windows do what waits for them, and anything may be closed then.
    void tell(std::int64_t done, std::int64_t total);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void show(std::int64_t done, std::int64_t total);

    QPointer<QWidget> window_;
    QPointer<platform::StatusBar> bar_;
    QPointer<QProgressBar> shown_;
    QString name_;
    int turn_;
    int first_;
    QElapsedTimer since_, sinceTurn_;
};
