#include "records/main_menus.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <algorithm>

#include "common/modMain.h"
#include "common/window_helpers.h"

namespace {

struct MenuFacts {
    Menu menu;
    const char* name;     // of the menu
    const char* entries;  // of its entries, an array by their places
    int titleId;          // 0: a sub-menu, whose title is the entry that opens it
};
// A sub-menu stands before the menu that opens it.
constexpr MenuFacts kMenus[] = {
    {Menu::QuickSearch, "mnuQuickSearch", "mnuQuickSearch", 0},
    {Menu::Utilities, "mnuUtilities", "mnuUtilities", 0},
    {Menu::Database, "mnuDDatabase", "mnuDatabase", 500},
    {Menu::View, "mnuVView", "mnuView", 600},
    {Menu::Help, "mnuHHelp", "mnuHelp", 700},
    {Menu::Popup, "mnuPPopup", "mnuPopup", 800},
};

const MenuFacts& factsOf(Menu menu) {
    return *std::find_if(std::begin(kMenus), std::end(kMenus),
                         [&](const MenuFacts& facts) { return facts.menu == menu; });
}

const MenuEntry* entryIn(const CommandRow& row, Menu menu) {
    return row.entry.menu == menu ? &row.entry : row.popup.menu == menu ? &row.popup : nullptr;
}

}  // namespace

MainMenus::MainMenus(QWidget& window, std::span<const CommandRow> rows)
    : QObject(&window), window_(window), rows_(rows) {}

void MainMenus::make() {
    for (const MenuFacts& facts : kMenus) {
        makeMenu(facts.menu);
    }
}

void MainMenus::makeMenu(Menu which) {
    const MenuFacts& facts = factsOf(which);
    auto* menu = facts.titleId == 0 ? new QMenu(&window_) : new QMenu(GetResString(facts.titleId), &window_);
    menu->setObjectName(QLatin1String(facts.name));
    menus_.insert(which, menu);
    if (facts.titleId != 0) {
        connect(menu, &QMenu::aboutToShow, this, [this, which] { emit opening(which); });
    }
    int last = -1;
    for (const CommandRow& row : rows_) {
        if (const MenuEntry* entry = entryIn(row, which)) {
            last = std::max(last, entry->position);
        }
    }
    for (int position = 0; position <= last; ++position) {
        const CommandRow* row = commandAt(rows_, which, position);
        if (row == nullptr) {
            menu->addSeparator();
            continue;
        }
        auto& known = which == Menu::Popup ? popupEntries_ : entries_;
        known.insert(row->name, addEntry(*menu, *row, *entryIn(*row, which)));
    }
}

QAction* MainMenus::addEntry(QMenu& menu, const CommandRow& row, const MenuEntry& entry) {
    QAction* item = menu.addAction(GetResString(entry.textId));
    item->setObjectName(arrayName(factsOf(entry.menu).entries, entry.position));
    item->setCheckable(entry.checked != nullptr);
    if (entry.opens != Menu::None) {
        item->setMenu(menus_.value(entry.opens));
    }
    if (row.shortcut != nullptr && entry.menu != Menu::Popup) {
        item->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
    }
    connect(item, &QAction::triggered, this, [this, command = row.name] { emit given(command); });
    return item;
}

void MainMenus::renew(Menu menu, const CommandState& state) const {
    const auto& known = menu == Menu::Popup ? popupEntries_ : entries_;
    for (const CommandRow& row : rows_) {
        const MenuEntry* entry = entryIn(row, menu);
        QAction* item = known.value(row.name);
        if (entry == nullptr || item == nullptr) {
            continue;
        }
        if (entry->usable != nullptr) {
            item->setEnabled(entry->usable(state));
        }
        if (entry->checked != nullptr) {
            item->setChecked(entry->checked(state));
        }
        if (entry->opens != Menu::None) {
            renew(entry->opens, state);
        }
    }
}

void MainMenus::renewKeys(const CommandState& state) const {
    for (const CommandRow& row : rows_) {
        QAction* item = row.shortcut == nullptr ? nullptr : entries_.value(row.name);
        if (item != nullptr && row.entry.usable != nullptr) {
            item->setEnabled(row.entry.usable(state));
        }
    }
}

void MainMenus::forbid(Command command) const {
    if (QAction* item = entry(command)) {
        item->setChecked(false);
        item->setEnabled(false);
    }
}
