// The toolbar, the status bar, the popup menus.

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTextEdit>
#include <QToolBar>
#include <functional>
#include <utility>

#include "catalogue/frmKonfigPrint.h"
#include "catalogue/frmKonfiguratorEx.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"

using platform::Trap;

namespace {

struct Command {
    const char* key;  // nullptr: a separator
    int text;         // tells what it does
    const char* icon;
    const char* caption;
};
constexpr Command kToolbar[] = {
    {"new", 10511, "New", "Nova stavka"},   {nullptr, 0, nullptr, nullptr},
    {"edit", 10512, "Edit", "Promeni"},     {nullptr, 0, nullptr, nullptr},
    {"delete", 10513, "Delete", "Izbrisi"}, {"delall", 10514, "DeleteAll", "Izbrisi sve"},
    {nullptr, 0, nullptr, nullptr},         {"print", 10515, "Print", "Stampaj"},
    {nullptr, 0, nullptr, nullptr},         {"refresh", 10516, "Refresh", "Azuriraj"},
    {nullptr, 0, nullptr, nullptr},         {"unsort", 10517, "Unsort", "Ponisti sortiranje"},
    {nullptr, 0, nullptr, nullptr},         {"help", 10518, "Help", "Pomoc"}};

constexpr Command kListMenu[] = {{nullptr, 0, nullptr, "-hahaha"},
                                 {"new", 10511, "New", "Nova Stavka...\tCtrl+N"},
                                 {"edit", 10512, "Edit", "Promeni Naziv..."},
                                 {nullptr, 0, nullptr, "-"},
                                 {"delete", 10513, "Delete", "Izbrisi\tDel"},
                                 {"delall", 10514, "DeleteAll", "Izbrisi Sve\tShift+Del"},
                                 {nullptr, 0, nullptr, "-"},
                                 {"asc", 10525, "SortUp", "Sortiraj Rastuce"},
                                 {"desc", 10526, "SortDown", "Sortiraj Opadajuce"},
                                 {nullptr, 0, nullptr, "-"},
                                 {"unsort", 10517, "Unsort", "Ponisti Sortiranje\tF8"},
                                 {nullptr, 0, nullptr, "-"},
                                 {"refresh", 10516, "Refresh", "Azuriraj Podatke\tF5"}};
constexpr Command kProductMenu[] = {{nullptr, 0, nullptr, "-Proizvodi"},
                                    {"lvnew", 10519, "New", "Nova Stavka...\tCtrl+N"},
                                    {"lvedit", 10520, "Edit", "Promeni Naziv..."},
                                    {nullptr, 0, nullptr, "-"},
                                    {"lvdelete", 10521, "Delete", "Izbrisi\tDel"},
                                    {"lvdelall", 10522, "DeleteAll", "Izbrisi Sve\tShift+Del"},
                                    {nullptr, 0, nullptr, "-"},
                                    {"lvprint", 10515, "Print", "Stampaj...\tCtrl+P"},
                                    {nullptr, 0, nullptr, "-"},
                                    {"lvunsort", 10524, "Unsort", "Ponisti Sortiranje\tF8"},
                                    {nullptr, 0, nullptr, "-"},
                                    {"lvrefresh", 10523, "Refresh", "Azuriraj Podatke\tF5"}};
constexpr char kListMenuName[] = "mnu_listpopup", kProductMenuName[] = "mnu_lvwpopup";

template <typename Rows>
void buildMenu(platform::PopupMenu& menu, const Rows& rows, const char* name, Trap& step) {
    step([&] { menu.clear(); });
    for (const Command& row : rows)
        step([&] {
            menu.addItem(QLatin1String(row.caption), row.text ? GetResString(row.text) : QString(),
                         row.icon ? platform::icon(QLatin1String(row.icon)) : QIcon(), true,
                         row.key ? QLatin1String(row.key) : QString());
        });
    step([&] { menu.store(QLatin1String(name)); });
}

template <typename Commands>
void run(const Commands& commands, const QString& key) {
    for (const auto& [name, command] : commands) {
        if (key == QLatin1String(name)) {
            command();
            return;
        }
    }
}

template <typename Rows>
int textOf(const Rows& rows, const QString& key) {
    for (const Command& row : rows) {
        if (row.key && key == QLatin1String(row.key))
            return row.text;
    }
    return 0;
}

}  // namespace

