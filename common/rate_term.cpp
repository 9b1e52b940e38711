#include "common/rate_term.h"

#include "common/modMain.h"
#include "platform/system/numbers.h"

QString rateTerm() {
    if (!CeneDinarske) {
        return QStringLiteral("1");
    }
    QString separator = platform::decimalSeparator();
    if (separator.isEmpty()) {
        separator = QStringLiteral(".");
    }
    return platform::textOfSingle(KursKupovni).replace(separator, QStringLiteral("."));
}
