#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

class QDialogButtonBox;
class QLabel;

namespace platform {

// Over all windows while somebody waits: what is being done, a moving bar, the seconds, and the way out. It
// stays until it is taken away, also when it was left: what is being done has to come to its end first.
class WaitSign : public QDialog {
    Q_OBJECT
 public:
    // `parent` may be nullptr; `since`: when the waiting began.
    WaitSign(QWidget* parent, const QString& doing, const QElapsedTimer& since);

    void setLeavable(bool leavable);  // at the start it is
    void reject() override;           // leaves it

 signals:
    void left();  // once

 private:
    void tellSeconds();

    QLabel* seconds_;
    QDialogButtonBox* buttons_;
    QElapsedTimer since_;
    QTimer turns_;
    bool leavable_ = true;
    bool left_ = false;
};

}  // namespace platform
