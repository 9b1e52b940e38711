#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

class QAbstractScrollArea;

namespace report {

class Document;

// The sheets of a document, one under the other, at any zoom: where each of them lies in the scroll area that
// shows them. Pages count from 1; lengths are pixels where nothing else is told.
class PageSheets {
 public:
    // Both must live as long as this.
    PageSheets(const Document& document, QAbstractScrollArea& area) : document_(document), area_(area) {}

    double zoom() const { return zoom_; }  // 1: as large as on paper
    void setZoom(double zoom) { zoom_ = zoom; }
    double scale() const;                               // pixels to a twip
    double perTwip() const;                             // the same at the zoom 1
    QSizeF size() const;                                // of a sheet
    double topOf(int page) const;                       // of the page's sheet, from the top of all pages
    QPointF corner(int page) const;                     // of the page's sheet in the viewport
    QRectF place(int page, const QRectF& twips) const;  // in the viewport
    int at(double y) const;                             // the page there, from the top of all pages
    int nearest(int page) const;                        // the page that there is; 1 where there is none
    void layOut();                                      // brings the scroll bars to what there is to show

    static constexpr int kGap = 12;  // around a page

 private:
    const Document& document_;
    QAbstractScrollArea& area_;
    double zoom_ = 1;
};

}  // namespace report
