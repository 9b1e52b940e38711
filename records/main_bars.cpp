#include "records/main_bars.h"

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "records/quick_filters.h"

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

MainBars::MainBars(QMainWindow& window, std::span<const CommandRow> rows)
    : QObject(&window), window_(window), rows_(rows) {}

void MainBars::makeMenus() {
    for (const MenuFacts& facts : kMenus) {
        makeMenu(facts.menu);
    }
}

void MainBars::makeMenu(Menu which) {
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

QAction* MainBars::addEntry(QMenu& menu, const CommandRow& row, const MenuEntry& entry) {
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

void MainBars::makeToolbar(const QString& title, const QHash<QString, QIcon>& pictures) {
    toolbar_ = window_.addToolBar(title);
    toolbar_->setObjectName(QStringLiteral("Toolbar1"));
    toolbar_->setMovable(false);
    toolbar_->setContextMenuPolicy(Qt::PreventContextMenu);
    QList<const CommandRow*> buttons;
    for (const CommandRow& row : rows_) {
        if (row.button.key != nullptr) {
            buttons.append(&row);
        }
    }
    std::sort(buttons.begin(), buttons.end(), [](const CommandRow* one, const CommandRow* other) {
        return one->button.position < other->button.position;
    });
    int position = 0;
    for (const CommandRow* row : std::as_const(buttons)) {
        for (; position < row->button.position; ++position) {
            toolbar_->addSeparator();
        }
        addButton(*row, pictures);
        ++position;
    }
    for (const CommandRow* row : std::as_const(buttons)) {
        if (row->button.opensFilters) {
            addFilters(buttons_.value(row->name));
        }
    }
}

void MainBars::addButton(const CommandRow& row, const QHash<QString, QIcon>& pictures) {
    const QString key = QLatin1String(row.button.key);
    const QString tip = GetResString(row.button.tipId);
    QAction* button = toolbar_->addAction(pictures.value(key), tip);
    button->setObjectName(key);
    button->setToolTip(tip);
    button->setEnabled(row.button.enabledAtStart);
    buttons_.insert(row.name, button);
    QWidget* face = toolbar_->widgetForAction(button);
    face->setObjectName(QStringLiteral("Toolbar1(%1)").arg(key));
    face->setAccessibleName(tip);
    connect(button, &QAction::triggered, this, [this, command = row.name] { emit given(command); });
}

void MainBars::addFilters(QAction* button) {
    auto* menu = new QMenu(&window_);
    menu->setObjectName(QStringLiteral("ApplyFilterMenu"));
    for (const CommandRow& row : rows_) {
        if (row.filter < 0) {
            continue;
        }
        QAction* entry = menu->addAction(GetResString(row.entry.textId));
        entry->setObjectName(
            QLatin1String(quick_filters::kFilters[static_cast<std::size_t>(row.filter)].key));
        filterEntries_.insert(entry->objectName(), entry);
        connect(entry, &QAction::triggered, this, [this, command = row.name] { emit given(command); });
    }
    button->setMenu(menu);
    qobject_cast<QToolButton*>(toolbar_->widgetForAction(button))->setPopupMode(QToolButton::MenuButtonPopup);
}

QAction* MainBars::button(const QString& key) const {
    for (const CommandRow& row : rows_) {
        if (row.button.key != nullptr && key == QLatin1String(row.button.key)) {
            return button(row.name);
        }
    }
    return nullptr;
}

void MainBars::renew(Menu menu, const CommandState& state) const {
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

void MainBars::renewButtons(Renewal renewal, const CommandState& state) const {
    for (const CommandRow& row : rows_) {
        QAction* item = buttons_.value(row.name);
        if (item != nullptr && row.button.renewal == renewal && row.button.usable != nullptr) {
            item->setEnabled(row.button.usable(state));
        }
        // A key must not wait for its menu to be opened.
        QAction* byKey = row.shortcut == nullptr ? nullptr : entries_.value(row.name);
        if (byKey != nullptr && row.entry.usable != nullptr) {
            byKey->setEnabled(row.entry.usable(state));
        }
    }
}

void MainBars::allowFiltersBut(int number) const {
    for (int i = 0; i < static_cast<int>(quick_filters::kFilters.size()); ++i) {
        QAction* entry =
            filterEntries_.value(QLatin1String(quick_filters::kFilters[static_cast<std::size_t>(i)].key));
        if (entry != nullptr) {
            entry->setEnabled(i != number);
        }
    }
}

void MainBars::forbid(Command command) const {
    if (QAction* item = entry(command)) {
        item->setChecked(false);
        item->setEnabled(false);
    }
}
