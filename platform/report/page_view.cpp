#include "platform/report/page_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace report {
namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kGap = 12;  // pixels around a page
constexpr double kZoomStep = 1.25;
const QColor kDesk(0x80, 0x84, 0x8A);
const QColor kEdge(0x55, 0x58, 0x5C);
const QColor kFound(255, 240, 150);
const QColor kFoundNow(255, 180, 70);

}  // namespace

PageView::PageView(const Document& document, QWidget* parent)
    : QAbstractScrollArea(parent), document_(document) {
    setObjectName(QStringLiteral("PageView"));
    setAccessibleName(QStringLiteral("Strane dokumenta"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::ArrowCursor);
    layOut();
}

double PageView::scale() const {
    return zoom_ * logicalDpiX() / kTwipsPerInch;
}

QSizeF PageView::pageSize() const {
    return {std::round(document_.width * scale()), std::round(document_.height * scale())};
}

double PageView::topOf(int page) const {
    return kGap + (page - 1) * (pageSize().height() + kGap);
}

QPointF PageView::corner(int page) const {
    const double spare = viewport()->width() - pageSize().width();
    const double left = spare > 2 * kGap ? std::floor(spare / 2) : kGap - horizontalScrollBar()->value();
    return {left, topOf(page) - verticalScrollBar()->value()};
}

void PageView::layOut() {
    const QSizeF sheet = pageSize();
    const int height = static_cast<int>(topOf(document_.pageCount() + 1));
    const int width = static_cast<int>(sheet.width()) + 2 * kGap;
    verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(40);
    viewport()->update();
}

// The spot that the person looks at stays where it is.
void PageView::changeScale(double zoom, const QPointF& around) {
    const double wanted = std::clamp(zoom, kLeastZoom, kMostZoom);
    if (wanted == zoom_) {
        layOut();
        return;
    }
    const int at = std::clamp(
        static_cast<int>((verticalScrollBar()->value() + around.y() - kGap) / (pageSize().height() + kGap)) +
            1,
        1, std::max(1, document_.pageCount()));
    const double scaleBefore = scale();
    const QPointF before = (around - corner(at)) / scaleBefore;
    zoom_ = wanted;
    layOut();
    // The gap above a page is as high at any zoom.
    const double into = before.y() < 0 ? before.y() * scaleBefore : before.y() * scale();
    const double top = topOf(at) + into - around.y();
    const int stay = goneTo_;
    verticalScrollBar()->setValue(static_cast<int>(std::lround(top)));
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(kGap + before.x() * scale() - around.x())));
    goneTo_ = stay;
    emit zoomChanged(zoom_);
    tellPage();
}

void PageView::setZoom(double zoom) {
    fit_ = Fit::None;
    changeScale(zoom, QPointF(viewport()->width() / 2.0, viewport()->height() / 2.0));
}

void PageView::zoomIn() {
    setZoom(zoom_ * kZoomStep);
}

void PageView::zoomOut() {
    setZoom(zoom_ / kZoomStep);
}

void PageView::setFit(Fit fit) {
    fit_ = fit;
    applyFit();
    emit zoomChanged(zoom_);
}

void PageView::applyFit() {
    if (fit_ == Fit::None) {
        layOut();
        return;
    }
    const double perTwip = static_cast<double>(logicalDpiX()) / kTwipsPerInch;
    // The scroll bar is there or not by what this comes to; without reckoning it as there, the two would
    // chase each other.
    const int bar = verticalScrollBar()->isVisible() || document_.pageCount() < 2
                        ? 0
                        : verticalScrollBar()->sizeHint().width();
    const double across = (viewport()->width() - bar - 2.0 * kGap) / (document_.width * perTwip);
    const double down = (viewport()->height() - 2.0 * kGap) / (document_.height * perTwip);
    const int stay = page();
    changeScale(fit_ == Fit::Width ? across : std::min(across, down), QPointF(viewport()->width() / 2.0, 0));
    if (fit_ == Fit::Page) {
        showPage(stay);
    }
}

int PageView::page() const {
    if (goneTo_ > 0) {
        return goneTo_;
    }
    const double step = pageSize().height() + kGap;
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    const int page = static_cast<int>(std::floor((middle - kGap) / step)) + 1;
    return std::clamp(page, 1, std::max(1, document_.pageCount()));
}

void PageView::scrollTo(int page, double top) {
    const int wanted = std::clamp(page, 1, std::max(1, document_.pageCount()));
    verticalScrollBar()->setValue(static_cast<int>(topOf(wanted) + top * scale()) - kGap);
    goneTo_ = wanted;
    tellPage();
}

void PageView::showPage(int page) {
    scrollTo(page, 0);
}

void PageView::showPlace(int page, double top) {
    scrollTo(page, top);
}

void PageView::showHits(const QList<Hit>& hits, int current) {
    hits_ = hits;
    currentHit_ = current;
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
    goneTo_ = hit.page;
    tellPage();
}

QRectF PageView::placeInView(int page, const QRectF& twips) const {
    const QPointF sheet = corner(page);
    return {sheet + twips.topLeft() * scale(), twips.size() * scale()};
}

void PageView::tellPage() {
    const int now = page();
    if (now != toldPage_) {
        toldPage_ = now;
        emit pageChanged(now);
    }
}

void PageView::paintPage(QPainter& painter, int page, const QRectF& seen) {
    const QRectF sheet(corner(page), pageSize());
    painter.fillRect(sheet, Qt::white);
    painter.setPen(kEdge);
    painter.drawRect(sheet.adjusted(-0.5, -0.5, 0.5, 0.5));
    painter.save();
    painter.setClipRect(sheet);
    painter.translate(sheet.topLeft());
    painter.scale(scale(), scale());
    const QRectF part = seen.intersected(sheet).translated(-sheet.topLeft());
    document_.paint(painter, page, QRectF(part.topLeft() / scale(), part.size() / scale()));
    painter.restore();
    paintHits(painter, page);
}

// As a marker pen does it: the print under it stays black.
void PageView::paintHits(QPainter& painter, int page) {
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    const auto byPage = [](const Hit& hit, int number) { return hit.page < number; };
    auto hit = std::lower_bound(hits_.constBegin(), hits_.constEnd(), page, byPage);
    for (; hit != hits_.constEnd() && hit->page == page; ++hit) {
        const QColor mark = hit - hits_.constBegin() == currentHit_ ? kFoundNow : kFound;
        painter.fillRect(placeInView(page, hit->place), mark);
        for (const QRectF& further : hit->further) {
            painter.fillRect(placeInView(page, further), mark);
        }
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), kDesk);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const double step = pageSize().height() + kGap;
    const int scrolled = verticalScrollBar()->value();
    const int first = std::max(1, static_cast<int>(std::floor((scrolled + event->rect().top()) / step)));
    for (int page = first; page <= document_.pageCount(); ++page) {
        const QRectF sheet(corner(page), pageSize());
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
    applyFit();
}

void PageView::scrollContentsBy(int, int) {
    goneTo_ = 0;
    viewport()->update();
    tellPage();
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
            goneTo_ = document_.pageCount();
            tellPage();
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
    fit_ = Fit::None;
    changeScale(zoom_ * std::pow(kZoomStep, event->angleDelta().y() / 120.0), event->position());
    event->accept();
}

}  // namespace report
