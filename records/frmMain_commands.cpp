// What the commands do, and when they may be given.

#include <QAction>
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
#include "platform/system/launch.h"
#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/quick_filters.h"
#include "shell/frmOptions.h"
#include "shell/frmSplash.h"
#include "shell/modMain.h"

using platform::BoxIcon;

namespace {

const QString kTextPanel = QStringLiteral("Text");
const QString kTimePanel = QStringLiteral("Time");

}  // namespace

void frmMain::unknownIndex(const char* handler, int index) {
    box(QStringLiteral("Unknown index: %1(%2)").arg(QLatin1String(handler)).arg(index), BoxIcon::Exclamation);
}

void frmMain::mnuDatabase_Click(int index) {
    bool ok = false;
    switch (index) {
        case 0:
            return AddNewRecord();
        case 1:
            return EditService(1);
        case 3:
            return DeleteRecord(CurrentStage - 1);
        case 5:
            return SaveRecord(CurrentStage, ok);
        case 7:
            box(GetResString(166), BoxIcon::Information);
            return;
        case 8:
        case 10:
            return;  // their sub-menus act
        case 12:
            return unload();
        default:
            return unknownIndex("mnuDatabase_Click", index);
    }
}

void frmMain::mnuUtilities_Click(int index) {
    if (index == 0 || index == 1)
        return OpenDocumentOptions(index == 0);
    if (index != 3 && index != 4)
        return unknownIndex("mnuUtilities_Click", index);
    QString errorText;
    bool ok = false;
    if (index == 4) {
        CompactOpenDatabase(errorText, ok);
        if (ok || errorText.isEmpty())
            return;
        box(QStringLiteral(
                "Database is opened in multiuser environment and at least one user is on line thus it is "
                "impossible to compact database. Application will try to restart the database."),
            BoxIcon::Exclamation);
        errorText.clear();
    }
    RestartDatabase(errorText, ok);
    if (ok || errorText.isEmpty())
        return;
    box(QStringLiteral("Restarting database has failed.\n\n%1\n\nAplication will terminate.").arg(errorText),
        BoxIcon::Critical);
    unload();
}

void frmMain::mnuView_Click(int index) {
    if (index == 3)
        return OpenReportOptions();
    if (index == 4)
        return GenerateReport();
    if (index == 6)
        return OpenServiceRequisition();
    if (index == 8)
        return openOptions();
    if (index == 10)
        return RefreshAll();
    if (index != 0 && index != 1)
        return unknownIndex("mnuView_Click", index);
    QWidget* bar = index == 0 ? static_cast<QWidget*>(Toolbar1) : StatusBar1;
    if (bar == nullptr)
        return;
    bool& wanted = index == 0 ? ToolbarVisible : StatusbarVisible;
    wanted = bar->isHidden();
    bar->setVisible(wanted);
    updateViewMenu();
    ArrangeControls();
}

// Other windows read the program's switches when they open; what stands in this one has to follow at once.
void frmMain::openOptions() {
    const bool inDinars = CeneDinarske;
    const float rate = KursKupovni;
    const auto small = [](int number) {
        return static_cast<qint16>(
            std::clamp<int>(number, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()));
    };
    frmOptions options(this);
    options.AlwaysCreateBackupDB = AlwaysCreateBackupDB;
    options.DueDateDiff = small(DueDateDiff);
    options.ShowFilterStatistics = ShowMsgBoxFilterResults;
    options.DefaultGST = small(DefaultGST);
    options.Display();
    if (!options.Cancelled()) {
        AlwaysCreateBackupDB = options.AlwaysCreateBackupDB;
        DueDateDiff = options.DueDateDiff;
        ShowMsgBoxFilterResults = options.ShowFilterStatistics;
        DefaultGST = options.DefaultGST;
    }
    options.Unload();
    if (CeneDinarske != inDinars || KursKupovni != rate)
        RefreshAll();
}

