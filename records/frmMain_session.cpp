// The database under the open window: opening it with repair and backup at hand, closing, compacting,
// reopening.

#include <QAction>
#include <QGuiApplication>

#include "data/session.h"
#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "shell/modMain.h"
#include "shell/settings.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

namespace {

void seeOthersChanges() {
    dao::DBEngine::Idle(dao::dbRefreshCache);
}

}  // namespace

// The services are read in the order of the file: the list sorts when it is shown, and no word in the
// settings can make a sound file look broken.
void frmMain::openSources(Trap& step) {
    QString path;
    step([&] { path = databasePath(); });
    for (platform::DataControl* control : Data1) {
        control->DatabaseName = path;
        step([&] { control->Connect = connectText(); });
        control->RecordSource.clear();
    }
    step([&] { Data1[0]->Refresh(); });
    step([&] { QuerySuffix = CreateWorkQueries(Data1[0]->Database()); });
    for (int i = 0; i < 3; ++i) {
        platform::DataControl* control = Data1[static_cast<size_t>(i)];
        control->RecordSource = sourceOf(i);
        step([] { seeOthersChanges(); });
        step([&] { control->Refresh(); });
    }
}

void frmMain::OpenDataControls(QString& errorText, bool& ok) {
    bool repaired = false;
    for (;;) {
        Trap step;
        LoadingList = true;
        openSources(step);
        LoadingList = false;
        if (!step.failed()) {
            LoadServiceTypes();
            step([] { settings::setBoolean(settings::ProperlyClosed, false); });
            ok = true;
            return;
        }
        ok = false;
        const bool newer = step.number() == dao::errNewerForm;
        closeSources(step);
        if (newer) {
            errorText = newerDatabaseText();
            return;
        }
        if (repaired) {
            errorText = GetResString(1048);
            return;
        }
        box(GetResString(1049), BoxIcon::Exclamation);
        if (!recoverDatabase(errorText, repaired))
            return;
    }
}

// Repairs the file or puts the backup in its place. True where it is worth another try.
bool frmMain::recoverDatabase(QString& errorText, bool& repaired) {
    QString reason;
    if (RepairAndCompactDatabase(reason, true)) {
        repaired = true;
        return true;
    }
    const QString question = GetResString(1015, {{QStringLiteral("%1"), reason}});
    if (box(question, BoxIcon::Exclamation, BoxButtons::YesNo) != BoxAnswer::Yes) {
        errorText = GetResString(1013);
        return false;
    }
    reason.clear();
    if (UseBackupDatabase(reason, true))
        return true;
    errorText = GetResString(1014) + QLatin1Char('\n') + reason;
    return false;
}

void frmMain::closeSources(Trap& step) {
    step([&] { CloseServiceRows(); });
    LoadingList = true;
    for (platform::DataControl* control : Data1)
        step([&] { control->Close(); });
    LoadingList = false;
}

void frmMain::CloseDatabases(bool& ok) {
    ok = true;
    CloseServiceRows();
    Trap step;
    step([] { seeOthersChanges(); });
    if (Data1[0]->Database())
        step([&] { DropWorkQueries(Data1[0]->Database(), QuerySuffix); });
    step([] { seeOthersChanges(); });
    step.clear();
    // What was never open is not backed up: it may be what made the start fail.
    for (const platform::DataControl* control : Data1)
        ok = ok && control->isOpen();
    closeSources(step);
    ok = ok && !step.failed();
    if (ok)
        finishSession();
}

void frmMain::finishSession() {
    Trap step;
    if (!AlwaysCreateBackupDB) {
        step([] { settings::setBoolean(settings::ProperlyClosed, true); });
        return;
    }
    QString errorText;
    bool done = false;
    step([&] { done = BackupDatabase(errorText); });
    if (done)
        return;
    box(QStringLiteral("Application has failed to create backup database:\n\n") +
            (step.failed() ? step.line() : errorText),
        BoxIcon::Exclamation);
}

void frmMain::CompactOpenDatabase(QString& errorText, bool& ok) {
    reopenDatabase(true, errorText, ok);
}

void frmMain::RestartDatabase(QString& errorText, bool& ok) {
    reopenDatabase(false, errorText, ok);
}

void frmMain::reopenDatabase(bool compact, QString& errorText, bool& ok) {
    errorText.clear();
    SaveRecord(CurrentStage, ok);
    if (!ok)
        return;
    const QString failure =
        compact ? QStringLiteral("Unexpected error(s) occured while repairing and compacting the database:")
                : GetResString(1047);
    Trap step;
    closeSources(step);
    step.clear();
    setCursor(Qt::WaitCursor);
    QString reason;
    if (compact) {
        SetStatusText(QStringLiteral("Repairing & Compacting database... Please wait..."));
        ok = RepairAndCompactDatabase(reason, true);
    }
    if (ok) {
        SetStatusText(GetResString(1046));
        OpenDataControls(reason, ok);
    }
    if (ok) {
        reopenStages(step);
        ok = !step.failed();
        if (!ok)
            errorText = failure + QLatin1Char(compact ? ' ' : '\n') + step.line();
    } else {
        errorText = failure + QLatin1Char('\n') + reason;
    }
    unsetCursor();
    SetStatusText({});
}

// The stages are filled for what is selected, and their texts set back to the whole tables, so that the next
// change of the tab finds another text and reads the stage again. A stage that cannot be read is emptied and
// leaves the others to be read.
void frmMain::reopenStages(Trap& step) {
    step([&] { FillClientCombo(); });
    const QString allComputers = QStringLiteral("Select * FROM QDComputers%1").arg(QuerySuffix);
    step([] { seeOthersChanges(); });
    step([&] { refresh(1, Combo1[0]->currentIndex() >= 0 ? computerSource() : allComputers); });
    step([&] { FillComputerCombo(); });
    Data1[1]->RecordSource = allComputers;
    RememberedIndex[1] = -1;
    const QString allServices = QStringLiteral("Select * FROM QDServices%1").arg(QuerySuffix);
    step([] { seeOthersChanges(); });
    step([&] { refresh(2, Combo1[1]->currentIndex() >= 0 ? serviceSource() : allServices + sortClause()); });
    step([&] { FillServiceList({}); });
    Data1[2]->RecordSource = allServices;
    if (CurrentStage != 1)
        step([&] { TabStrip1->setCurrentIndex(0); });
    step([&] { UpdateServiceButtons(); });
    step([&] { UpdateToolbarState(); });
    step([&] { forgetFilter(); });
}

void frmMain::forgetFilter() {
    setButtonEnabled(QStringLiteral("RemoveFilter"), false);
    ActiveFilter = -1;
    ShowFilterCaption(-1, true);
    for (QAction* entry : std::as_const(filterEntries_))
        setEnabled(entry, true);
}
