#include "documents/document_choice.h"

#include <QComboBox>

#include "common/window_helpers.h"
#include "documents/frmPrintInvoiceEx_error.h"
#include "platform/system/trap.h"

QComboBox* DocumentChoice::build(QWidget* parent) {
    box_ = new QComboBox(parent);
    box_->setObjectName(arrayName("Combo1", facts_.index));
    box_->setAccessibleName(QLatin1String(facts_.spoken));
    for (const char* item : facts_.items) {
        box_->addItem(QLatin1String(item));
    }
    return box_;
}

void DocumentChoice::load(QWidget* window) {
    takeUsual();
    print_invoice::guarded(window, [&] {
        const int index = settings::integer(facts_.setting);
        if (index < 0 || index >= box_->count()) {
            throw platform::RunError(380, QStringLiteral("Invalid property value"));
        }
        box_->setCurrentIndex(index);
    });
}

void DocumentChoice::takeUsual() {
    box_->setCurrentIndex(facts_.usual);
}

void DocumentChoice::save(const print_invoice::Save& save) const {
    save([&] { settings::setInteger(facts_.setting, box_->currentIndex()); });
}
