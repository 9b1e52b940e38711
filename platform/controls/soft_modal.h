#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QWidget;

namespace platform {

// As long as it lives, the other windows that were there at its beginning take nothing from mouse or keyboard
// and cannot be closed; a click on one of them brings this one forward. Unlike a modal window's, its owner
// still takes what is dragged onto it. Boxes and windows opened later work as ever.
class SoftModal : public QObject {
    Q_OBJECT
 public:
    explicit SoftModal(QWidget* window);
    ~SoftModal() override;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    bool isBlocked(const QObject* watched) const;
    void bringForward();
    QPointer<QWidget> window_;
    QList<QPointer<QWidget>> blocked_;
};

}  // namespace platform
