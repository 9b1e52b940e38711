#include "records/frmMain.h"

#include <QCloseEvent>
#include <QDate>
#include <QMenu>
#include <QScreen>
#include <QToolBar>

#include "common/help.h"
#include "common/modMain.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/trap.h"
#include "records/clients_preview.h"
#include "records/entry_binding.h"
#include "records/main_settings.h"
#include "records/program_windows.h"
#include "records/stage_keys.h"

using platform::ListView;

namespace {

constexpr int kUsualWidth = 1080;  // logical pixels; the list of services shows all its columns

// What may be commanded just now.
CommandState stateOf(const frmMain& window) {
    const Stages& stages = window.shop.stages;
    const ListView& list = *window.panes.list();
    const int stage = stages.CurrentStage;
    CommandState state;
    state.stage = stage;
    state.clientChosen = stages[kClients].entries.isChosen();
    state.computerChosen = stages[kComputers].entries.isChosen();
    state.hasClients = !stages[kClients].entries.isEmpty();
    state.hasComputers = !stages[kComputers].entries.isEmpty();
    state.hasServices = list.count() > 0;
    state.serviceChosen = list.selectedIndex() > 0;
    state.dirty = stage < 3 && stages[stage - 1].dirty;
    state.adding = window.shop.editing.AddNewMode;
    state.sorted = window.choices.order.LVWSorted;
    state.activeFilter = window.shop.filter.ActiveFilter;
    const QToolBar* toolbar = window.bars.toolbar.bar();
    state.toolbarShown = toolbar != nullptr && !toolbar->isHidden();
    state.statusBarShown = window.status.bar() != nullptr && !window.status.bar()->isHidden();
    return state;
}

}  // namespace

frmMain::frmMain(ProgramWindows& windows, QWidget* parent)
    : QMainWindow(parent),
      bars(*this, commandTable(), start, [this] { return stateOf(*this); }),
      panes(*new StagePanes(shop.fields, this)),
      commands({*this, windows, choices, shop.stages, shop.editing, shop.removal, services.commands,
                services.sorting, shop.filter, filters, shop.session, report, shape, [this] { unload(); }}),
      windows_(windows) {
    setObjectName(QStringLiteral("frmMain"));
    setContextMenuPolicy(Qt::NoContextMenu);
    setCentralWidget(&panes);
    connectParts();
}

void frmMain::connectParts() {
    for (int i = 0; i < kSelectorCount; ++i) {
        shop.stages[i].entries.setSelector(panes.selector(i));
        connect(panes.selector(i), &QComboBox::currentIndexChanged, this,
                [this, i] { shop.editing.choose(i); });
    }
    bindFields(shop.stages, shop.fields);
    connect(&bars.menus, &MainMenus::given, this, [this](Command command) { commands.give(command); });
    connect(&bars.toolbar, &MainToolbar::given, this, [this](Command command) { commands.give(command); });
    connect(&status, &MainStatus::clicked, this, [this] { previewClients(*this, shop.stages); });
    connect(panes.list(), &ListView::contextMenuAsked, this, [this](const QPoint& place) {
        if (QMenu* menu = bars.menus.menu(Menu::Popup)) {
            menu->popup(place);
        }
    });
    connect(panes.list(), &ListView::columnClicked, this,
            [this](int column) { services.sorting.ListView1_ColumnClick(column); });
}

// --- The start.

bool frmMain::Display() {
    const qint64 startTick = start.splash.GetTickCount();
    {
        const platform::WaitPointer pointer;
        QString errorText;
        if (!build(errorText) || !fill(errorText)) {
            start.giveUp(errorText);
            unload();
            return false;
        }
        start.splash.settle(startTick);
        resize(qMin(screen()->availableSize().width(), qMax(kUsualWidth, sizeHint().width())), height());
        shape.ArrangeControls();
        show();
        watch_.start();
    }
    if (ShowTipsAtStartup) {
        repaint();
        windows_.showTip(this, [this] { start.splash.DistroySplashForm(); });
    }
    return true;
}

bool frmMain::build(QString& errorText) {
    LoadSettings(*this, choices);
    start.run([this](QString& reason) { return bars.CreateToolbarImages(reason); });
    start.run([this](QString& reason) { return tabs.CreateTabImages(reason); });
    start.run([this](QString& reason) { return services.sorting.CreateColumnImages(reason); });
    if (!tabs.CreateTabs(errorText)) {
        return false;
    }
    addStageKeys(*this, *tabs.tabs(), panes);
    for (platform::DateField* date : shop.fields.dates) {
        date->setValue(QDate::currentDate());
    }
    if (!services.InitServiceListView(errorText)) {
        return false;
    }
    services.sorting.takeFromSettings();
    setWindowTitle(GetResString(1));
    buildBars();
    panes.showPane(kClients);
    return true;
}

void frmMain::buildBars() {
    start.run([this](QString& reason) { return bars.CreateMenus(reason); });
    const bool hasStatus = start.run([this](QString& reason) {
        const bool made = status.CreateStatusBar(choices.StatusbarVisible, reason);
        if (!made) {
            bars.menus.forbid(Command::ShowStatusBar);
        }
        return made;
    });
    if (hasStatus) {
        status.SetStatusText(QStringLiteral("Ready"), true);
    }
    start.run([this](QString& reason) { return bars.CreateToolbar(choices.ToolbarVisible, reason); });
}

bool frmMain::fill(QString& errorText) {
    bool ok = false;
    shop.session.OpenDataControls(errorText, ok);
    if (!ok) {
        return false;
    }
    shop.reading.FillClientCombo();
    shop.reading.FillComputerCombo();
    tabs.setCaption(2, GetResString(102));
    services.list.fill({});
    bars.UpdateServiceButtons();
    services.commands.makeEditor();
    return true;
}

void frmMain::restartUnderAnotherNumber() {
    if (!report.isRunning()) {
        commands.give(Command::RestartDatabase);
    }
}

// --- The end.

void frmMain::unload() {
    close();
    takeDown();  // a window that was never shown gets no close event on every platform
}

void frmMain::closeEvent(QCloseEvent* event) {
    takeDown();
    event->accept();
}

void frmMain::takeDown() {
    if (unloaded_) {
        return;
    }
    unloaded_ = true;
    watch_.stop();
    report.breakOff();
    platform::Trap step;
    step([&] {
        bool ok = false;
        shop.session.CloseDatabases(ok);
    });
    services.commands.dropEditor();
    SaveSettings(*this, choices, *panes.list());
    step([&] { WinHelp(helpFile(), HELP_QUIT); });
    step.clear();
    start.splash.DistroySplashForm();
    emit unloaded();
}
