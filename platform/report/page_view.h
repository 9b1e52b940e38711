#pragma once

#include <QAbstractScrollArea>
#include <QList>

#include "platform/report/document.h"

namespace report {

// The pages of a document, one under the other, at any zoom. Only what is seen is painted, however many pages
// there are.
class PageView : public QAbstractScrollArea {
    Q_OBJECT
 public:
    enum class Fit { None, Page, Width };

    // The document must live as long as this.
    explicit PageView(const Document& document, QWidget* parent = nullptr);

    double zoom() const { return zoom_; }  // 1: as large as on paper
    void setZoom(double zoom);             // kept between kLeastZoom and kMostZoom; ends a fit
    Fit fit() const { return fit_; }
    void setFit(Fit fit);  // holds while the window changes its size
    void zoomIn();
    void zoomOut();

    // From 1: the page that was gone to, until the view is scrolled; then the one in its middle.
    int page() const;
    void showPage(int page);
    void showPlace(int page, double top);                // twips
    void showHits(const QList<Hit>& hits, int current);  // marks all, scrolls to that one; -1: to none
    const QList<Hit>& hits() const { return hits_; }
    QRectF placeInView(int page, const QRectF& twips) const;  // in pixels of the viewport

    static constexpr double kLeastZoom = 0.1, kMostZoom = 8.0;

 signals:
    void pageChanged(int page);
    void zoomChanged(double zoom);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    double scale() const;  // pixels to a twip
    QSizeF pageSize() const;
    double topOf(int page) const;    // of the page's sheet, from the top of all pages, in pixels
    QPointF corner(int page) const;  // of the page's sheet in the viewport
    void applyFit();
    void changeScale(double zoom, const QPointF& around);
    void layOut();
    void scrollTo(int page, double top);
    void tellPage();
    void paintPage(QPainter& painter, int page, const QRectF& seen);
    void paintHits(QPainter& painter, int page);

    const Document& document_;
    double zoom_ = 1;
    Fit fit_ = Fit::None;
    QList<Hit> hits_;
    int currentHit_ = -1;
    int toldPage_ = 0;
    int goneTo_ = 1;  // 0: scrolled since
};

}  // namespace report
