#pragma once

#include <QString>
#include <QtGlobal>

class QWidget;
namespace platform {
class DataControl;
class ListView;
}  // namespace platform

// A drag of the catalogue's product list over its parent window, told to the catalogue.
class ParentDragEvents {
 public:
    enum class State { Enter, Over, Leave };
    virtual ~ParentDragEvents() = default;
    virtual void parentDragOver(State state, bool overList) = 0;  // overList: strictly inside the list
    virtual void parentDrop() = 0;                                // anywhere on the parent's surface
};

// What the catalogue knows of the window that opened it: the requisition of one service.
class CatalogueParent {
 public:
    virtual ~CatalogueParent() = default;
    virtual QWidget* asWindow() = 0;
    virtual qint32 ServiceID() const = 0;
    virtual platform::DataControl& requisitionData() = 0;  // rows of InvoiceData of that service
    virtual platform::ListView& requisitionList() = 0;     // rows keyed "K" and the product's number
    virtual void UpdateDATA(const QString& itemKey, bool resetSort) = 0;
    virtual void TrebovanjeRefresh(bool resetSort) = 0;
    // Where the parent tells of drags over it from now on; nullptr: nobody listens any more, and the parent
    // takes no drops.
    virtual void setDragEvents(ParentDragEvents* events) = 0;
};

// The kind of data that a dragged product has.
inline constexpr const char* kProductDragFormat = "application/x-tarvello-product";
