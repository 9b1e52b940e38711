#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>
#include <span>

#include "records/commands.h"

class QAction;
class QMainWindow;
class QToolBar;

// The toolbar of the main window, made from a table of commands as the menus are. One that was not made has
// no buttons, and asking for its state does nothing.
class MainToolbar : public QObject {
    Q_OBJECT
 public:
    // `window` owns the bar and outlives this one, as do `rows`.
    MainToolbar(QMainWindow& window, std::span<const CommandRow> rows);

    // `pictures` by the buttons' keys. The bar stands in `bar()` from its first button on, also where a later
    // one fails.
    void make(const QString& title, const QHash<QString, QIcon>& pictures);
    QToolBar* const& bar() const { return bar_; }
    QAction* button(Command command) const { return buttons_.value(command); }
    QAction* button(const QString& key) const;
    QAction* filterEntry(const QString& key) const { return filterEntries_.value(key); }  // of the drop-down

    void renew(Renewal renewal, const CommandState& state) const;
    void setEnabled(Command command, bool enabled) const;
    // In the drop-down all quick filters may be chosen but this one; -1: all.
    void allowFiltersBut(int number) const;

 signals:
    void given(Command command);

 private:
    QList<const CommandRow*> rowsWithButton() const;  // from the left
    void addButton(const CommandRow& row, const QHash<QString, QIcon>& pictures);
    void addFilters(QAction* button);

    QMainWindow& window_;
    std::span<const CommandRow> rows_;
    QToolBar* bar_ = nullptr;
    QHash<Command, QAction*> buttons_;
    QHash<QString, QAction*> filterEntries_;
};
