#pragma once

#include <QObject>

class QAbstractScrollArea;

namespace report {

class PageSheets;

// The page that a view is at, from 1: the one that was gone to, until the view is scrolled; then the one in
// its middle.
class CurrentPage : public QObject {
    Q_OBJECT
 public:
    // Both must live as long as this.
    CurrentPage(const PageSheets& sheets, QAbstractScrollArea& area) : sheets_(sheets), area_(area) {}

    int number() const;
    void show(int page, double top);  // twips from the top of the page
    void scrolled();
    int goneTo() const { return goneTo_; }  // 0: scrolled since
    void setGoneTo(int page) { goneTo_ = page; }
    void tell();  // where it is another page than was told last

 signals:
    void changed(int page);

 private:
    const PageSheets& sheets_;
    QAbstractScrollArea& area_;
    int told_ = 0;
    int goneTo_ = 1;
};

}  // namespace report
