#include "catalogue/catalogue_menus.h"

#include "catalogue/catalogue_status.h"
#include "common/modMain.h"
#include "platform/controls/pictures.h"
#include "platform/controls/popup_menu.h"
#include "platform/system/trap.h"

using platform::PopupMenu;
using platform::Trap;

namespace {

// A stored menu, and where it begins with a line of its own.
struct MenuFacts {
    const char* name;
    const char* head;
    bool isProducts;
};
constexpr MenuFacts kListMenu{"mnu_listpopup", "-hahaha", false};
constexpr MenuFacts kProductMenu{"mnu_lvwpopup", "-Proizvodi", true};
constexpr int kProductPane = 2;
constexpr const char* kListHeads[] = {"-Grupe", "-Proizvodjaci"};

CommandOrder orderOf(const MenuFacts& menu) {
    return menu.isProducts ? productMenuOrder() : listMenuOrder();
}

QString keyOf(const CatalogueCommandRow& row, const MenuFacts& menu) {
    return menu.isProducts ? productMenuKey(row) : QString(QLatin1String(row.key));
}

void addItem(PopupMenu& popup, const MenuFacts& menu, const std::optional<CatalogueCommand>& command) {
    if (!command) {
        popup.addItem(QStringLiteral("-"), QString(), QIcon(), true, QString());
        return;
    }
    const CatalogueCommandRow& row = rowOf(*command);
    popup.addItem(QLatin1String(menu.isProducts ? row.productItem : row.listItem),
                  GetResString(menu.isProducts ? row.productText : row.text),
                  platform::icon(QLatin1String(row.icon)), true, keyOf(row, menu));
}

void buildMenu(PopupMenu& popup, const MenuFacts& menu, Trap& step) {
    step([&] { popup.clear(); });
    step([&] { popup.addItem(QLatin1String(menu.head), QString(), QIcon(), true, QString()); });
    for (const std::optional<CatalogueCommand>& command : orderOf(menu)) {
        step([&] { addItem(popup, menu, command); });
    }
    step([&] { popup.store(QLatin1String(menu.name)); });
}

}  // namespace

void CatalogueMenus::makePopup() {
    popup_ = new PopupMenu(window_);
    connect(popup_, &PopupMenu::click, this, &CatalogueMenus::click);
    connect(popup_, &PopupMenu::itemHighlight, this, &CatalogueMenus::highlight);
}

void CatalogueMenus::dropPopup() {
    delete popup_;
    popup_ = nullptr;
}

QString CatalogueMenus::create() {
    Trap step;
    buildMenu(*popup_, kListMenu, step);
    buildMenu(*popup_, kProductMenu, step);
    if (!step.failed()) {
        return {};
    }
    return QStringLiteral("%1 Prog. linija: %2; frmKonfiguratorEx -> CreateMenu procedura.")
        .arg(step.line())
        .arg(step.codeLine());
}

void CatalogueMenus::open(int pane, const PaneState& state, const QPoint& at) {
    const MenuFacts& menu = pane == kProductPane ? kProductMenu : kListMenu;
    Trap step;
    step([&] { popup_->restore(QLatin1String(menu.name)); });
    if (pane != kProductPane) {
        step([&] { popup_->setCaption(1, QLatin1String(kListHeads[pane])); });
    }
    for (const std::optional<CatalogueCommand>& command : orderOf(menu)) {
        if (command && rowOf(*command).rule != nullptr) {
            const CatalogueCommandRow& row = rowOf(*command);
            step([&] { popup_->setEnabled(keyOf(row, menu), row.rule(state)); });
        }
    }
    step([&] { popup_->show(at); });
}

void CatalogueMenus::click(int item) {
    if (const std::optional<MenuItem> under = menuItemOf(popup_->keyOf(item))) {
        emit chosen(*under);
    }
}

void CatalogueMenus::highlight(int item, bool enabled, bool separator) {
    const std::optional<MenuItem> under = menuItemOf(popup_->keyOf(item));
    QString text = QStringLiteral(" ");
    if (enabled && !separator && under) {
        const CatalogueCommandRow& row = rowOf(under->command);
        text = GetResString(under->isProducts ? row.productText : row.text);
    }
    status_.showText(text, false);
}
