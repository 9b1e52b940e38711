#include "platform/report/page_zoom.h"

#include <QAbstractScrollArea>
#include <QPointF>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platform/report/current_page.h"
#include "platform/report/document.h"
#include "platform/report/page_sheets.h"

namespace report {
namespace {

constexpr double kStep = 1.25;
constexpr int kGap = PageSheets::kGap;

}  // namespace

double PageZoom::factor() const {
    return sheets_.zoom();
}

// The spot that the person looks at stays where it is.
void PageZoom::change(double factor, const QPointF& around) {
    const double wanted = std::clamp(factor, kLeast, kMost);
    if (wanted == sheets_.zoom()) {
        sheets_.layOut();
        return;
    }
    QScrollBar& down = *area_.verticalScrollBar();
    const int at = sheets_.at(down.value() + around.y());
    const double scaleBefore = sheets_.scale();
    const QPointF before = (around - sheets_.corner(at)) / scaleBefore;
    sheets_.setZoom(wanted);
    sheets_.layOut();
    // The gap above a page is as high at any zoom.
    const double into = before.y() < 0 ? before.y() * scaleBefore : before.y() * sheets_.scale();
    const double left = kGap + before.x() * sheets_.scale() - around.x();
    const int stay = current_.goneTo();
    down.setValue(static_cast<int>(std::lround(sheets_.topOf(at) + into - around.y())));
    area_.horizontalScrollBar()->setValue(static_cast<int>(std::lround(left)));
    current_.setGoneTo(stay);
    emit changed(wanted);
    current_.tell();
}

void PageZoom::set(double factor) {
    fit_ = Fit::None;
    change(factor, QPointF(area_.viewport()->width() / 2.0, area_.viewport()->height() / 2.0));
}

void PageZoom::in() {
    set(factor() * kStep);
}

void PageZoom::out() {
    set(factor() / kStep);
}

void PageZoom::turn(double steps, const QPointF& around) {
    fit_ = Fit::None;
    change(factor() * std::pow(kStep, steps), around);
}

void PageZoom::setFit(Fit fit) {
    fit_ = fit;
    fitAgain();
    emit changed(factor());
}

void PageZoom::fitAgain() {
    if (fit_ == Fit::None) {
        sheets_.layOut();
        return;
    }
    // The scroll bar is there or not by what this comes to; without reckoning it as there, the two would
    // chase each other.
    const QScrollBar& down = *area_.verticalScrollBar();
    const int bar = down.isVisible() || document_.pageCount() < 2 ? 0 : down.sizeHint().width();
    const double perTwip = sheets_.perTwip();
    const double wide = (area_.viewport()->width() - bar - 2.0 * kGap) / (document_.width * perTwip);
    const double high = (area_.viewport()->height() - 2.0 * kGap) / (document_.height * perTwip);
    const int stay = current_.number();
    change(fit_ == Fit::Width ? wide : std::min(wide, high), QPointF(area_.viewport()->width() / 2.0, 0));
    if (fit_ == Fit::Page) {
        current_.show(stay, 0);
    }
}

}  // namespace report
