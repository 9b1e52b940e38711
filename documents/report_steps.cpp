#include "documents/report_steps.h"

#include "common/modMain.h"
#include "platform/controls/boxes.h"

void ReportSteps::add(const platform::Trap& trap) {
    if (trap.failed()) {
        errors_ += trap.line();
    }
}

void ReportSteps::tell(const QString& message) const {
    if (errors_.isEmpty()) {
        return;
    }
    platform::Box box;
    box.text = message + QStringLiteral("\n\nDetalji greske:\n\n") + errors_.join(QLatin1Char('\n'));
    box.title = GetResString(1);
    box.icon = platform::BoxIcon::Exclamation;
    platform::showBox(box);
}
