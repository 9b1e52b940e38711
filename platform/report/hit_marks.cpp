#include "platform/report/hit_marks.h"

#include <QPainter>
#include <algorithm>

#include "platform/report/page_sheets.h"

namespace report {
namespace {

const QColor kFound(255, 240, 150);
const QColor kFoundNow(255, 180, 70);

}  // namespace

void HitMarks::set(const QList<Hit>& hits, int current) {
    hits_ = hits;
    current_ = current;
}

// The print under a mark stays black.
void HitMarks::paint(QPainter& painter, int page, const PageSheets& sheets) const {
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    const auto byPage = [](const Hit& hit, int number) { return hit.page < number; };
    auto hit = std::lower_bound(hits_.constBegin(), hits_.constEnd(), page, byPage);
    for (; hit != hits_.constEnd() && hit->page == page; ++hit) {
        const QColor mark = hit - hits_.constBegin() == current_ ? kFoundNow : kFound;
        painter.fillRect(sheets.place(page, hit->place), mark);
        for (const QRectF& further : hit->further) {
            painter.fillRect(sheets.place(page, further), mark);
        }
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace report
