#pragma once

#include <QObject>
#include <QString>

class QWidget;

// What all entry fields of the main window have in common: they have names, Enter goes on to the next one,
// and F1 opens the help of the one with the focus.
class EntryKeys : public QObject {
    Q_OBJECT
 public:
    // Whether the field's text is selected when the focus comes, so that typing replaces it.
    enum class Focus { LeavesText, SelectsText };

    using QObject::QObject;
    // `name` for tests and support, `accessibleName` for screen readers, `helpContext` a topic of the help.
    void add(QWidget* widget, const QString& name, const QString& accessibleName, int helpContext,
             Focus focus = Focus::LeavesText);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// The topic of what has no entry fields: of a pane, of a list.
void setHelpContext(QWidget* widget, int helpContext);
// That of the widget with the focus, or of what it stands in; `usual` where none of them has one.
void showHelpOfFocus(int usual);
