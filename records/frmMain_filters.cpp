// Narrowing the whole window to the services in one state of payment, and going back to the whole shop.

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <utility>

#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/main_fields.h"
#include "records/quick_filters.h"
#include "records/typed_entry.h"
#include "shell/modMain.h"

using platform::BoxIcon;
using platform::Trap;

namespace {

const QString kFilterPanel = QStringLiteral("Filter");
constexpr const char* kTables[] = {"Customers", "Computers", "Services"};

// The window says that it is at work, until the object goes.
class AtWork {
 public:
    AtWork(frmMain& window, const QString& text) : window_(window) {
        window_.setCursor(Qt::WaitCursor);
        window_.SetStatusText(text);
    }
    ~AtWork() {
        window_.SetStatusText({});
        window_.unsetCursor();
    }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

 private:
    frmMain& window_;
};

void seeOthersChanges() {
    dao::DBEngine::Idle(dao::dbRefreshCache);
}

quick_filters::Found findServices(dao::Database& database, const QString& statement) {
    dao::Recordset rows = database.OpenRecordset(statement.toStdString(), dao::dbOpenSnapshot);
    seeOthersChanges();
    quick_filters::Found found = quick_filters::collect(rows);
    rows.Close();
    return found;
}

qint32 selectedNumber(const platform::Selector& selector) {
    return selector.entryData(selector.currentIndex());
}

int entryOf(const platform::Selector& selector, qint32 number) {
    for (int i = 0; i < selector.entryCount(); ++i) {
        if (selector.entryData(i) == number)
            return i;
    }
    return -1;
}

}  // namespace

// --- What was typed and not saved yet.

// What stood on a stage before it was read afresh.
struct frmMain::StageBefore {
    qint32 chosen;    // the record to be chosen again; -1: none
    qint32 typedFor;  // the record that `typed` belongs to; -1: none
    QString entry;
    TypedEntry typed;
};

// A new record gives way to the one under it, which is the one to be chosen again.
frmMain::StageBefore frmMain::takeFromStage(int stageIndex, bool adding) {
    const platform::Selector& selector = *Combo1[static_cast<size_t>(stageIndex)];
    StageBefore before{selectedNumber(selector), -1, selector.currentText(), TypedEntry(*this, stageIndex)};
    if (adding)
        dropPendingRow(stageIndex);
    before.typedFor = keyOfRecord(stageIndex);
    // After a delete the selector may stand elsewhere than the fields. What is being typed belongs to the
    // fields; the records of the next stage belong to the selector.
    if (adding || (stageIndex == CurrentStage - 1 && !before.typed.isEmpty()))
        before.chosen = before.typedFor;
    return before;
}

// What was typed goes back to its own record and to no other. On a stage that was left it has been saved, or
// the person has been told why not, so its end is told only to whoever is looking at it.
void frmMain::putBackTyped(const std::array<StageBefore, 2>& before, int addingStage) {
    QString missing;
    bool gone = false;
    for (int i = 0; i < 2; ++i) {
        const StageBefore& was = before[static_cast<size_t>(i)];
        if (i == addingStage || was.typed.isEmpty())
            continue;
        if (was.typedFor >= 0 && keyOfRecord(i) == was.typedFor) {
            was.typed.putBack(*this);
        } else if (i == CurrentStage - 1) {
            gone = true;
            missing = was.entry;
        }
    }
    if (gone)
        tellMissing(missing);
}

// The new record goes on being added. A new computer whose client is gone has nobody to belong to.
void frmMain::resumeAdd(const std::array<StageBefore, 2>& before, int stageIndex) {
    if (stageIndex == 1 && (before[0].chosen < 0 || selectedNumber(*Combo1[0]) != before[0].chosen))
        return tellMissing(before[0].entry);
    if (beginAdd(stageIndex))
        before[static_cast<size_t>(stageIndex)].typed.putBack(*this);
}

