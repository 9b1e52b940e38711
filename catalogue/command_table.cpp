#include "catalogue/command_table.h"

#include <array>

#include "catalogue/pane_commands.h"

namespace {

using enum CatalogueCommand;

bool hasRows(const PaneState& pane) {
    return pane.hasRows;
}
bool hasSelection(const PaneState& pane) {
    return pane.hasRows && pane.hasSelection;
}
bool isProductList(const PaneState& pane) {
    return pane.hasRows && pane.isProducts;
}
bool isSorted(const PaneState& pane) {
    return pane.hasRows && pane.sort.sorted;
}
bool isUp(const PaneState& pane) {
    return pane.sort.order == QLatin1String("ASC");
}
bool isNotSortedUp(const PaneState& pane) {
    return pane.hasRows && !(pane.sort.sorted && isUp(pane));
}
bool isNotSortedDown(const PaneState& pane) {
    return pane.hasRows && !(pane.sort.sorted && !isUp(pane));
}

template <SortMode mode>
void sortPane(PaneCommands& pane, WindowCommands&) {
    pane.sort(mode);
}

constexpr std::array kCommands{
    CatalogueCommandRow{New, "new", 10511, "New", "Nova stavka", "Nova Stavka...\tCtrl+N", 10519,
                        "Nova Stavka...\tCtrl+N", true, nullptr,
                        [](PaneCommands& pane, WindowCommands&) { pane.add(); }},
    CatalogueCommandRow{Edit, "edit", 10512, "Edit", "Promeni", "Promeni Naziv...", 10520, "Promeni Naziv...",
                        false, hasSelection, [](PaneCommands& pane, WindowCommands&) { pane.edit(); }},
    CatalogueCommandRow{Delete, "delete", 10513, "Delete", "Izbrisi", "Izbrisi\tDel", 10521, "Izbrisi\tDel",
                        false, hasSelection, [](PaneCommands& pane, WindowCommands&) { pane.remove(); }},
    CatalogueCommandRow{DeleteAll, "delall", 10514, "DeleteAll", "Izbrisi sve", "Izbrisi Sve\tShift+Del",
                        10522, "Izbrisi Sve\tShift+Del", true, hasRows,
                        [](PaneCommands& pane, WindowCommands&) { pane.removeAll(); }},
    CatalogueCommandRow{Print, "print", 10515, "Print", "Stampaj", nullptr, 10515, "Stampaj...\tCtrl+P",
                        false, isProductList,
                        [](PaneCommands&, WindowCommands& window) { window.PrintPriceList(); }},
    CatalogueCommandRow{SortUp, "asc", 10525, "SortUp", nullptr, "Sortiraj Rastuce", 0, nullptr, false,
                        isNotSortedUp, sortPane<SortMode::Ascending>},
    CatalogueCommandRow{SortDown, "desc", 10526, "SortDown", nullptr, "Sortiraj Opadajuce", 0, nullptr, false,
                        isNotSortedDown, sortPane<SortMode::Descending>},
    CatalogueCommandRow{Refresh, "refresh", 10516, "Refresh", "Azuriraj", "Azuriraj Podatke\tF5", 10523,
                        "Azuriraj Podatke\tF5", false, nullptr, sortPane<SortMode::RefreshOnly>},
    CatalogueCommandRow{Unsort, "unsort", 10517, "Unsort", "Ponisti sortiranje", "Ponisti Sortiranje\tF8",
                        10524, "Ponisti Sortiranje\tF8", false, isSorted, sortPane<SortMode::NoSort>},
    CatalogueCommandRow{Help, "help", 10518, "Help", "Pomoc", nullptr, 0, nullptr, false, nullptr,
                        [](PaneCommands&, WindowCommands& window) { window.showHelp(); }},
};

constexpr bool standInOrder() {
    for (size_t i = 0; i < kCommands.size(); ++i) {
        if (kCommands[i].command != static_cast<CatalogueCommand>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(standInOrder(), "a command is found by its number");

constexpr std::optional<CatalogueCommand> kLine;
constexpr std::array<std::optional<CatalogueCommand>, 14> kToolbar{
    New, kLine, Edit, kLine, Delete, DeleteAll, kLine, Print, kLine, Refresh, kLine, Unsort, kLine, Help};
constexpr std::array<std::optional<CatalogueCommand>, 12> kListMenu{
    New, Edit, kLine, Delete, DeleteAll, kLine, SortUp, SortDown, kLine, Unsort, kLine, Refresh};
constexpr std::array<std::optional<CatalogueCommand>, 11> kProductMenu{
    New, Edit, kLine, Delete, DeleteAll, kLine, Print, kLine, Unsort, kLine, Refresh};

constexpr QLatin1String kProductPrefix("lv");

}  // namespace

std::span<const CatalogueCommandRow> catalogueCommands() {
    return kCommands;
}

const CatalogueCommandRow& rowOf(CatalogueCommand command) {
    return kCommands[static_cast<size_t>(command)];
}

CommandOrder toolbarOrder() {
    return kToolbar;
}

CommandOrder listMenuOrder() {
    return kListMenu;
}

CommandOrder productMenuOrder() {
    return kProductMenu;
}

QString productMenuKey(const CatalogueCommandRow& row) {
    return kProductPrefix + QLatin1String(row.key);
}

std::optional<MenuItem> menuItemOf(const QString& key) {
    for (const CatalogueCommandRow& row : kCommands) {
        if (row.listItem != nullptr && key == QLatin1String(row.key)) {
            return MenuItem{row.command, false};
        }
        if (row.productItem != nullptr && key == productMenuKey(row)) {
            return MenuItem{row.command, true};
        }
    }
    return std::nullopt;
}
