#include "catalogue/unit_menu.h"

#include <QWidget>

#include "catalogue/unit_commands.h"
#include "catalogue/unit_list.h"
#include "common/window_helpers.h"
#include "platform/controls/boxes.h"
#include "platform/controls/popup_menu.h"
#include "platform/system/trap.h"

namespace {

const QString kMenu = QStringLiteral("mnu_list");

// A command of the menu: when it is possible, and what it does.
struct Line {
    const char* key;      // nullptr: a separator
    const char* caption;  // with the shortcut's name behind a tab
    bool (*rule)(const UnitList&);
    void (*action)(UnitList&, UnitCommands&);
};

bool hasSelection(const UnitList& units) {
    return units.hasSelection();
}

template <SortMode mode>
void sortAs(UnitList& units, UnitCommands&) {
    units.sort(mode, false);
}

constexpr Line kSeparator{nullptr, "-", nullptr, nullptr};
constexpr Line kLines[] = {
    {"edit", "Promeni...\tF2", hasSelection, [](UnitList&, UnitCommands& commands) { commands.change(); }},
    kSeparator,
    {"delete", "Izbrisi\tDel", hasSelection, [](UnitList&, UnitCommands& commands) { commands.remove(); }},
    {"delall", "Izbrisi Sve\tShift+Del", [](const UnitList& units) { return units.hasRows(); },
     [](UnitList&, UnitCommands& commands) { commands.removeAll(); }},
    kSeparator,
    {"asc", "Sortiraj Rastuce", [](const UnitList& units) { return units.isNotAscending(); },
     sortAs<SortMode::Ascending>},
    {"desc", "Sortiraj Opadajuce", [](const UnitList& units) { return units.isNotDescending(); },
     sortAs<SortMode::Descending>},
    kSeparator,
    {"unsort", "Ponisti Sortiranje\tF8", [](const UnitList& units) { return units.Sorted; },
     sortAs<SortMode::NoSort>},
    kSeparator,
    {"refresh", "Azuriraj Listu\tF5", nullptr, sortAs<SortMode::RefreshOnly>},
};

}  // namespace

UnitMenu::UnitMenu(UnitList& units, UnitCommands& commands, QWidget* window)
    : QObject(window), units_(units), commands_(commands), window_(window) {}

void UnitMenu::create() {
    popup_ = new platform::PopupMenu(window_);
    connect(popup_, &platform::PopupMenu::click, this, &UnitMenu::run);
    if (const QString failure = addLines(); !failure.isEmpty()) {
        box(window_, QStringLiteral("Neocekivana greska prilikom stvaranja PopUp menija:\n\n") + failure,
            platform::BoxIcon::Critical);
    }
}

void UnitMenu::drop() {
    delete popup_;
    popup_ = nullptr;
}

QString UnitMenu::addLines() {
    platform::Trap step;
    for (const Line& line : kLines) {
        step([&] {
            popup_->addItem(QString::fromLatin1(line.caption), {}, {}, true, QString::fromLatin1(line.key));
        });
    }
    step([&] { popup_->store(kMenu); });
    if (!step.failed()) {
        return {};
    }
    return QStringLiteral("%1 Prog. linija: %2; frmJM -> CreateMenu procedura.")
        .arg(step.line())
        .arg(step.codeLine());
}

void UnitMenu::show(const QPoint& globalPosition) {
    popup_->restore(kMenu);
    for (const Line& line : kLines) {
        if (line.rule != nullptr) {
            popup_->setEnabled(QString::fromLatin1(line.key), line.rule(units_));
        }
    }
    popup_->show(globalPosition);
}

void UnitMenu::run(int item) {
    const QString key = popup_->keyOf(item);
    for (const Line& line : kLines) {
        if (line.key != nullptr && key == QLatin1String(line.key)) {
            line.action(units_, commands_);
            return;
        }
    }
}
