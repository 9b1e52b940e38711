#include "common/window_helpers.h"

#include "common/modMain.h"
#include "platform/dao/dao.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

QString arrayName(const char* array, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index);
}

QString spokenCaption(QString caption) {
    return caption.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

platform::BoxAnswer box(QWidget* owner, const QString& text, platform::BoxIcon icon,
                        platform::BoxButtons buttons, platform::BoxAnswer preselected) {
    return platform::showBox({text, GetResString(1), icon, buttons, preselected}, owner);
}

float numberOf(const QString& text) {
    return platform::readSingle(text).value_or(0.0F);
}

float singleOf(const QString& text) {
    const std::optional<float> number = platform::readSingle(text);
    if (!number) {
        throw platform::RunError(13, QStringLiteral("Type mismatch"));
    }
    return *number;
}

QString textOf(const dao::Value& value) {
    return QString::fromStdString(value.textRef());
}

QString textOf(const dao::Field& field) {
    return textOf(field.Value());
}

void refreshCache() {
    dao::DBEngine::Idle(dao::dbRefreshCache);
}
