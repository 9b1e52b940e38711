#include "shell/rate_term.h"

#include "platform/system/numbers.h"
#include "shell/modMain.h"

QString rateTerm() {
    if (!CeneDinarske)
        return QStringLiteral("1");
    QString separator = platform::decimalSeparator();
    if (separator.isEmpty())
        separator = QStringLiteral(".");
    return platform::textOfSingle(KursKupovni).replace(separator, QStringLiteral("."));
}
