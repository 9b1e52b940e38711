#include "catalogue/product_figures.h"

#include <QLineEdit>
#include <QScopedValueRollback>

#include "common/window_helpers.h"
#include "platform/system/numbers.h"

bool ProductFigures::isRefused(QLineEdit& line, const char* called) {
    if (line.text().isEmpty()) {
        line.setText(QStringLiteral("0"));
    }
    if (platform::readSingle(line.text())) {
        return false;
    }
    if (refusing_) {
        return true;
    }
    const QScopedValueRollback refusing(refusing_, true);
    box(window_,
        QLatin1String(called) + QStringLiteral(" mora da bude ispravna numericka vrednost. Proverite unos."),
        platform::BoxIcon::Exclamation);
    return true;
}
