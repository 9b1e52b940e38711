// The menus, the toolbar and the status bar: what stands in them. What they do is in frmMain_commands.cpp.

#include <QAction>
#include <QBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <iterator>

#include "platform/controls/pictures.h"
#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/quick_filters.h"
#include "shell/modMain.h"

using platform::RunError;
using platform::Trap;

namespace {

constexpr int kSeparator = 0;
constexpr int kPictureMissing = 481;  // "Invalid picture"

struct ToolbarEntry {
    const char* key;  // nullptr: a separator
    int tipId;
};
constexpr ToolbarEntry kToolbar[] = {
    {"NewRecord", 2101},    {"EditRecord", 2104}, {nullptr, 0},        {"DeleteRecord", 2102},
    {nullptr, 0},           {"SaveRecord", 2103}, {nullptr, 0},        {"ApplyFilter", 2111},
    {"RemoveFilter", 2112}, {nullptr, 0},         {"Refresh", 2116},   {nullptr, 0},
    {"ViewReport", 2108},   {nullptr, 0},         {"PriceList", 2117}, {"Invoice", 2113},
    {"Quotation", 2114},    {nullptr, 0},         {"Help", 2115},
};
constexpr const char* kDisabledAtStart[] = {"EditRecord", "RemoveFilter", "PriceList", "Invoice",
                                            "Quotation"};

constexpr const char* kTabImages[] = {"Clients",    "ClientsX", "Computers",
                                      "ComputersX", "Services", "ServicesX"};
constexpr const char* kColumnImages[] = {"SortDown", "SortUp", "Dummy"};
constexpr int kTabCaptions[] = {101, 102, 103};
constexpr int kTabTips[] = {104, 105, 106};

void loadImage(QHash<QString, QIcon>& images, const char* key) {
    const QString name = QLatin1String(key);
    const QIcon icon = platform::icon(name);
    if (icon.isNull())
        throw RunError(kPictureMissing, QStringLiteral("Invalid picture: ") + name);
    images.insert(name, icon);
}

// False with the numbered text and the line of the failure, where the step failed.
bool outcome(const Trap& step, int messageId, QString& errorText) {
    if (step.failed())
        errorText = GetResString(messageId) + QLatin1Char('\n') + step.line();
    return !step.failed();
}

}  // namespace

bool frmMain::CreateToolbarImages(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::ToolbarImages);
        for (const ToolbarEntry& entry : kToolbar) {
            if (entry.key != nullptr)
                loadImage(toolbarImages_, entry.key);
        }
    });
    toolbarImagesFailed_ = step.failed();
    return outcome(step, 149, errorText);
}

bool frmMain::CreateTabImages(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::TabImages);
        for (const char* key : kTabImages)
            loadImage(tabImages_, key);
    });
    TabImagesFailed = step.failed();
    return outcome(step, 107, errorText);
}

bool frmMain::CreateColumnImages(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::ColumnImages);
        for (const char* key : kColumnImages)
            loadImage(columnImages_, key);
    });
    return outcome(step, 161, errorText);
}

bool frmMain::CreateTabs(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::Tabs);
        auto* tabs = new StageTabs(centralWidget());
        tabs->setObjectName(QStringLiteral("TabStrip1"));
        tabs->setAccessibleName(QStringLiteral("Stages"));
        for (int i = 0; i < 3; ++i) {
            tabs->addTab(QString());
            tabs->setCaption(i, GetResString(kTabCaptions[i]));
            tabs->setTabToolTip(i, GetResString(kTabTips[i]));
        }
        static_cast<QBoxLayout*>(centralWidget()->layout())->insertWidget(0, tabs);
        TabStrip1 = tabs;
        showTabImages(1);
        connect(tabs, &QTabBar::currentChanged, this, &frmMain::tabChanged);
    });
    return outcome(step, 108, errorText);
}

// The stage on show has its plain picture, the two others the crossed one.
void frmMain::showTabImages(int stage) {
    if (TabImagesFailed)
        return;
    for (int i = 0; i < 3; ++i)
        TabStrip1->setTabIcon(i,
                              tabImages_.value(QLatin1String(kTabImages[2 * i + (i + 1 == stage ? 0 : 1)])));
}

