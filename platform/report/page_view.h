#pragma once

#include <QAbstractScrollArea>
#include <QList>

#include "platform/report/current_page.h"
#include "platform/report/document.h"
#include "platform/report/hit_marks.h"
#include "platform/report/page_sheets.h"
#include "platform/report/page_zoom.h"

namespace report {

// The pages of a document, one under the other, at any zoom. Only what is seen is painted, however many pages
// there are.
class PageView : public QAbstractScrollArea {
    Q_OBJECT
 public:
    // The document must live as long as this.
    explicit PageView(const Document& document, QWidget* parent = nullptr);

    PageZoom& zoom() { return zoom_; }
    int page() const { return current_.number(); }  // from 1
    void showPage(int page) { current_.show(page, 0); }
    void showPlace(int page, double top) { current_.show(page, top); }  // twips
    void showHits(const QList<Hit>& hits, int current);  // marks all, scrolls to that one; -1: to none
    const QList<Hit>& hits() const { return marks_.hits(); }
    // In pixels of the viewport.
    QRectF placeInView(int page, const QRectF& twips) const { return sheets_.place(page, twips); }

 signals:
    void pageChanged(int page);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    void paintPage(QPainter& painter, int page, const QRectF& seen);

    const Document& document_;
    PageSheets sheets_;
    CurrentPage current_;
    PageZoom zoom_;
    HitMarks marks_;
};

}  // namespace report
