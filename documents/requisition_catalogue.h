#pragma once

#include <QObject>
#include <QString>

#include "catalogue/catalogue_parent.h"

class QDropEvent;
class QPoint;
class QWidget;
class RequisitionList;

// The catalogue over the requisition: opens it, and is what it knows of the requisition. What is dragged out
// of it comes down on the window, and is told to it.
class RequisitionCatalogue : public QObject, public CatalogueParent {
    Q_OBJECT
 public:
    RequisitionCatalogue(RequisitionList& list, QWidget* window);

    void open();  // returns when it is closed

    QWidget* asWindow() override { return window_; }
    qint32 ServiceID() const override;
    platform::DataControl& requisitionData() override;
    platform::ListView& requisitionList() override;
    void UpdateDATA(const QString& itemKey, bool resetSort) override;
    void TrebovanjeRefresh(bool resetSort) override;
    void setDragEvents(ParentDragEvents* events) override;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    bool drag(QDropEvent& event);  // true: a product over the window, and somebody listens
    bool overList(const QPoint& place) const;

    RequisitionList& list_;
    QWidget* window_;
    ParentDragEvents* dragEvents_ = nullptr;
};