// Reading the stages afresh takes the record away from under the fields. Before a filter, leaving a record
// saves it as it does everywhere else; false where the person has to stay with it.
bool frmMain::leaveRecord() {
    bool typed = AddNewMode;
    for (int i = 0; i < kEntryFields && CurrentStage != 3; ++i)
        typed = typed ||
                (stageOfField(i) == CurrentStage &&
                 Data1[static_cast<size_t>(CurrentStage - 1)]->DataChanged(Text1[static_cast<size_t>(i)]));
    typed = typed || (CurrentStage == 1 && Data1[0]->DataChanged(Check1));
    bool ok = true;
    if (typed)
        SaveRecord(CurrentStage, ok);
    return ok;
}

// --- The stages, read from the stored queries of this copy.

void frmMain::setWorkQuery(int stageIndex, const std::string& statement) {
    Data1[0]->Database().QueryDefs()[queryOf(stageIndex).toStdString()].setSQL(statement);
}

// Back to the record that was chosen before, where the selector still has it.
void frmMain::selectRecord(int stageIndex, qint32 number) {
    platform::DataControl& control = *Data1[static_cast<size_t>(stageIndex)];
    const platform::Selector& selector = *Combo1[static_cast<size_t>(stageIndex)];
    const int entry = entryOf(selector, number);
    if (number < 0 || entry < 0 || !control.isOpen())
        return;
    LoadingList = true;
    Trap step;
    step([&] {
        control.FindFirst(
            (stageIndex == 0 ? QStringLiteral("CustID=%1") : QStringLiteral("MachineID=%1")).arg(number));
    });
    LoadingList = false;
    if (step.failed() || control.Recordset().NoMatch())
        return;
    selectSilently(stageIndex, entry);
    setTabCaption(stageIndex + 1, selector.currentText());
}

void frmMain::reloadStages(const StepRunner& step, const std::array<qint32, 2>& keep, bool unitToo) {
    step([] { seeOthersChanges(); });
    step([&] { refresh(0, sourceOf(0)); });
    StageDirty[0] = false;
    step([&] { FillClientCombo(); });
    selectRecord(0, keep[0]);
    step([] { seeOthersChanges(); });
    step([&] { refresh(1, Combo1[0]->currentIndex() >= 0 ? computerSource() : sourceOf(1)); });
    step([&] { FillComputerCombo(); });
    selectRecord(1, keep[1]);
    StageDirty[1] = true;
    const qint32 machine = selectedNumber(*Combo1[1]);
    const QString services =
        Combo1[1]->currentIndex() >= 0
            ? QStringLiteral("Select * FROM %1 Where MachineID=%2").arg(queryOf(2)).arg(machine)
            : sourceOf(2);
    if (unitToo)
        step([&] { showUnit(); });
    step([] { seeOthersChanges(); });
    step([&] { refresh(2, services + sortClause()); });
    step([&] { FillServiceList({}); });
    UpdateServiceButtons();
}

// --- The filters.

void frmMain::ApplyQuickFilter(int number, bool& ok) {
    ok = true;
    const QString statement = quick_filters::statement(number, DueDateDiff);
    if (statement.isEmpty())
        return;
    ok = leaveRecord();
    if (!ok)
        return;
    quick_filters::Found found;
    {
        const AtWork working(*this, QStringLiteral("Filtering data... Please wait..."));
        found = findServices(Data1[0]->Database(), statement);
        ok = !found.isEmpty();
        if (ok) {
            narrowStages(found);
            ActiveFilter = number;
            ShowFilterCaption(number, false);
        }
    }
    if (!ok)
        box(QStringLiteral("Quick filtering didn't result with any data."), BoxIcon::Information);
    else if (ShowMsgBoxFilterResults)
        box(quick_filters::statistics(found), BoxIcon::Information);
}

