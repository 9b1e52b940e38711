#pragma once

#include <array>

#include "catalogue/product_fields.h"

class QLabel;
class QWidget;

// The labels of the fields in which a product is typed. The field that has the focus has a bold one.
class ProductCaptions {
 public:
    explicit ProductCaptions(QWidget* window) : window_(window) {}
    // "Label1(n)". The field takes its name for screen readers from it.
    QLabel* add(ProductField field, QWidget* widget);
    void setFocused(ProductField field, bool focused);

 private:
    QWidget* window_;
    std::array<QLabel*, kProductFields> labels_{};
};
