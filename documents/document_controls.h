#pragma once

#include <QString>
#include <functional>

class QCheckBox;
class QLineEdit;
class QWidget;

// What the panes of the document window have in common: how their fields are made and named, and what a field
// falls back to.
namespace print_invoice {

// Keeps one setting; what fails is remembered, and the others are kept all the same.
using Save = std::function<void(const std::function<void()>&)>;

QLineEdit* makeEntry(int index, const QString& spoken, QWidget* parent);
QCheckBox* makeCheck(int index, const QString& caption, const QString& spoken, QWidget* parent);

// The text that a field starts with, and that it is returned to.
QString tag(const QLineEdit* field);
void setTag(QLineEdit* field, const QString& text);
void takeTag(QLineEdit* field);  // its beginning is in sight then

}  // namespace print_invoice
