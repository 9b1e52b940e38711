#include "catalogue/product_drag.h"

#include <QApplication>
#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>
#include <utility>

#include "catalogue/product_columns.h"
#include "platform/controls/list_view.h"
#include "platform/controls/pictures.h"

namespace {

constexpr int kDragIconSize = 32;

}  // namespace

ProductDrag::ProductDrag(platform::ListView* list, QWidget* window) : list_(list), window_(window) {
    window_->installEventFilter(this);
}

// With the button down the pointer draws a product, it does not sweep over the rows.
bool ProductDrag::mouse(const QMouseEvent& event) {
    const QPoint at = event.position().toPoint();
    if (event.type() == QEvent::MouseButtonPress) {
        pressed_ = event.button() == Qt::LeftButton;
        pressedAt_ = at;
        return false;
    }
    if (!event.buttons().testFlag(Qt::LeftButton)) {
        return false;
    }
    const bool far = (at - pressedAt_).manhattanLength() >= QApplication::startDragDistance();
    const platform::ListItem* item = list_->selectedItem();
    if (pressed_ && far && item && ProductRow(*item).stock() != 0) {
        pressed_ = false;
        begin();
    }
    return true;
}

void ProductDrag::begin() {
    auto* product = new QMimeData;
    product->setData(QLatin1String(kProductDragFormat), list_->selectedItem()->Key.toUtf8());
    QRect row = list_->visualRect(list_->currentIndex());
    row.setLeft(0);
    row.setRight(list_->viewport()->width());
    drag_ = new QDrag(list_);
    drag_->setMimeData(product);
    drag_->setPixmap(list_->viewport()->grab(row));
    drag_->setHotSpot(QPoint(-8, -8));
    drag_->exec(Qt::CopyAction);
    drag_ = nullptr;
    setIcon(QString());
    if (std::exchange(drawPending_, false)) {
        drawSoon();
    }
}

void ProductDrag::setIcon(const QString& key) {
    icon_ = key;
    if (!drag_) {
        return;
    }
    QPixmap picture;
    if (!key.isEmpty()) {
        picture =
            platform::icon(key == QLatin1String("drag") ? QStringLiteral("Drag") : QStringLiteral("NoDrop"))
                .pixmap(kDragIconSize);
    }
    for (const Qt::DropAction action : {Qt::CopyAction, Qt::MoveAction, Qt::IgnoreAction}) {
        drag_->setDragCursor(picture, action);
    }
}

bool ProductDrag::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove:
            over(*static_cast<QDragMoveEvent*>(event));
            return true;
        case QEvent::DragLeave:
            setIcon(QString());
            return true;
        case QEvent::Drop:
            drop(*static_cast<QDropEvent*>(event));
            return true;
        default:
            return QObject::eventFilter(watched, event);
    }
}

// The catalogue itself takes no product; only its list, where the way back lies, shows no refusal.
void ProductDrag::over(QDragMoveEvent& event) {
    if (!event.mimeData()->hasFormat(QLatin1String(kProductDragFormat))) {
        return;
    }
    const QPoint at = list_->mapFrom(window_, event.position().toPoint());
    setIcon(list_->rect().contains(at) ? QStringLiteral("drag") : QStringLiteral("nodrop"));
    event.setDropAction(Qt::IgnoreAction);
    event.accept();
}

void ProductDrag::drop(QDropEvent& event) {
    setIcon(QString());
    event.setDropAction(Qt::IgnoreAction);
    event.accept();
}

void ProductDrag::parentDragOver(State state, bool overList) {
    setIcon(state == State::Leave ? QString() : overList ? QStringLiteral("drag") : QStringLiteral("nodrop"));
}

// The drag's own loop still runs here; boxes can open only when it has ended.
void ProductDrag::parentDrop() {
    if (drag_) {
        drawPending_ = true;
    } else {
        drawSoon();
    }
}

void ProductDrag::drawSoon() {
    QTimer::singleShot(0, this, [this] {
        if (!window_->isVisible()) {
            return;
        }
        window_->activateWindow();
        emit dropped();
    });
}
