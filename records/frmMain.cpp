#include "records/frmMain.h"

#include <QCloseEvent>
#include <QDate>
#include <QScreen>
#include <QStackedWidget>
#include <chrono>

#include "common/help.h"
#include "common/modMain.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/trap.h"
#include "records/program_windows.h"
#include "records/service_list.h"

using platform::BoxIcon;

namespace {

constexpr int kUsualWidth = 980;  // logical pixels

qint64 steadyMilliseconds() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

frmMain::frmMain(ProgramWindows& windows, QWidget* parent)
    : QMainWindow(parent), GetTickCount(steadyMilliseconds), windows_(windows) {
    setObjectName(QStringLiteral("frmMain"));
    setContextMenuPolicy(Qt::NoContextMenu);
    makeBars();
    buildPanes();
    makeServiceList();
    bindFields();
    connectFields();
    connectServiceList();
}

frmMain::~frmMain() = default;

void frmMain::setSplash(std::unique_ptr<SplashWindow> splash) {
    splash_ = std::move(splash);
    if (splash_) {
        splash_->setCloseCallback([this] { DistroySplashForm(); });
    }
}

void frmMain::DistroySplashForm() {
    if (!splash_) {
        return;
    }
    splash_->hide();
    // The splash window's own timer may be what asks for this, so it must outlive the call.
    splash_.release()->deleteLater();
}

platform::BoxAnswer frmMain::box(const QString& text, BoxIcon icon, platform::BoxButtons buttons,
                                 platform::BoxAnswer preselected) {
    return platform::showBox({text, GetResString(1), icon, buttons, preselected}, this);
}

bool frmMain::runStep(StepRoutine routine) {
    QString errorText;
    if ((this->*routine)(errorText)) {
        return true;
    }
    box(errorText, BoxIcon::Critical);
    if (splash_) {
        splash_->repaint();
    }
    return false;
}

bool frmMain::failDisplay(const QString& errorText) {
    box(errorText, BoxIcon::Critical);
    DistroySplashForm();
    unload();
    return false;
}

bool frmMain::Display() {
    const qint64 startTick = GetTickCount();
    QString errorText;
    {
        const platform::WaitPointer pointer;
        LoadSettings();
        runStep(&frmMain::CreateToolbarImages);
        runStep(&frmMain::CreateTabImages);
        runStep(&frmMain::CreateColumnImages);
        if (!CreateTabs(errorText)) {
            return failDisplay(errorText);
        }
        for (platform::DateField* date : DTPicker1) {
            date->setValue(QDate::currentDate());
        }
        if (!InitServiceListView(errorText)) {
            return failDisplay(errorText);
        }
        showSortIcon();
        setWindowTitle(GetResString(1));
        runStep(&frmMain::CreateMenus);
        if (runStep(&frmMain::CreateStatusBar)) {
            SetStatusText(QStringLiteral("Ready"), true);
        }
        runStep(&frmMain::CreateToolbar);
        panes_->setCurrentIndex(0);
        bool ok = false;
        OpenDataControls(errorText, ok);
        if (!ok) {
            return failDisplay(errorText);
        }
        FillClientCombo();
        FillComputerCombo();
        setTabCaption(2, GetResString(102));
        FillServiceList({});
        UpdateServiceButtons();
        services_->makeEditor();
        settleSplash(startTick);
        resize(qMin(screen()->availableSize().width(), qMax(kUsualWidth, sizeHint().width())), height());
        ArrangeControls();
        show();
    }
    if (ShowTipsAtStartup) {
        repaint();
        windows_.showTip(this, [this] { DistroySplashForm(); });
    }
    return true;
}

// The picture stays for seven seconds in all, however much of that time the building took.
void frmMain::settleSplash(qint64 startTick) {
    if (!splash_) {
        return;
    }
    const qint64 elapsed = GetTickCount() - startTick;
    if (elapsed >= kSplashTime) {
        DistroySplashForm();
        return;
    }
    SetTopMost(splash_.get(), true);
    splash_->repaint();
    splash_->setTimerInterval(static_cast<int>(kSplashTime - elapsed));
}

// The order of the list that was in force when the program was last closed. What the settings hold goes into
// a statement, and a word in it that is no column would send a sound database to repair.
void frmMain::showSortIcon() {
    LVWSortOrder = LVWSortOrder == QLatin1String("ASC") ? QStringLiteral("ASC") : QStringLiteral("DESC");
    const int column = ListView1->columnOf(LVWSortField);
    if (column == 0) {
        LVWSorted = false;
        LVWSortField = QStringLiteral("ServiceStarted");
        LVWSortOrder = QStringLiteral("ASC");
    }
    if (!LVWSorted) {
        return;
    }
    ListView1->setColumnImages(columnImages_);
    ListView1->setColumnIcon(
        column, LVWSortOrder == QLatin1String("ASC") ? QStringLiteral("SortUp") : QStringLiteral("SortDown"));
}

void frmMain::unload() {
    close();
    unloadHandler();  // a window that was never shown gets no close event on every platform
}

void frmMain::closeEvent(QCloseEvent* event) {
    unloadHandler();
    event->accept();
}

void frmMain::unloadHandler() {
    if (unloaded_) {
        return;
    }
    unloaded_ = true;
    platform::Trap step;
    step([&] {
        bool ok = false;
        CloseDatabases(ok);
    });
    services_->dropEditor();
    SaveSettings();
    step([&] { WinHelp(helpFile(), HELP_QUIT); });
    step.clear();
    DistroySplashForm();
    emit unloaded();
}

bool frmMain::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && !activated_) {
        activated_ = true;
        ArrangeControls();
    }
    return QMainWindow::event(event);
}