void frmKonfiguratorEx::buildToolbar() {
    Toolbar1 = new QToolBar(this);
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setAccessibleName(QStringLiteral("Komande"));
    Toolbar1->setMovable(false);
    for (const Command& button : kToolbar) {
        if (!button.key) {
            Toolbar1->addSeparator();
            continue;
        }
        const QString key = QLatin1String(button.key);
        QAction* action =
            Toolbar1->addAction(platform::icon(QLatin1String(button.icon)), QLatin1String(button.caption));
        action->setObjectName(key);
        action->setData(GetResString(button.text));
        action->setToolTip(GetResString(button.text));
        connect(action, &QAction::triggered, this, [this, key] { runToolbar(key); });
        if (QWidget* widget = Toolbar1->widgetForAction(action)) {
            widget->setFocusPolicy(Qt::NoFocus);  // the focus tells which pane the button works on
            widget->setAccessibleName(QLatin1String(button.caption));
        }
    }
}

QAction* frmKonfiguratorEx::toolbarButton(const QString& key) const {
    for (QAction* action : Toolbar1->actions()) {
        if (!action->isSeparator() && action->objectName() == key)
            return action;
    }
    return nullptr;
}

// Somebody who types in a search box means the list under it.
void frmKonfiguratorEx::runToolbar(const QString& key) {
    const int pane = activePane();
    const bool onList = pane < kListPanes;
    const std::pair<const char*, std::function<void()>> commands[] = {
        {"new", [&] { onList ? AddNewGrpMft() : AddNewProduct(); }},
        {"edit", [&] { onList ? editGrpMft(pane) : EditProduct(); }},
        {"delete", [&] { onList ? deleteGrpMft(pane) : DeleteProduct(); }},
        {"delall", [&] { onList ? DeleteAllGrpMft() : DeleteAllProduct(); }},
        {"print", [&] { PrintPriceList(); }},
        {"refresh", [&] { onList ? sortList(pane, kRefreshOnly, false) : RefreshProduct(false); }},
        {"unsort", [&] { onList ? sortList(pane, kNoSort, false) : RefreshProduct(true); }},
        {"help", [&] { box(QStringLiteral("Bice, bice..."), platform::BoxIcon::Information); }}};
    run(commands, key);
}

int frmKonfiguratorEx::activePane() const {
    const int list = focusedListPane(true);
    return list >= 0 ? list : kProducts;
}

bool frmKonfiguratorEx::hasRows(int pane) const {
    return pane < kListPanes ? List1[static_cast<size_t>(pane)]->count() > 0 : ListView1->count() > 0;
}

bool frmKonfiguratorEx::hasSelection(int pane) const {
    return pane < kListPanes ? List1[static_cast<size_t>(pane)]->curSel() >= 0
                             : ListView1->selectedIndex() > 0;
}

void frmKonfiguratorEx::PrintPriceList() {
    frmKonfigPrint options(this);
    options.setIDGrupe(List1[kGroups]->selectedData());
    options.setIDProizvodjaca(List1[kManufacturers]->selectedData());
    options.Display();
    options.Unload();
}

platform::SortTag frmKonfiguratorEx::sortOf(int pane) const {
    Trap step;  // filling the list has told of it already
    platform::SortTag sort;
    step([&] { sort = platform::splitSortTag(SortTagOf[static_cast<size_t>(pane)]); });
    return sort;
}

void frmKonfiguratorEx::ToolbarUpdate() {
    const int pane = activePane();
    const bool rows = hasRows(pane);
    const bool selected = rows && hasSelection(pane);
    const std::pair<const char*, bool> states[] = {{"edit", selected},
                                                   {"delete", selected},
                                                   {"delall", rows},
                                                   {"print", rows && pane == kProducts},
                                                   {"unsort", rows && sortOf(pane).sorted}};
    for (const auto& [key, on] : states)
        toolbarButton(QLatin1String(key))->setEnabled(on);
}

QString frmKonfiguratorEx::CreateMenu() {
    Trap step;
    buildMenu(*cP, kListMenu, kListMenuName, step);
    buildMenu(*cP, kProductMenu, kProductMenuName, step);
    if (!step.failed())
        return {};
    return QStringLiteral("%1 Prog. linija: %2; frmKonfiguratorEx -> CreateMenu procedura.")
        .arg(step.line())
        .arg(step.codeLine());
}

void frmKonfiguratorEx::openListMenu(int index, const QPoint& at) {
    focusPane(index);
    Trap step;
    step([&] { cP->restore(QLatin1String(kListMenuName)); });
    step([&] {
        cP->setCaption(1, index == kGroups ? QStringLiteral("-Grupe") : QStringLiteral("-Proizvodjaci"));
    });
    const bool rows = hasRows(index);
    const bool selected = hasSelection(index);
    const platform::SortTag sort = sortOf(index);
    const bool ascending = sort.order == QLatin1String("ASC");
    enableItems({{"edit", selected},
                 {"delete", selected},
                 {"delall", rows},
                 {"asc", rows && !(sort.sorted && ascending)},
                 {"desc", rows && !(sort.sorted && !ascending)},
                 {"unsort", rows && sort.sorted}},
                step);
    step([&] { cP->show(at); });
}

