#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <span>

#include "records/commands.h"

class QAction;
class QMenu;
class QWidget;

// The menus and the pop-up menu of the main window, made from a table of commands. What is chosen in them
// goes out as a command; what may be chosen follows from a CommandState. A menu that was not made has no
// entries, and asking for its state does nothing.
class MainMenus : public QObject {
    Q_OBJECT
 public:
    // `window` owns the menus and outlives this one, as do `rows`.
    MainMenus(QWidget& window, std::span<const CommandRow> rows);

    void make();
    QMenu* menu(Menu menu) const { return menus_.value(menu); }
    QAction* entry(Command command) const { return entries_.value(command); }  // of the menus at the top
    QAction* popupEntry(Command command) const { return popupEntries_.value(command); }

    // Enabled states and check marks of a menu and its sub-menus.
    void renew(Menu menu, const CommandState& state) const;
    // The entries that have a key: it must not wait for its menu to be opened.
    void renewKeys(const CommandState& state) const;
    // The entry of something that could not be made.
    void forbid(Command command) const;

 signals:
    void given(Command command);
    void opening(Menu menu);  // one that hangs in the menu bar, or the pop-up menu, before it shows

 private:
    void makeMenu(Menu menu);
    QAction* addEntry(QMenu& menu, const CommandRow& row, const MenuEntry& entry);

    QWidget& window_;
    std::span<const CommandRow> rows_;
    QHash<Menu, QMenu*> menus_;
    QHash<Command, QAction*> entries_, popupEntries_;
};
