#pragma once

#include <QComboBox>
#include <QSpinBox>

namespace report {

class PageView;

// The page that a preview is at, and how many there are. Typing a number goes there.
class PageField : public QSpinBox {
    Q_OBJECT
 public:
    // The view must live as long as this.
    PageField(PageView& view, int pageCount, QWidget* parent);
    void showPage(int page);  // without going there
};

// The zoom of a preview in per cent, to choose from a list or to type.
class ZoomField : public QComboBox {
    Q_OBJECT
 public:
    // The view must live as long as this.
    ZoomField(PageView& view, QWidget* parent);
    void showZoom(double zoom);  // 1: as large as on paper

 private:
    void take(int index);
    void read();
    PageView& view_;
};

}  // namespace report
