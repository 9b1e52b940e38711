#pragma once

#include <QList>
#include <QObject>
#include <QString>

class QWidget;
class RequisitionBar;
namespace platform {
class StatusBar;
}

// The status bar of the requisition: what is under the pointer, and else what there is to say of the list.
class RequisitionStatus : public QObject {
    Q_OBJECT
 public:
    explicit RequisitionStatus(QWidget& window);

    platform::StatusBar& bar() const { return *statusBar_; }
    // The parts of the window over which the pointer is followed, also where no button is held down: the
    // toolbar with its buttons, which tell of themselves, and the others, which bring `standing` back.
    void watch(const RequisitionBar& bar, const QList<QWidget*>& others);
    void show(const QString& text);  // empty: what stands there otherwise
    void setStanding(const QString& text);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    platform::StatusBar* statusBar_;
    const RequisitionBar* toolbar_ = nullptr;
    QString standing_;
};
