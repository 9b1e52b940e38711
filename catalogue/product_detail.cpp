#include "catalogue/product_detail.h"

#include <QTextEdit>

#include "catalogue/product_columns.h"
#include "common/window_helpers.h"

namespace {

constexpr int kPane = 2;    // the number of its controls
constexpr int kMargin = 4;  // logical pixels

}  // namespace

ProductDetail::ProductDetail(QWidget* surface) : box_(new QTextEdit(surface)) {
    box_->setObjectName(arrayName("Text1", kPane));
    box_->setAccessibleName(QStringLiteral("Napomena"));
    box_->setReadOnly(true);
    box_->setAcceptRichText(false);
    box_->setTabChangesFocus(true);
    box_->setFixedHeight(surface->window()->fontMetrics().lineSpacing() * 3 + 2 * kMargin + 4);
}

void ProductDetail::show(const std::optional<ProductRow>& product) {
    if (product) {
        note = product->note();
        unit = product->unit();
        box_->setPlainText(note.isEmpty() ? product->text(ProductColumn::Description) : note);
    } else {
        note.clear();
        unit.clear();
        box_->clear();
    }
}

void ProductDetail::clear() {
    box_->clear();
}
