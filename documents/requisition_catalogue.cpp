#include "documents/requisition_catalogue.h"

#include <QDropEvent>
#include <QMimeData>

#include "catalogue/frmKonfiguratorEx.h"
#include "documents/requisition_list.h"

RequisitionCatalogue::RequisitionCatalogue(RequisitionList& list, QWidget* window)
    : QObject(window), list_(list), window_(window) {
    window_->installEventFilter(this);
}

void RequisitionCatalogue::open() {
    frmKonfiguratorEx catalogue(window_);
    catalogue.setParentForm(this);
    catalogue.Display();
    catalogue.Unload();
}

qint32 RequisitionCatalogue::ServiceID() const {
    return list_.serviceId;
}

platform::DataControl& RequisitionCatalogue::requisitionData() {
    return list_.data();
}

platform::ListView& RequisitionCatalogue::requisitionList() {
    return list_.view();
}

void RequisitionCatalogue::UpdateDATA(const QString& itemKey, bool resetSort) {
    list_.update(itemKey, resetSort);
}

void RequisitionCatalogue::TrebovanjeRefresh(bool resetSort) {
    list_.refresh(resetSort);
}

// Drags
// ----------------------------------------------------------------------------------------------------------

void RequisitionCatalogue::setDragEvents(ParentDragEvents* events) {
    dragEvents_ = events;
    window_->setAcceptDrops(events != nullptr);
}

bool RequisitionCatalogue::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
            return drag(static_cast<QDropEvent&>(*event));
        case QEvent::DragLeave:
            if (dragEvents_) {
                dragEvents_->parentDragOver(ParentDragEvents::State::Leave, false);
            }
            return true;
        default:
            return QObject::eventFilter(watched, event);
    }
}

bool RequisitionCatalogue::drag(QDropEvent& event) {
    using State = ParentDragEvents::State;
    if (!dragEvents_ || !event.mimeData() ||
        !event.mimeData()->hasFormat(QLatin1String(kProductDragFormat))) {
        return false;
    }
    event.acceptProposedAction();
    if (event.type() == QEvent::Drop) {
        dragEvents_->parentDrop();
    } else {
        dragEvents_->parentDragOver(event.type() == QEvent::DragEnter ? State::Enter : State::Over,
                                    overList(event.position().toPoint()));
    }
    return true;
}

// Strictly inside: a product let go on the frame was aimed at nothing.
bool RequisitionCatalogue::overList(const QPoint& place) const {
    const QRect list = list_.view().geometry();
    return place.x() > list.left() && place.x() < list.left() + list.width() && place.y() > list.top() &&
           place.y() < list.top() + list.height();
}
