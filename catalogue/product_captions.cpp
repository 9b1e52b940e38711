#include "catalogue/product_captions.h"

#include <QLabel>

#include "common/window_helpers.h"

namespace {

constexpr const char* kNoteInside = "N&apomena (Ctrl+Enter za novi red):";

}  // namespace

QLabel* ProductCaptions::add(ProductField field, QWidget* widget) {
    const QString text = QLatin1String(rowOf(field).label);
    auto* label = new QLabel(text, window_);
    label->setObjectName(arrayName("Label1", static_cast<int>(field)));
    label->setBuddy(widget);
    QFont bold = label->font();
    bold.setBold(true);
    // Room for the bold form, so that the fields stand still while the focus walks over them.
    label->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(spokenCaption(text) + QLatin1Char(':')) + 4);
    widget->setAccessibleName(spokenCaption(text));
    labels_[static_cast<std::size_t>(field)] = label;
    return label;
}

// Who types in the note is told how to begin a line, since Enter leads to the next field.
void ProductCaptions::setFocused(ProductField field, bool focused) {
    QLabel* label = labels_[static_cast<std::size_t>(field)];
    QFont font = label->font();
    font.setBold(focused);
    label->setFont(font);
    if (field == ProductField::Note) {
        label->setText(QLatin1String(focused ? kNoteInside : rowOf(field).label));
    }
}
