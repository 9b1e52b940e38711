#include "documents/document_controls.h"

#include <QCheckBox>
#include <QLineEdit>

#include "common/window_helpers.h"

namespace print_invoice {
namespace {

constexpr char kTagProperty[] = "Tag";

}  // namespace

QLineEdit* makeEntry(int index, const QString& spoken, QWidget* parent) {
    auto* entry = new QLineEdit(parent);
    entry->setObjectName(arrayName("Text2", index));
    entry->setAccessibleName(spoken);
    return entry;
}

QCheckBox* makeCheck(int index, const QString& caption, const QString& spoken, QWidget* parent) {
    auto* check = new QCheckBox(caption, parent);
    check->setObjectName(arrayName("Check1", index));
    check->setAccessibleName(spoken);
    return check;
}

QString tag(const QLineEdit* field) {
    return field->property(kTagProperty).toString();
}

void setTag(QLineEdit* field, const QString& text) {
    field->setProperty(kTagProperty, text);
}

void takeTag(QLineEdit* field) {
    field->setText(tag(field));
    field->setCursorPosition(0);
}

}  // namespace print_invoice
