#pragma once

#include <QString>
#include <optional>

class ProductRow;
class QTextEdit;
class QWidget;

// What is known of the selected product besides its row: its note, and the unit that it is counted in. The
// note stands in a box under the list; a product without one shows its description there.
class ProductDetail {
 public:
    // `surface`: of the pane, which owns the box.
    explicit ProductDetail(QWidget* surface);

    QTextEdit* box() const { return box_; }
    void show(const std::optional<ProductRow>& product);  // nothing: no product is selected
    void clear();                                         // the box only

    QString note, unit;

 private:
    QTextEdit* box_;
};
