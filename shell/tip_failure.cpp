#include "shell/tip_failure.h"

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/system/trap.h"

void tellTipFailure(int textId, const platform::Trap& step, QWidget* owner) {
    box(owner,
        GetResString(textId, {{QStringLiteral("|1"), QString::number(step.number())},
                              {QStringLiteral("|2"), step.description()},
                              {QStringLiteral("|3"), QString::number(step.codeLine())}}),
        platform::BoxIcon::Exclamation);
}
