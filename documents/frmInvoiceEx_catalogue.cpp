// The catalogue over the requisition, and what is dragged out of it.
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>

#include "catalogue/frmKonfiguratorEx.h"
#include "documents/frmInvoiceEx.h"

namespace {

bool holdsProduct(const QDropEvent& event) {
    return event.mimeData() && event.mimeData()->hasFormat(QLatin1String(kProductDragFormat));
}

}  // namespace

void frmInvoiceEx::openCatalogue() {
    frmKonfiguratorEx catalogue(this);
    catalogue.setParentForm(this);
    catalogue.Display();
    catalogue.Unload();
}

void frmInvoiceEx::setDragEvents(ParentDragEvents* events) {
    dragEvents_ = events;
    setAcceptDrops(events != nullptr);
}

// Strictly inside: a product let go on the frame was aimed at nothing.
bool frmInvoiceEx::overList(const QPoint& place) const {
    const QRect list = ListView1->geometry();
    return place.x() > list.left() && place.x() < list.left() + list.width() && place.y() > list.top() &&
           place.y() < list.top() + list.height();
}

void frmInvoiceEx::dragEnterEvent(QDragEnterEvent* event) {
    if (!dragEvents_ || !holdsProduct(*event)) {
        return;
    }
    event->acceptProposedAction();
    dragEvents_->parentDragOver(ParentDragEvents::State::Enter, overList(event->position().toPoint()));
}

void frmInvoiceEx::dragMoveEvent(QDragMoveEvent* event) {
    if (!dragEvents_ || !holdsProduct(*event)) {
        return;
    }
    event->acceptProposedAction();
    dragEvents_->parentDragOver(ParentDragEvents::State::Over, overList(event->position().toPoint()));
}

void frmInvoiceEx::dragLeaveEvent(QDragLeaveEvent* event) {
    event->accept();
    if (dragEvents_) {
        dragEvents_->parentDragOver(ParentDragEvents::State::Leave, false);
    }
}

void frmInvoiceEx::dropEvent(QDropEvent* event) {
    if (!dragEvents_ || !holdsProduct(*event)) {
        return;
    }
    event->acceptProposedAction();
    dragEvents_->parentDrop();
}
