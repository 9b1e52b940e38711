#pragma once

class QLineEdit;
class QWidget;

// The numbers in the entry window of a product: what is no number is told, and told once, while its box is
// up.
class ProductFigures {
 public:
    explicit ProductFigures(QWidget* window) : window_(window) {}
    // True where the line holds no number, and the person has been told so: `called` begins the sentence. An
    // empty line becomes a zero.
    bool isRefused(QLineEdit& line, const char* called);

 private:
    QWidget* window_;
    bool refusing_ = false;  // the box is up
};