void frmMain::setEnabled(QAction* action, bool enabled) const {
    if (action != nullptr)
        action->setEnabled(enabled);
}

void frmMain::setButtonEnabled(const QString& key, bool enabled) const {
    setEnabled(toolbarButton(key), enabled);
}

QAction* frmMain::toolbarButton(const QString& key) const {
    return toolbarButtons_.value(key);
}

QAction* frmMain::filterEntry(const QString& key) const {
    return filterEntries_.value(key);
}

QMenu* frmMain::makeTopMenu(const QString& name, int id, void (frmMain::*stateRule)()) {
    auto* menu = new QMenu(GetResString(id), this);
    menu->setObjectName(name);
    connect(menu, &QMenu::aboutToShow, this, stateRule);
    return menu;
}

void frmMain::fillMenu(QMenu* menu, QList<QAction*>& items, const QString& name, const QList<int>& ids,
                       void (frmMain::*handler)(int)) {
    items.clear();
    for (const int id : ids) {
        const int position = static_cast<int>(items.size());
        if (id == kSeparator) {
            items.append(menu->addSeparator());
            continue;
        }
        QAction* item = menu->addAction(GetResString(id));
        item->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(position));
        setEnabled(item, true);
        connect(item, &QAction::triggered, this, [this, handler, position] { (this->*handler)(position); });
        items.append(item);
    }
}

void frmMain::makeAllMenus() {
    mnuDDatabase = makeTopMenu(QStringLiteral("mnuDDatabase"), 500, &frmMain::updateDatabaseMenu);
    fillMenu(
        mnuDDatabase, mnuDatabase, QStringLiteral("mnuDatabase"),
        {501, 502, kSeparator, 504, kSeparator, 506, kSeparator, 508, 509, kSeparator, 511, kSeparator, 513},
        &frmMain::mnuDatabase_Click);
    auto* filters = new QMenu(this);
    filters->setObjectName(QStringLiteral("mnuQuickSearch"));
    fillMenu(filters, mnuQuickSearch, filters->objectName(), {521, kSeparator, 523, 524, 525, 526, 527},
             &frmMain::mnuQuickSearch_Click);
    for (QAction* filter : mnuQuickSearch)
        filter->setCheckable(!filter->isSeparator() && filter != mnuQuickSearch.first());
    mnuDatabase.at(8)->setMenu(filters);
    auto* utilities = new QMenu(this);
    utilities->setObjectName(QStringLiteral("mnuUtilities"));
    fillMenu(utilities, mnuUtilities, utilities->objectName(), {548, 549, kSeparator, 551, 552},
             &frmMain::mnuUtilities_Click);
    mnuDatabase.at(10)->setMenu(utilities);

    mnuVView = makeTopMenu(QStringLiteral("mnuVView"), 600, &frmMain::updateViewMenu);
    fillMenu(mnuVView, mnuView, QStringLiteral("mnuView"),
             {601, 602, kSeparator, 604, 605, kSeparator, 607, kSeparator, 609, kSeparator, 611},
             &frmMain::mnuView_Click);
    mnuView.at(0)->setCheckable(true);
    mnuView.at(1)->setCheckable(true);

    mnuHHelp = makeTopMenu(QStringLiteral("mnuHHelp"), 700, &frmMain::updateHelpMenu);
    fillMenu(mnuHHelp, mnuHelp, QStringLiteral("mnuHelp"), {701, 702, kSeparator, 704, kSeparator, 706},
             &frmMain::mnuHelp_Click);

    mnuPPopup = makeTopMenu(QStringLiteral("mnuPPopup"), 800, &frmMain::updatePopupMenu);
    fillMenu(
        mnuPPopup, mnuPopup, QStringLiteral("mnuPopup"),
        {801, kSeparator, 803, 804, kSeparator, 806, kSeparator, 808, kSeparator, 810, 811, kSeparator, 813},
        &frmMain::mnuPopup_Click);
    mnuPPopup->setDefaultAction(mnuPopup.at(2));
}