// A window that shows a part of the shop and does not say so would hide clients from the people at the desk:
// narrowing that fails half-way ends with the whole shop in view.
void frmMain::narrowStages(const quick_filters::Found& found) {
    const quick_filters::IdList* const lists[] = {&found.clients, &found.computers, &found.services};
    bool begun = false;
    try {
        for (int i = 0; i < 3; ++i) {
            setWorkQuery(i, lists[i]->selection(kTables[i]));
            begun = true;
        }
        for (int i = 0; i < 3; ++i)
            Data1[static_cast<size_t>(i)]->RecordSource = sourceOf(i);
        reloadStages([](const std::function<void()>& deed) { deed(); }, {-1, -1}, false);
    } catch (...) {  // passed on
        if (begun)
            showWholeShop({selectedNumber(*Combo1[0]), selectedNumber(*Combo1[1])}, false);
        throw;
    }
}

void frmMain::mnuQuickSearch_Click(int index) {
    if (index == 0)
        return RemoveFilters();
    const int number = index - quick_filters::kFirstPosition;
    if (!quick_filters::isFilter(number))
        return unknownIndex("mnuQuickSearch_Click", index);
    bool ok = false;
    Trap step;
    step([&] { ApplyQuickFilter(number, ok); });
    if (step.failed()) {
        box(QStringLiteral("An unexpected error has occured - ") + step.line(), BoxIcon::Exclamation);
        return;
    }
    if (!ok)
        return;
    setButtonEnabled(QStringLiteral("RemoveFilter"), true);
    for (QAction* entry : std::as_const(filterEntries_))
        setEnabled(entry, true);
    setEnabled(filterEntry(QLatin1String(quick_filters::kFilters[static_cast<size_t>(number)].key)), false);
}

void frmMain::ShowFilterCaption(int number, bool remove) {
    if (StatusBar1 == nullptr)
        return;
    if (remove) {
        if (StatusBar1->firstPanelKey() == kFilterPanel)
            StatusBar1->removePanel(kFilterPanel);
        return;
    }
    if (!quick_filters::isFilter(number))
        return;
    if (StatusBar1->firstPanelKey() != kFilterPanel)
        StatusBar1->addPanel(kFilterPanel, platform::StatusBar::AutoSize::Contents, 1);
    StatusBar1->setPanelText(kFilterPanel, quick_filters::caption(number));
    StatusBar1->panel(kFilterPanel)->setFrameStyle(QFrame::NoFrame);
}

// --- Back to the whole shop.

void frmMain::RemoveFilters() {
    reloadWholeShop(QStringLiteral("Removing filters... Please wait..."), false);
}

void frmMain::removeFilterClick() {
    setButtonEnabled(QStringLiteral("RemoveFilter"), false);
    if (ActiveFilter != -1)
        RemoveFilters();
}

void frmMain::RefreshAll() {
    reloadWholeShop(QStringLiteral("Refreshing... Please wait..."), true);
}

// Nobody is asked anything here: amounts that stayed in the unit of yesterday would be written back as
// amounts of today's by the next service that is edited.
void frmMain::reloadWholeShop(const QString& status, bool unitToo) {
    const int addingStage = std::exchange(AddNewMode, false) ? CurrentStage - 1 : -1;
    const std::array<StageBefore, 2> before = {takeFromStage(0, addingStage == 0),
                                               takeFromStage(1, addingStage == 1)};
    {
        const AtWork working(*this, status);
        showWholeShop({before[0].chosen, before[1].chosen}, unitToo);
    }
    if (addingStage >= 0)
        resumeAdd(before, addingStage);
    putBackTyped(before, addingStage);
}

void frmMain::showWholeShop(const std::array<qint32, 2>& keep, bool unitToo) {
    Trap trap;
    const StepRunner step = [&trap](const std::function<void()>& deed) { trap(deed); };
    for (int i = 0; i < 3; ++i) {
        step([&] { setWorkQuery(i, std::string("SELECT * FROM ") + kTables[i]); });
        step([&] { Data1[static_cast<size_t>(i)]->RecordSource = sourceOf(i); });
        step([] { seeOthersChanges(); });
    }
    reloadStages(step, keep, unitToo);
    forgetFilter();
}
