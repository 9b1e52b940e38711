#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>

#include "catalogue/catalogue_parent.h"

class QDrag;
class QDragMoveEvent;
class QDropEvent;
class QMouseEvent;
class QWidget;
namespace platform {
class ListView;
}

// The drag of a product from the list onto the requisition: begun by the mouse over the list, watched over
// both windows, and told as `dropped` once its own loop has ended.
class ProductDrag : public QObject, public ParentDragEvents {
    Q_OBJECT
 public:
    ProductDrag(platform::ListView* list, QWidget* window);

    // Of the product list's surface; true: dealt with.
    bool mouse(const QMouseEvent& event);
    // What the pointer shows while a product is dragged: "drag", "nodrop", or empty.
    const QString& icon() const { return icon_; }

    // ParentDragEvents
    void parentDragOver(State state, bool overList) override;
    void parentDrop() override;

 signals:
    void dropped();  // on the requisition; the catalogue is on top again

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;  // of the catalogue's window

 private:
    void begin();
    void over(QDragMoveEvent& event);
    void drop(QDropEvent& event);
    void setIcon(const QString& key);
    void drawSoon();

    platform::ListView* list_;
    QWidget* window_;
    QPoint pressedAt_;
    QPointer<QDrag> drag_;
    QString icon_;
    bool pressed_ = false;      // on the product list, and not dragged away yet
    bool drawPending_ = false;  // a drop happened; the drag's own loop still runs
};
