#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>
#include <functional>
#include <span>

#include "records/commands.h"

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

// The menus, the pop-up menu and the toolbar of the main window, made from a table of commands. What is
// chosen in them goes out as a command; what may be chosen follows from a CommandState. A bar that was not
// made has no actions, and asking for its state does nothing.
class MainBars : public QObject {
    Q_OBJECT
 public:
    // `window` owns the bars and outlives this one, as do `rows`.
    MainBars(QMainWindow& window, std::span<const CommandRow> rows);

    void makeMenus();
    // `pictures` by the buttons' keys. The bar stands in `toolbar()` from its first button on, also where a
    // later one fails.
    void makeToolbar(const QString& title, const QHash<QString, QIcon>& pictures);

    QMenu* menu(Menu menu) const { return menus_.value(menu); }
    QToolBar* toolbar() const { return toolbar_; }
    QAction* entry(Command command) const { return entries_.value(command); }  // of the menus at the top
    QAction* popupEntry(Command command) const { return popupEntries_.value(command); }
    QAction* button(Command command) const { return buttons_.value(command); }
    QAction* button(const QString& key) const;
    QAction* filterEntry(const QString& key) const { return filterEntries_.value(key); }  // of the drop-down

    // Enabled states and check marks of a menu and its sub-menus.
    void renew(Menu menu, const CommandState& state) const;
    void renewButtons(Renewal renewal, const CommandState& state) const;
    // In the toolbar's drop-down all quick filters may be chosen but this one; -1: all.
    void allowFiltersBut(int number) const;
    // The entry of something that could not be made.
    void forbid(Command command) const;

 signals:
    void given(Command command);
    void opening(Menu menu);  // one that hangs in the menu bar, or the pop-up menu, before it shows

 private:
    void makeMenu(Menu menu);
    QAction* addEntry(QMenu& menu, const CommandRow& row, const MenuEntry& entry);
    void addButton(const CommandRow& row, const QHash<QString, QIcon>& pictures);
    void addFilters(QAction* button);

    QMainWindow& window_;
    std::span<const CommandRow> rows_;
    QToolBar* toolbar_ = nullptr;
    QHash<Menu, QMenu*> menus_;
    QHash<Command, QAction*> entries_, popupEntries_, buttons_;
    QHash<QString, QAction*> filterEntries_;
};
