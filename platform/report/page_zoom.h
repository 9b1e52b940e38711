#pragma once

#include <QObject>

class QAbstractScrollArea;
class QPointF;

namespace report {

class CurrentPage;
class Document;
class PageSheets;

// How large a view shows its pages: a zoom, or what fits into the window, whatever size that has.
class PageZoom : public QObject {
    Q_OBJECT
 public:
    enum class Fit { None, Page, Width };

    // All must live as long as this.
    PageZoom(const Document& document, PageSheets& sheets, CurrentPage& current, QAbstractScrollArea& area)
        : document_(document), sheets_(sheets), current_(current), area_(area) {}

    double factor() const;    // 1: as large as on paper
    void set(double factor);  // kept between kLeast and kMost; ends a fit
    void setFit(Fit fit);     // holds while the window changes its size
    void fitAgain();          // the window has another size now
    void in();
    void out();
    void turn(double steps, const QPointF& around);  // of the wheel, in or out; `around` stays where it is

    static constexpr double kLeast = 0.1, kMost = 8.0;

 signals:
    void changed(double factor);

 private:
    void change(double factor, const QPointF& around);
    const Document& document_;
    PageSheets& sheets_;
    CurrentPage& current_;
    QAbstractScrollArea& area_;
    Fit fit_ = Fit::None;
};

}  // namespace report