void frmMain::mnuHelp_Click(int index) {
    switch (index) {
        case 0:
            return showHelpContents();
        case 1:
            if (CheckHelpFile())
                WinHelp(helpFile(), HELP_KEY);
            return;
        case 3:
            return OpenLegend();
        case 5:
            return showAbout();
        default:
            return unknownIndex("mnuHelp_Click", index);
    }
}

void frmMain::showAbout() {
    auto* about = new frmSplash(this);
    about->OpenedAsAbout = true;
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->setCloseCallback([about] { about->close(); });
    about->setWindowModality(Qt::ApplicationModal);
    about->show();
}

void frmMain::mnuPopup_Click(int index) {
    switch (index) {
        case 0:
            return OpenLegend();
        case 2:
            return EditService(1);
        case 3:
            return EditService(0);
        case 5:
            return DeleteRecord(CurrentStage - 1);
        case 7:
            return OpenServiceRequisition();
        case 9:
        case 10:
            return OpenDocumentOptions(true);  // the shop's people are used to both opening the invoice
        case 12:
            return UnsortServices();
        default:
            return unknownIndex("mnuPopup_Click", index);
    }
}

void frmMain::toolbarClick(const QString& key) {
    bool ok = false;
    if (key == QLatin1String("NewRecord"))
        AddNewRecord();
    else if (key == QLatin1String("EditRecord"))
        EditService(1);
    else if (key == QLatin1String("DeleteRecord"))
        DeleteRecord(CurrentStage - 1);
    else if (key == QLatin1String("SaveRecord"))
        SaveRecord(CurrentStage, ok);
    else if (key == QLatin1String("ApplyFilter"))
        box(QStringLiteral(
                "Press a little down arrow on the very righ of this button to select a filter to apply."),
            BoxIcon::Information);
    else if (key == QLatin1String("RemoveFilter"))
        removeFilterClick();
    else if (key == QLatin1String("Refresh"))
        RefreshAll();
    else if (key == QLatin1String("ViewReport"))
        GenerateReport();
    else if (key == QLatin1String("PriceList"))
        OpenServiceRequisition();
    else if (key == QLatin1String("Invoice") || key == QLatin1String("Quotation"))
        OpenDocumentOptions(key == QLatin1String("Invoice"));
    else if (key == QLatin1String("Help"))
        mnuHelp_Click(0);
}

void frmMain::SetStatusText(const QString& text, bool sticky) {
    if (sticky)
        stickyText_ = text;
    if (StatusBar1 == nullptr)
        return;
    const QString shown = text.isEmpty() ? stickyText_ : text;
    if (shown != StatusBar1->panelText(kTextPanel))
        StatusBar1->setPanelText(kTextPanel, shown);
}

QString frmMain::statusText() const {
    return StatusBar1 == nullptr ? QString() : StatusBar1->panelText(kTextPanel);
}

void frmMain::statusPanelDoubleClicked(const QString& key) {
    if (key != kTimePanel)
        return;
    barClickPending_ = false;
    if (!platform::openDateTimePanel())
        box(GetResString(162), BoxIcon::Exclamation);
}

// The preview would cover the clock before anybody could click it a second time.
void frmMain::statusBarClicked() {
    barClickPending_ = true;
    QTimer::singleShot(QApplication::doubleClickInterval(), this, [this] {
        if (std::exchange(barClickPending_, false) && QApplication::activeModalWidget() == nullptr)
            previewClients();
    });
}

void frmMain::previewClients() {
    ActiveReport1 report;
    platform::Trap step;
    step([&] {
        report.setRecordset(Data1[0]->Database().OpenRecordset(sourceOf(0).toStdString()));
        report.Show(true, this);
    });
    if (step.failed())
        box(step.line(), BoxIcon::Exclamation);
}

// --- When a command may be given.

void frmMain::UpdateToolbarState() {
    const bool clients = Combo1[0]->entryCount() > 0;
    const bool computers = Combo1[1]->entryCount() > 0;
    const bool listed = ListView1->count() > 0;
    const struct {
        bool add, remove, save;
    } rules[] = {
        {true, clients, StageDirty[0]}, {clients, computers, StageDirty[1]}, {computers, listed, false}};
    const auto& rule = rules[CurrentStage - 1];
    setButtonEnabled(QStringLiteral("NewRecord"), rule.add);
    setButtonEnabled(QStringLiteral("DeleteRecord"), rule.remove);
    setButtonEnabled(QStringLiteral("SaveRecord"), rule.save);
    setButtonEnabled(QStringLiteral("ViewReport"), clients);
}