void frmKonfiguratorEx::openProductMenu(const QPoint& at) {
    focusPane(kProducts);
    Trap step;
    step([&] { cP->restore(QLatin1String(kProductMenuName)); });
    const bool rows = hasRows(kProducts);
    const bool selected = rows && hasSelection(kProducts);
    enableItems({{"lvedit", selected},
                 {"lvdelete", selected},
                 {"lvdelall", rows},
                 {"lvprint", rows},
                 {"lvunsort", rows && sortOf(kProducts).sorted}},
                step);
    step([&] { cP->show(at); });
}

void frmKonfiguratorEx::enableItems(std::initializer_list<std::pair<const char*, bool>> states, Trap& step) {
    for (const auto& [key, on] : states)
        step([&, name = QString(QLatin1String(key)), state = on] { cP->setEnabled(name, state); });
}

void frmKonfiguratorEx::cP_Click(int item) {
    const std::pair<const char*, std::function<void()>> commands[] = {
        {"new", [this] { AddNewGrpMft(); }},
        {"edit", [this] { EditGrpMft(); }},
        {"delete", [this] { DeleteGrpMft(); }},
        {"delall", [this] { DeleteAllGrpMft(); }},
        {"asc", [this] { SortList(kAscending, false); }},
        {"desc", [this] { SortList(kDescending, false); }},
        {"unsort", [this] { SortList(kNoSort, false); }},
        {"refresh", [this] { SortList(kRefreshOnly, false); }},
        {"lvnew", [this] { AddNewProduct(); }},
        {"lvedit", [this] { EditProduct(); }},
        {"lvdelete", [this] { DeleteProduct(); }},
        {"lvdelall", [this] { DeleteAllProduct(); }},
        {"lvprint", [this] { PrintPriceList(); }},
        {"lvunsort", [this] { RefreshProduct(true); }},
        {"lvrefresh", [this] { RefreshProduct(false); }}};
    run(commands, cP->keyOf(item));
}

void frmKonfiguratorEx::cP_ItemHighlight(int item, bool enabled, bool separator) {
    const QString key = cP->keyOf(item);
    int text = 0;
    if (enabled && !separator && !key.isEmpty()) {
        text = textOf(kListMenu, key);
        if (text == 0)
            text = textOf(kProductMenu, key);
    }
    ShowStatusText(text ? GetResString(text) : QStringLiteral(" "), false);
}

void frmKonfiguratorEx::ShowStatusText(const QString& text, bool sticky) {
    if (sticky)
        standingText_ = text;
    const QString& shown = text.isEmpty() ? standingText_ : text;
    const QString panel = QStringLiteral("tekst");
    if (StatusBar1->panelText(panel) != shown)
        StatusBar1->setPanelText(panel, shown);
}

void frmKonfiguratorEx::showCaption(const QString& caption, const QString& iconKey) {
    const QString shown = QStringLiteral("   ") + caption;
    if (captionText_->text() == shown && Picture1_5->property("icon") == iconKey)
        return;
    captionText_->setText(shown);
    Picture1_5->setProperty("icon", iconKey);
    Picture1_5->setAccessibleName(caption.trimmed());
    const QString drawing =
        iconKey == QLatin1String("type") ? QStringLiteral("Type") : QStringLiteral("Zoom");
    captionIcon_->setPixmap(platform::icon(drawing).pixmap(16));
}

void frmKonfiguratorEx::focusCame(const QObject* widget) {
    static constexpr const char* kCaptions[] = {"GRUPE", "PROIZVODJACI", "PROIZVODI"};
    int pane = -1;
    if (widget == ListView1)
        pane = kProducts;
    else if (widget == List1[kGroups] || widget == List1[kManufacturers])
        pane = widget == List1[kGroups] ? kGroups : kManufacturers;
    if (pane >= 0) {
        showCaption(QLatin1String(kCaptions[pane]), QStringLiteral("zoom"));
        showCountText(pane);
    } else if (searchBoxOf(widget) >= 0) {
        showCaption(QStringLiteral(" Auto Fill..."), QStringLiteral("type"));
    }
    ToolbarUpdate();
}

void frmKonfiguratorEx::pointerMoved(const QObject* widget, const QPoint& globalPosition) {
    if (widget != Toolbar1 && widget->parent() != Toolbar1) {
        ShowStatusText(QString(), false);
        return;
    }
    const QAction* under = Toolbar1->actionAt(Toolbar1->mapFromGlobal(globalPosition));
    const bool tells = under && under->isEnabled() && !under->isSeparator();
    ShowStatusText(tells ? under->data().toString() : QStringLiteral(" "), false);
}
