// The pieces of the main window around its panes: pictures, tabs, menus, status bar, toolbar. Which commands
// there are stands in commands.cpp.

#include <QAction>
#include <QBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "common/modMain.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"
#include "records/commands.h"
#include "records/frmMain.h"
#include "records/main_bars.h"

using platform::RunError;
using platform::Trap;

namespace {

constexpr int kPictureMissing = 481;  // "Invalid picture"

constexpr const char* kTabImages[] = {"Clients",    "ClientsX", "Computers",
                                      "ComputersX", "Services", "ServicesX"};
constexpr const char* kColumnImages[] = {"SortDown", "SortUp", "Dummy"};
constexpr int kTabCaptions[] = {101, 102, 103};
constexpr int kTabTips[] = {104, 105, 106};

void loadImage(QHash<QString, QIcon>& images, const char* key) {
    const QString name = QLatin1String(key);
    const QIcon icon = platform::icon(name);
    if (icon.isNull()) {
        throw RunError(kPictureMissing, QStringLiteral("Invalid picture: ") + name);
    }
    images.insert(name, icon);
}

// False with the numbered text and the line of the failure, where the step failed.
bool outcome(const Trap& step, int messageId, QString& errorText) {
    if (step.failed()) {
        errorText = GetResString(messageId) + QLatin1Char('\n') + step.line();
    }
    return !step.failed();
}

}  // namespace

bool frmMain::CreateToolbarImages(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::ToolbarImages);
        for (const CommandRow& row : commandTable()) {
            if (row.button.key != nullptr) {
                loadImage(toolbarImages_, row.button.key);
            }
        }
    });
    toolbarImagesFailed_ = step.failed();
    return outcome(step, 149, errorText);
}

bool frmMain::CreateTabImages(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::TabImages);
        for (const char* key : kTabImages) {
            loadImage(tabImages_, key);
        }
    });
    TabImagesFailed = step.failed();
    return outcome(step, 107, errorText);
}

bool frmMain::CreateColumnImages(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::ColumnImages);
        for (const char* key : kColumnImages) {
            loadImage(columnImages_, key);
        }
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
    if (TabImagesFailed) {
        return;
    }
    for (int i = 0; i < 3; ++i) {
        TabStrip1->setTabIcon(i,
                              tabImages_.value(QLatin1String(kTabImages[2 * i + (i + 1 == stage ? 0 : 1)])));
    }
}

void frmMain::makeBars() {
    bars_ = new MainBars(*this, commandTable());
    connect(bars_, &MainBars::given, this, &frmMain::give);
    connect(bars_, &MainBars::opening, this, [this](Menu menu) { bars_->renew(menu, commandState()); });
}

void frmMain::setButtonEnabled(const QString& key, bool enabled) const {
    if (QAction* button = toolbarButton(key)) {
        button->setEnabled(enabled);
    }
}

void frmMain::allowFiltersBut(int number) const {
    bars_->allowFiltersBut(number);
}

QAction* frmMain::action(Command command) const {
    return bars_->entry(command);
}

QAction* frmMain::popupAction(Command command) const {
    return bars_->popupEntry(command);
}

QAction* frmMain::toolbarButton(const QString& key) const {
    return bars_->button(key);
}

QAction* frmMain::filterEntry(const QString& key) const {
    return bars_->filterEntry(key);
}

bool frmMain::CreateMenus(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::Menus);
        bars_->makeMenus();
        mnuDDatabase = bars_->menu(Menu::Database);
        mnuVView = bars_->menu(Menu::View);
        mnuHHelp = bars_->menu(Menu::Help);
        mnuPPopup = bars_->menu(Menu::Popup);
        mnuPPopup->setDefaultAction(popupAction(Command::EditService));
        for (QMenu* menu : {mnuDDatabase, mnuVView, mnuHHelp}) {
            menuBar()->addMenu(menu);
        }
        action(Command::ShowToolbar)->setVisible(!toolbarImagesFailed_);
        bars_->renew(Menu::View, commandState());
        bars_->renew(Menu::Database, commandState());
    });
    if (step.failed()) {
        menuBar()->hide();
    }
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
    if (step.failed()) {
        bars_->forbid(Command::ShowStatusBar);
    }
    return outcome(step, 109, errorText);
}

bool frmMain::CreateToolbar(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::Toolbar);
        bars_->makeToolbar(GetResString(1), toolbarImages_);
    });
    Toolbar1 = bars_->toolbar();
    const bool usable = !step.failed() && !toolbarImagesFailed_;
    if (Toolbar1 != nullptr) {
        Toolbar1->setVisible(usable && ToolbarVisible);
    }
    if (!usable) {
        bars_->forbid(Command::ShowToolbar);
    }
    return outcome(step, 150, errorText);
}
