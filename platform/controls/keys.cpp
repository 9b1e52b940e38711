#include "platform/controls/keys.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <algorithm>

#include "platform/system/numbers.h"

namespace platform {

bool filterNumberKey(QLineEdit& field, const QKeyEvent& key, NumberKeys rule) {
    constexpr auto kCommandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const QString typed = key.text();
    if (typed.isEmpty() || !typed.front().isPrint() || (key.modifiers() & kCommandKeys) != 0) {
        return false;
    }
    static const QString kDigits = QStringLiteral("0123456789");
    if (!rule.decimals) {
        return !kDigits.contains(typed);
    }

    QString separator = decimalSeparator();
    if (separator.isEmpty()) {
        separator = QStringLiteral(".");
    }
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

namespace {

// Sits on the buttons themselves: a window that takes Enter for its fields, and a dialog that gives it to the
// default button, only hear of the key when the button has passed it on.
class EnterPresses : public QObject {
 public:
    using QObject::QObject;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || !isEnter(static_cast<QKeyEvent&>(*event))) {
            return QObject::eventFilter(watched, event);
        }
        static_cast<QAbstractButton*>(watched)->click();
        return true;
    }
};

}  // namespace

void enterPressesButtons(QWidget* window) {
    auto* presses = new EnterPresses(window);
    const auto commands = window->findChildren<QPushButton*>();
    for (QToolButton* button : window->findChildren<QToolButton*>()) {
        button->installEventFilter(presses);
    }
    // Without a default button a dialog would take the first of these for it.
    const bool hasDefault = std::any_of(commands.begin(), commands.end(),
                                        [](const QPushButton* button) { return button->isDefault(); });
    for (QPushButton* button : commands) {
        button->installEventFilter(presses);
        if (hasDefault) {
            button->setAutoDefault(true);
        }
    }
}

void keyPressesButton(const QKeySequence& key, QPushButton* button) {
    auto* shortcut = new QShortcut(key, button->window());
    QObject::connect(shortcut, &QShortcut::activated, button, [button] {
        if (!button->isEnabled() || !button->isVisible()) {
            return;
        }
        button->setFocus(Qt::ShortcutFocusReason);
        if (button->isEnabled() && button->window()->focusWidget() == button) {
            button->click();
        }
    });
}

void keysTurnPages(QTabWidget* pages) {
    const auto turnBy = [pages](Qt::Key key, int step) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), pages->window());
        QObject::connect(shortcut, &QShortcut::activated, pages, [pages, step] {
            const int next = pages->currentIndex() + step;
            if (next >= 0 && next < pages->count()) {
                pages->tabBar()->setFocus(Qt::ShortcutFocusReason);  // what is being typed counts
                pages->setCurrentIndex(next);
            }
        });
    };
    turnBy(Qt::Key_PageUp, -1);
    turnBy(Qt::Key_PageDown, 1);
}

}  // namespace platform