bool frmMain::CreateMenus(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::Menus);
        makeAllMenus();
        for (QMenu* menu : {mnuDDatabase, mnuVView, mnuHHelp})
            menuBar()->addMenu(menu);
        mnuView.at(0)->setVisible(!toolbarImagesFailed_);
        updateViewMenu();
        updateDatabaseMenu();
    });
    if (step.failed())
        menuBar()->hide();
    return outcome(step, 160, errorText);
}

bool frmMain::CreateStatusBar(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::StatusBar);
        auto* bar = new platform::StatusBar(this);
        bar->setObjectName(QStringLiteral("StatusBar1"));
        bar->addPanel(QStringLiteral("Text"), platform::StatusBar::AutoSize::Spring);
        bar->addClock(QStringLiteral("Time"));
        bar->setPanelAlignment(QStringLiteral("Time"), Qt::AlignCenter);
        setStatusBar(bar);
        bar->setVisible(StatusbarVisible);
        StatusBar1 = bar;
        connect(bar, &platform::StatusBar::panelDoubleClicked, this, &frmMain::statusPanelDoubleClicked);
        connect(bar, &platform::StatusBar::barClicked, this, &frmMain::statusBarClicked);
    });
    if (step.failed())
        forbidBar(1);
    return outcome(step, 109, errorText);
}

// The View entry of a bar that could not be made.
void frmMain::forbidBar(int viewPosition) {
    QAction* entry = mnuView.value(viewPosition);
    if (entry == nullptr)
        return;
    entry->setChecked(false);
    entry->setEnabled(false);
}

void frmMain::addToolbarButton(const QString& key, int tipId) {
    QAction* button = Toolbar1->addAction(toolbarImages_.value(key), GetResString(tipId));
    button->setObjectName(key);
    button->setToolTip(GetResString(tipId));
    toolbarButtons_.insert(key, button);
    setEnabled(button, std::none_of(std::begin(kDisabledAtStart), std::end(kDisabledAtStart),
                                    [&](const char* name) { return key == QLatin1String(name); }));
    QWidget* face = Toolbar1->widgetForAction(button);
    face->setObjectName(QStringLiteral("Toolbar1(%1)").arg(key));
    face->setAccessibleName(GetResString(tipId));
    connect(button, &QAction::triggered, this, [this, key] { toolbarClick(key); });
}

void frmMain::addFilterMenu() {
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("ApplyFilterMenu"));
    int position = quick_filters::kFirstPosition;
    for (const quick_filters::Filter& filter : quick_filters::kFilters) {
        QAction* entry = menu->addAction(GetResString(filter.textId));
        entry->setObjectName(QLatin1String(filter.key));
        filterEntries_.insert(entry->objectName(), entry);
        setEnabled(entry, true);
        connect(entry, &QAction::triggered, this, [this, position] { mnuQuickSearch_Click(position); });
        ++position;
    }
    QAction* button = toolbarButton(QStringLiteral("ApplyFilter"));
    button->setMenu(menu);
    qobject_cast<QToolButton*>(Toolbar1->widgetForAction(button))->setPopupMode(QToolButton::MenuButtonPopup);
}

bool frmMain::CreateToolbar(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::Toolbar);
        Toolbar1 = addToolBar(GetResString(1));
        Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
        Toolbar1->setMovable(false);
        Toolbar1->setContextMenuPolicy(Qt::PreventContextMenu);
        for (const ToolbarEntry& entry : kToolbar) {
            if (entry.key == nullptr)
                Toolbar1->addSeparator();
            else
                addToolbarButton(QLatin1String(entry.key), entry.tipId);
        }
        addFilterMenu();
    });
    const bool usable = !step.failed() && !toolbarImagesFailed_;
    if (Toolbar1 != nullptr)
        Toolbar1->setVisible(usable && ToolbarVisible);
    if (!usable)
        forbidBar(0);
    return outcome(step, 150, errorText);
}
