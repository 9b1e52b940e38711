#include "platform/controls/keys.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include "platform/system/numbers.h"

namespace platform {

bool filterNumberKey(QLineEdit& field, const QKeyEvent& key, NumberKeys rule) {
    constexpr auto kCommandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const QString typed = key.text();
    if (typed.isEmpty() || !typed.front().isPrint() || (key.modifiers() & kCommandKeys) != 0)
        return false;
    static const QString kDigits = QStringLiteral("0123456789");
    if (!rule.decimals)
        return !kDigits.contains(typed);

    QString separator = decimalSeparator();
    if (separator.isEmpty())
        separator = QStringLiteral(".");
    const bool isPadPoint = key.modifiers().testFlag(Qt::KeypadModifier) &&
                            (key.key() == Qt::Key_Period || key.key() == Qt::Key_Comma);
    const bool isLetterN =
        rule.letterNCounts && typed == QLatin1String("n") && separator != QLatin1String(".");
    if (typed != separator && (typed == QLatin1String(".") || isPadPoint || isLetterN)) {
        field.insert(separator);
        return true;
    }
    return typed != separator && !kDigits.contains(typed);
}

bool isEnter(const QKeyEvent& key) {
    return (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) &&
           (key.modifiers() & ~Qt::KeypadModifier) == 0;
}

void pressTab(QWidget* focus) {
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
    QCoreApplication::sendEvent(focus, &tab);
}

}  // namespace platform
