#pragma once

#include "catalogue/product_fields.h"

class QLabel;
class QString;
class QWidget;

// The line under the fields of a product: what the field is for that is being typed in, and of a text how
// much more of it the table holds.
class ProductHint {
 public:
    explicit ProductHint(QWidget* window);
    QLabel* label() const { return label_; }
    void show(ProductField field, const QString& text);  // of any field but the unit
    void clear();

 private:
    QLabel* label_;  // a child of the window
};
