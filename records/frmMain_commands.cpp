// How commands are given, what some of them do to the window, and the status bar. When each may be given
// stands in commands.cpp.

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QResizeEvent>
#include <QScreen>
#include <QTimer>
#include <QToolBar>
#include <algorithm>
#include <limits>
#include <utility>

#include "catalogue/ActiveReport1.h"
#include "common/help.h"
#include "common/modMain.h"
#include "platform/system/launch.h"
#include "platform/system/trap.h"
#include "records/commands.h"
#include "records/frmMain.h"
#include "records/main_bars.h"
#include "records/program_windows.h"

using platform::BoxIcon;

namespace {

const QString kTextPanel = QStringLiteral("Text");
const QString kTimePanel = QStringLiteral("Time");

}  // namespace

void frmMain::unknownIndex(const char* handler, int index) {
    box(QStringLiteral("Unknown index: %1(%2)").arg(QLatin1String(handler)).arg(index), BoxIcon::Exclamation);
}

void frmMain::give(Command command) {
    const CommandRow* row = commandOf(commandTable(), command);
    if (row != nullptr && row->action != nullptr) {
        row->action(*this);
    }
}

void frmMain::giveAt(Menu menu, int position, const char* handler) {
    if (const CommandRow* row = commandAt(commandTable(), menu, position)) {
        give(row->name);
    } else {
        unknownIndex(handler, position);
    }
}

void frmMain::mnuDatabase_Click(int index) {
    giveAt(Menu::Database, index, "mnuDatabase_Click");
}

void frmMain::mnuUtilities_Click(int index) {
    giveAt(Menu::Utilities, index, "mnuUtilities_Click");
}

void frmMain::mnuView_Click(int index) {
    giveAt(Menu::View, index, "mnuView_Click");
}

void frmMain::mnuHelp_Click(int index) {
    giveAt(Menu::Help, index, "mnuHelp_Click");
}

void frmMain::mnuPopup_Click(int index) {
    giveAt(Menu::Popup, index, "mnuPopup_Click");
}

void frmMain::RestartOrTell(bool compact) {
    QString errorText;
    bool ok = false;
    if (compact) {
        CompactOpenDatabase(errorText, ok);
        if (ok || errorText.isEmpty()) {
            return;
        }
        box(QStringLiteral(
                "Database is opened in multiuser environment and at least one user is on line thus it is "
                "impossible to compact database. Application will try to restart the database."),
            BoxIcon::Exclamation);
        errorText.clear();
    }
    RestartDatabase(errorText, ok);
    if (ok || errorText.isEmpty()) {
        return;
    }
    box(QStringLiteral("Restarting database has failed.\n\n%1\n\nAplication will terminate.").arg(errorText),
        BoxIcon::Critical);
    unload();
}

void frmMain::ToggleToolbar() {
    toggleBar(Toolbar1, ToolbarVisible);
}

void frmMain::ToggleStatusBar() {
    toggleBar(StatusBar1, StatusbarVisible);
}

void frmMain::toggleBar(QWidget* bar, bool& wanted) {
    if (bar == nullptr) {
        return;
    }
    wanted = bar->isHidden();
    bar->setVisible(wanted);
    bars_->renew(Menu::View, commandState());
    ArrangeControls();
}

void frmMain::OpenAbout() {
    windows_.showAbout(this);
}

// Other windows read the program's switches when they open; what stands in this one has to follow at once.
void frmMain::OpenOptions() {
    const bool inDinars = CeneDinarske;
    const float rate = KursKupovni;
    const auto small = [](int number) {
        return static_cast<qint16>(
            std::clamp<int>(number, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()));
    };
    MainOptions options{AlwaysCreateBackupDB, small(DueDateDiff), ShowMsgBoxFilterResults, small(DefaultGST)};
    if (windows_.editOptions(this, options)) {
        AlwaysCreateBackupDB = options.AlwaysCreateBackupDB;
        DueDateDiff = options.DueDateDiff;
        ShowMsgBoxFilterResults = options.ShowFilterStatistics;
        DefaultGST = options.DefaultGST;
    }
    if (CeneDinarske != inDinars || KursKupovni != rate) {
        RefreshAll();
    }
}