void frmMain::UpdateServiceButtons() {
    const bool usable = CurrentStage == 3 && ListView1->count() > 0;
    for (const char* key : {"PriceList", "Invoice", "Quotation", "EditRecord"})
        setButtonEnabled(QLatin1String(key), usable);
}

void frmMain::updateDatabaseMenu() {
    const bool client = Combo1[0]->currentIndex() != -1;
    const bool computer = Combo1[1]->currentIndex() != -1;
    const bool listed = ListView1->count() > 0;
    // While a record is being added nothing is chosen; what there was before is still there to be deleted.
    const auto removable = [this](int stageIndex, bool chosen) {
        return chosen || (AddNewMode && Combo1[static_cast<size_t>(stageIndex)]->entryCount() > 0);
    };
    const struct {
        bool add, edit, remove, save, documents;
    } rules[] = {{true, false, removable(0, client), StageDirty[0], false},
                 {client, false, removable(1, computer), StageDirty[1], false},
                 {computer, computer && listed, listed, false, listed}};
    const auto& rule = rules[CurrentStage - 1];
    setEnabled(mnuDatabase.at(0), rule.add);
    setEnabled(mnuDatabase.at(1), rule.edit);
    setEnabled(mnuDatabase.at(3), rule.remove);
    setEnabled(mnuDatabase.at(5), rule.save);
    setEnabled(mnuDatabase.at(7), client);
    setEnabled(mnuDatabase.at(8), client);
    setEnabled(mnuUtilities.at(0), rule.documents);
    setEnabled(mnuUtilities.at(1), rule.documents);
    for (QAction* filter : mnuQuickSearch.mid(quick_filters::kFirstPosition))
        filter->setChecked(false);
    setEnabled(mnuQuickSearch.at(0), ActiveFilter != -1);
    if (ActiveFilter != -1)
        mnuQuickSearch.at(ActiveFilter + quick_filters::kFirstPosition)->setChecked(true);
}

void frmMain::updateViewMenu() {
    const bool client = Combo1[0]->currentIndex() != -1;
    mnuView.at(0)->setChecked(Toolbar1 != nullptr && !Toolbar1->isHidden());
    mnuView.at(1)->setChecked(StatusBar1 != nullptr && !StatusBar1->isHidden());
    setEnabled(mnuView.at(3), client);
    setEnabled(mnuView.at(4), client);
    setEnabled(mnuView.at(6), CurrentStage == 3 && ListView1->selectedIndex() > 0);
}

void frmMain::updateHelpMenu() {
    setEnabled(mnuHelp.at(3), CurrentStage == 3);
}

void frmMain::updatePopupMenu() {
    const bool computer = Combo1[1]->currentIndex() != -1;
    const bool listed = ListView1->count() > 0;
    for (const int position : {0, 5, 7, 9, 10})
        setEnabled(mnuPopup.at(position), listed);
    setEnabled(mnuPopup.at(2), computer && listed);
    setEnabled(mnuPopup.at(3), computer);
    setEnabled(mnuPopup.at(12), LVWSorted && listed);
}

void frmMain::connectServiceList() {
    connect(ListView1, &platform::ListView::contextMenuAsked, this, [this](const QPoint& place) {
        if (mnuPPopup != nullptr)
            mnuPPopup->popup(place);
    });
    connect(ListView1, &platform::ListView::columnClicked, this, &frmMain::ListView1_ColumnClick);
}

// --- The window's shape.

// A bar that comes or goes makes the window taller or shorter; the panes keep their height.
void frmMain::ArrangeControls() {
    if (isMaximized() || isFullScreen())
        return;
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
    if (!arranging_ && isVisible() && activated_)
        insideHeight_ = centralWidget()->height();
}
