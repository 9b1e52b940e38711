#include "platform/report/page_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace report {
namespace {

constexpr int kGap = PageSheets::kGap;
constexpr double kWheelStep = 120.0;  // what the toolkit counts for one of them
const QColor kDesk(0x80, 0x84, 0x8A);
const QColor kEdge(0x55, 0x58, 0x5C);

}  // namespace

PageView::PageView(const Document& document, QWidget* parent)
    : QAbstractScrollArea(parent),
      document_(document),
      sheets_(document, *this),
      current_(sheets_, *this),
      zoom_(document, sheets_, current_, *this) {
    setObjectName(QStringLiteral("PageView"));
    setAccessibleName(QStringLiteral("Strane dokumenta"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::ArrowCursor);
    connect(&current_, &CurrentPage::changed, this, &PageView::pageChanged);
    sheets_.layOut();
}

void PageView::showHits(const QList<Hit>& hits, int current) {
    marks_.set(hits, current);
    viewport()->update();
    if (current < 0 || current >= hits.size()) {
        return;
    }
    const Hit& hit = hits.at(current);
    const QRectF place = placeInView(hit.page, hit.place);
    const QRectF seen = QRectF(viewport()->rect()).adjusted(kGap, kGap, -kGap, -kGap);
    if (place.top() < seen.top() || place.bottom() > seen.bottom()) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                      static_cast<int>(place.center().y() - seen.center().y()));
    }
    if (place.left() < seen.left() || place.right() > seen.right()) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                        static_cast<int>(place.center().x() - seen.center().x()));
    }
    current_.setGoneTo(hit.page);
    current_.tell();
}

void PageView::paintPage(QPainter& painter, int page, const QRectF& seen) {
    const QRectF sheet(sheets_.corner(page), sheets_.size());
    const double scale = sheets_.scale();
    painter.fillRect(sheet, Qt::white);
    painter.setPen(kEdge);
    painter.drawRect(sheet.adjusted(-0.5, -0.5, 0.5, 0.5));
    painter.save();
    painter.setClipRect(sheet);
    painter.translate(sheet.topLeft());
    painter.scale(scale, scale);
    const QRectF part = seen.intersected(sheet).translated(-sheet.topLeft());
    document_.paint(painter, page, QRectF(part.topLeft() / scale, part.size() / scale));
    painter.restore();
    marks_.paint(painter, page, sheets_);
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), kDesk);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const double step = sheets_.size().height() + kGap;
    const int scrolled = verticalScrollBar()->value();
    const int first = std::max(1, static_cast<int>(std::floor((scrolled + event->rect().top()) / step)));
    for (int page = first; page <= document_.pageCount(); ++page) {
        const QRectF sheet(sheets_.corner(page), sheets_.size());
        if (sheet.top() > event->rect().bottom()) {
            break;
        }
        if (sheet.bottom() >= event->rect().top()) {
            paintPage(painter, page, event->rect());
        }
    }
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    zoom_.fitAgain();
}

void PageView::scrollContentsBy(int, int) {
    current_.scrolled();
}

void PageView::keyPressEvent(QKeyEvent* event) {
    QScrollBar* down = verticalScrollBar();
    switch (event->key()) {
        case Qt::Key_Home:
            showPage(1);
            return;
        case Qt::Key_End:
            showPage(document_.pageCount());
            down->setValue(down->maximum());
            current_.setGoneTo(document_.pageCount());
            current_.tell();
            return;
        case Qt::Key_Space:
            down->triggerAction(event->modifiers() & Qt::ShiftModifier ? QScrollBar::SliderPageStepSub
                                                                       : QScrollBar::SliderPageStepAdd);
            return;
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    zoom_.turn(event->angleDelta().y() / kWheelStep, event->position());
    event->accept();
}

}  // namespace report
