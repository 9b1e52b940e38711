#include "platform/report/page_sheets.h"

#include <QAbstractScrollArea>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platform/report/document.h"

namespace report {
namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kScrollStep = 40;

}  // namespace

double PageSheets::scale() const {
    return zoom_ * area_.logicalDpiX() / kTwipsPerInch;
}

double PageSheets::perTwip() const {
    return static_cast<double>(area_.logicalDpiX()) / kTwipsPerInch;
}

QSizeF PageSheets::size() const {
    return {std::round(document_.width * scale()), std::round(document_.height * scale())};
}

double PageSheets::topOf(int page) const {
    return kGap + (page - 1) * (size().height() + kGap);
}

QPointF PageSheets::corner(int page) const {
    const double spare = area_.viewport()->width() - size().width();
    const double left =
        spare > 2 * kGap ? std::floor(spare / 2) : kGap - area_.horizontalScrollBar()->value();
    return {left, topOf(page) - area_.verticalScrollBar()->value()};
}

QRectF PageSheets::place(int page, const QRectF& twips) const {
    const QPointF sheet = corner(page);
    return {sheet + twips.topLeft() * scale(), twips.size() * scale()};
}

int PageSheets::at(double y) const {
    return nearest(static_cast<int>(std::floor((y - kGap) / (size().height() + kGap))) + 1);
}

int PageSheets::nearest(int page) const {
    return std::clamp(page, 1, std::max(1, document_.pageCount()));
}

void PageSheets::layOut() {
    const QWidget& seen = *area_.viewport();
    const int height = static_cast<int>(topOf(document_.pageCount() + 1));
    const int width = static_cast<int>(size().width()) + 2 * kGap;
    QScrollBar& down = *area_.verticalScrollBar();
    down.setRange(0, std::max(0, height - seen.height()));
    down.setPageStep(seen.height());
    down.setSingleStep(kScrollStep);
    QScrollBar& across = *area_.horizontalScrollBar();
    across.setRange(0, std::max(0, width - seen.width()));
    across.setPageStep(seen.width());
    across.setSingleStep(kScrollStep);
    area_.viewport()->update();
}

}  // namespace report
