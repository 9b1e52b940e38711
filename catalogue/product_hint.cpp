#include "catalogue/product_hint.h"

#include <QLabel>

namespace {

constexpr const char* kNameWanted = "Obavezno upisite naziv proizvoda!";

QString hintFor(const char* hint, qsizetype left) {
    return QStringLiteral("Max. %1 karaktera - jos je %2 preostalo. %3")
        .arg(kProductTextLimit)
        .arg(left)
        .arg(QLatin1String(hint));
}

}  // namespace

ProductHint::ProductHint(QWidget* window) : label_(new QLabel(window)) {
    label_->setObjectName(QStringLiteral("Label2"));
    label_->setTextFormat(Qt::PlainText);
    // The line stands empty at times; the window must not grow and shrink with it.
    label_->setMinimumHeight(label_->fontMetrics().height() + 6);
    const QString longest = hintFor(rowOf(ProductField::Note).hint, kProductTextLimit);
    label_->setMinimumWidth(label_->fontMetrics().horizontalAdvance(longest) + 8);
}

void ProductHint::show(ProductField field, const QString& text) {
    const char* const hint = rowOf(field).hint;
    if (isFigure(field)) {
        label_->setText(QLatin1String(hint));
        return;
    }
    const bool isWanted = field == ProductField::Name && text.isEmpty();
    label_->setText(hintFor(isWanted ? kNameWanted : hint, kProductTextLimit - text.size()));
}

void ProductHint::clear() {
    label_->clear();
}