void frmMain::SetStatusText(const QString& text, bool sticky) {
    if (sticky) {
        stickyText_ = text;
    }
    if (StatusBar1 == nullptr) {
        return;
    }
    const QString shown = text.isEmpty() ? stickyText_ : text;
    if (shown != StatusBar1->panelText(kTextPanel)) {
        StatusBar1->setPanelText(kTextPanel, shown);
    }
}

QString frmMain::statusText() const {
    return StatusBar1 == nullptr ? QString() : StatusBar1->panelText(kTextPanel);
}

void frmMain::statusPanelDoubleClicked(const QString& key) {
    if (key != kTimePanel) {
        return;
    }
    barClickPending_ = false;
    if (!platform::openDateTimePanel()) {
        box(GetResString(162), BoxIcon::Exclamation);
    }
}

// The preview would cover the clock before anybody could click it a second time.
void frmMain::statusBarClicked() {
    barClickPending_ = true;
    QTimer::singleShot(QApplication::doubleClickInterval(), this, [this] {
        if (std::exchange(barClickPending_, false) && QApplication::activeModalWidget() == nullptr) {
            previewClients();
        }
    });
}

void frmMain::previewClients() {
    ActiveReport1 report;
    platform::Trap step;
    step([&] {
        report.setRecordset(Data1[0]->Database().OpenRecordset(stages_.all(kClients).text().toStdString()));
        report.Show(true, this);
    });
    if (step.failed()) {
        box(step.line(), BoxIcon::Exclamation);
    }
}

// --- When a command may be given.

CommandState frmMain::commandState() const {
    CommandState state;
    state.stage = CurrentStage;
    state.clientChosen = Combo1[0]->currentIndex() != -1;
    state.computerChosen = Combo1[1]->currentIndex() != -1;
    state.hasClients = Combo1[0]->entryCount() > 0;
    state.hasComputers = Combo1[1]->entryCount() > 0;
    state.hasServices = ListView1->count() > 0;
    state.serviceChosen = ListView1->selectedIndex() > 0;
    state.dirty = CurrentStage < 3 && StageDirty[static_cast<size_t>(CurrentStage - 1)];
    state.adding = AddNewMode;
    state.sorted = LVWSorted;
    state.activeFilter = ActiveFilter;
    state.toolbarShown = Toolbar1 != nullptr && !Toolbar1->isHidden();
    state.statusBarShown = StatusBar1 != nullptr && !StatusBar1->isHidden();
    return state;
}

void frmMain::UpdateToolbarState() {
    bars_->renewButtons(Renewal::WithRecords, commandState());
}

void frmMain::UpdateServiceButtons() {
    bars_->renewButtons(Renewal::WithServices, commandState());
}

void frmMain::connectServiceList() {
    connect(ListView1, &platform::ListView::contextMenuAsked, this, [this](const QPoint& place) {
        if (mnuPPopup != nullptr) {
            mnuPPopup->popup(place);
        }
    });
    connect(ListView1, &platform::ListView::columnClicked, this, &frmMain::ListView1_ColumnClick);
}

// --- The window's shape.

// A bar that comes or goes makes the window taller or shorter; the panes keep their height.
void frmMain::ArrangeControls() {
    if (isMaximized() || isFullScreen()) {
        return;
    }
    const auto heightOf = [](const QWidget* bar) {
        return bar == nullptr || bar->isHidden() ? 0 : bar->sizeHint().height();
    };
    const int least = centralWidget()->minimumSizeHint().height();
    const int inside = qMax(least, insideHeight_ > 0 ? insideHeight_ : centralWidget()->sizeHint().height());
    const int frame = frameGeometry().height() - height();
    const int wanted = inside + heightOf(menuBar()) + heightOf(Toolbar1) + heightOf(StatusBar1);
    arranging_ = true;
    resize(width(), qMin(wanted, screen()->availableGeometry().height() - frame));
    arranging_ = false;
    insideHeight_ = inside;
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (!arranging_ && isVisible() && activated_) {
        insideHeight_ = centralWidget()->height();
    }
}
