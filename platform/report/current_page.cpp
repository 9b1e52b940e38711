#include "platform/report/current_page.h"

#include <QAbstractScrollArea>
#include <QScrollBar>

#include "platform/report/page_sheets.h"

namespace report {

int CurrentPage::number() const {
    if (goneTo_ > 0) {
        return goneTo_;
    }
    return sheets_.at(area_.verticalScrollBar()->value() + area_.viewport()->height() / 2.0);
}

void CurrentPage::show(int page, double top) {
    const int wanted = sheets_.nearest(page);
    area_.verticalScrollBar()->setValue(static_cast<int>(sheets_.topOf(wanted) + top * sheets_.scale()) -
                                        PageSheets::kGap);
    goneTo_ = wanted;
    tell();
}

void CurrentPage::scrolled() {
    goneTo_ = 0;
    area_.viewport()->update();
    tell();
}

void CurrentPage::tell() {
    const int now = number();
    if (now != told_) {
        told_ = now;
        emit changed(now);
    }
}

}  // namespace report
