#include "records/entry_keys.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

#include "common/help.h"
#include "platform/controls/date_field.h"
#include "platform/controls/keys.h"

namespace {

constexpr const char* kHelpContext = "HelpContextID";
constexpr const char* kEntry = "entryField";  // what Enter walks through
constexpr const char* kSelectsAll = "selectsAllOnFocus";

void selectAllOf(QObject* field) {
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
        line->selectAll();
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field)) {
        lines->selectAll();
    }
}

// A click sets the cursor after it has given the focus, so the selecting waits until the click is done.
void selectOnFocus(QObject* field, Qt::FocusReason reason) {
    if (reason == Qt::MouseFocusReason) {
        QTimer::singleShot(0, field, [field] { selectAllOf(field); });
    } else if (reason != Qt::PopupFocusReason) {
        selectAllOf(field);
    }
}

bool isEnter(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

// With Ctrl it begins a new line where the text may have several.
void enter(QWidget* field, Qt::KeyboardModifiers held) {
    auto* lines = qobject_cast<QPlainTextEdit*>(field);
    if ((held & Qt::ControlModifier) != 0 && lines != nullptr && !lines->isReadOnly()) {
        lines->insertPlainText(QStringLiteral("\n"));
    } else {
        platform::pressTab(field);
    }
}

}  // namespace

void EntryKeys::add(QWidget* widget, const QString& name, const QString& accessibleName, int helpContext,
                    Focus focus) {
    widget->setObjectName(name);
    widget->setAccessibleName(accessibleName);
    if (focus == Focus::SelectsText) {
        widget->setProperty(kSelectsAll, true);
    }
    setHelpContext(widget, helpContext);
    QWidget* keyTaker = widget;
    if (auto* date = qobject_cast<platform::DateField*>(widget)) {
        keyTaker = date->edit();
        date->edit()->setAccessibleName(accessibleName);
        if (date->checkBox() != nullptr) {
            date->checkBox()->setProperty(kEntry, true);
            date->checkBox()->installEventFilter(this);
        }
    }
    keyTaker->setProperty(kEntry, true);
    keyTaker->installEventFilter(this);
}

bool EntryKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && watched->property(kSelectsAll).toBool()) {
        selectOnFocus(watched, static_cast<QFocusEvent*>(event)->reason());
    }
    if (event->type() == QEvent::KeyPress && watched->property(kEntry).toBool()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (isEnter(*key)) {
            enter(static_cast<QWidget*>(watched), key->modifiers());
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void setHelpContext(QWidget* widget, int helpContext) {
    widget->setProperty(kHelpContext, helpContext);
}

void showHelpOfFocus(int usual) {
    const QWidget* at = QApplication::focusWidget();
    while (at != nullptr && !at->property(kHelpContext).isValid()) {
        at = at->parentWidget();
    }
    showHelp(at != nullptr ? at->property(kHelpContext).toInt() : usual);
}
