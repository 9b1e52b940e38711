#include "catalogue/failure_texts.h"

#include "platform/system/trap.h"

QString failureText(const platform::Trap& step, const char* procedure) {
    return QStringLiteral("%1 ; Code line no.: %2\nOccured in procedure %3 of Form frmKonfiguratorEx")
        .arg(step.line())
        .arg(step.codeLine())
        .arg(QLatin1String(procedure));
}

QString failureTail(const platform::Trap& step, const char* procedure) {
    return QStringLiteral("\n\n") + failureText(step, procedure);
}

QString shortFailureTail(const platform::Trap& step) {
    return QStringLiteral("\n\n%1 ; Code line: %2").arg(step.line()).arg(step.codeLine());
}
