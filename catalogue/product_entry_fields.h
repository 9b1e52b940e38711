#pragma once

#include <QObject>
#include <QString>
#include <array>

#include "catalogue/product_captions.h"
#include "catalogue/product_fields.h"
#include "catalogue/product_figures.h"
#include "catalogue/product_units.h"

class QGridLayout;
class QKeyEvent;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

// The fields in which a product is typed, made from their table and placed as it says: lines, a box for the
// note, the units to choose from. The controls are the window's.
class ProductEntryFields : public QObject {
    Q_OBJECT
 public:
    ProductEntryFields(QWidget* window, QGridLayout* grid);

    ProductUnits& units() { return units_; }
    QWidget* widget(ProductField field) const { return widgets_[static_cast<std::size_t>(field)]; }
    QString text(ProductField field) const;                 // as it stands there; of the unit the chosen one
    void setText(ProductField field, const QString& text);  // the unit is chosen by its beginning
    // What is no number keeps the focus: true where a price or a stock has been refused.
    bool hasRefused();
    bool isHeld() const;  // the focus is on such a one

 signals:
    void changed(ProductField field);
    void entered(ProductField field);  // the focus has come to it

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QWidget* make(ProductField field);
    QLineEdit* makeLine(ProductField field);
    void place(const ProductFieldRow& row, QGridLayout& grid);
    bool runKey(ProductField field, const QKeyEvent& key);  // true: dealt with
    void enter(ProductField field, Qt::FocusReason reason);
    void leave(ProductField field, Qt::FocusReason reason);
    QLineEdit* figure(ProductField field) const;  // nullptr: no number is asked for

    QWidget* window_;
    ProductCaptions captions_;
    ProductFigures figures_;
    ProductUnits units_;
    QPlainTextEdit* note_ = nullptr;
    std::array<QWidget*, kProductFields> widgets_{};
};
