#pragma once

#include <QList>

#include "platform/report/document.h"

class QPainter;

namespace report {

class PageSheets;

// The places that a search has found, marked on the pages as a marker pen does it; one of them is the one
// that the person is at.
class HitMarks {
 public:
    void set(const QList<Hit>& hits, int current);  // -1: at none
    const QList<Hit>& hits() const { return hits_; }
    void paint(QPainter& painter, int page, const PageSheets& sheets) const;

 private:
    QList<Hit> hits_;
    int current_ = -1;
};

}  // namespace report
