// The chain of stages: what the selectors choose, what the tabs show, when a stage is read again.

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QStackedWidget>

#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/main_fields.h"
#include "shell/modMain.h"

using platform::BoxIcon;
using platform::Selector;
using platform::Trap;

namespace {

constexpr const char* kQueries[] = {"QDCustomers", "QDComputers", "QDServices"};
constexpr const char* kKeys[] = {"CustID", "MachineID"};
// The columns that the selectors' entries are made of: a shop of fifty thousand clients must not read their
// comments to show their names.
constexpr const char* kEntryColumns[] = {"CustID, Surname, GivenName, NickName, FirmName, FirmAddress",
                                         "MachineID, MachineName"};
constexpr int kDefaultCaptions[] = {101, 102, 103};
const QString kWorking = QStringLiteral("Working... Please Wait...");

size_t at(int index) {
    return static_cast<size_t>(index);
}

QString text(const dao::Value& value) {
    return QString::fromStdString(value.textRef());
}

QString personName(const QString& surname, const QString& givenName, const QString& nickName) {
    const QString name = surname + QStringLiteral(", ") + givenName;
    return nickName.isEmpty() ? name : name + QStringLiteral(" - ") + nickName;
}

}  // namespace

// --- Names.

QString frmMain::ClientDisplayName() const {
    const QString firm = fieldText(kFirmName).trimmed();
    if (Check1->isChecked() && !firm.isEmpty())
        return firm;
    return personName(fieldText(kSurname), fieldText(kGivenName), fieldText(kNickName));
}

QString frmMain::displayNameOfFields(int stageIndex) const {
    return stageIndex == 0 ? ClientDisplayName() : fieldText(kMachineName);
}

QString frmMain::displayNameOfRecord(int stageIndex) {
    return displayName(stageIndex, Data1[at(stageIndex)]->Recordset());
}

QString frmMain::displayName(int stageIndex, const dao::Recordset& row) {
    if (stageIndex == 1)
        return text(row["MachineName"]);
    const dao::Value& firmAddress = row["FirmAddress"];
    if (!firmAddress.isNull() && firmAddress.asBool()) {
        const QString firm = text(row["FirmName"]);
        if (!firm.trimmed().isEmpty())
            return firm;
    }
    return personName(text(row["Surname"]), text(row["GivenName"]), text(row["NickName"]));
}

qint32 frmMain::keyOfRecord(int stageIndex) {
    qint32 key = -1;
    Trap step;
    step([&] { key = Data1[at(stageIndex)]->Recordset()[kKeys[stageIndex]].asLong(); });
    return key;
}

QString frmMain::defaultCaption(int stage) {
    return GetResString(kDefaultCaptions[stage - 1]);
}

void frmMain::setTabCaption(int stage, const QString& caption) {
    if (TabStrip1 != nullptr)
        TabStrip1->setCaption(stage - 1, caption);
}

// --- Sources of the stages.

QString frmMain::queryOf(int stageIndex) const {
    return QLatin1String(kQueries[stageIndex]) + QString::number(QuerySuffix);
}

QString frmMain::sourceOf(int stageIndex) const {
    return QStringLiteral("SELECT * FROM ") + queryOf(stageIndex);
}

QString frmMain::sortClause() const {
    return LVWSorted ? QStringLiteral(" ORDER BY %1 %2").arg(LVWSortField, LVWSortOrder) : QString();
}

// An entry that is not there has the number -1, and that of no record.
QString frmMain::computerSource() const {
    return sourceOf(1) +
           QStringLiteral(" WHERE CustID=%1").arg(Combo1[0]->entryData(Combo1[0]->currentIndex()));
}

QString frmMain::serviceSource() const {
    return sourceOf(2) +
           QStringLiteral(" WHERE MachineID=%1").arg(Combo1[1]->entryData(Combo1[1]->currentIndex())) +
           sortClause();
}

// --- Filling the selectors.

QList<Selector::Entry> frmMain::readEntries(int stageIndex) {
    QString source = Data1[at(stageIndex)]->RecordSource;
    source.replace(QStringLiteral("SELECT *"),
                   QStringLiteral("SELECT ") + QLatin1String(kEntryColumns[stageIndex]), Qt::CaseInsensitive);
    dao::Recordset rows =
        Data1[at(stageIndex)]->Database().OpenRecordset(source.toStdString(), dao::dbOpenSnapshot);
    QList<Selector::Entry> entries;
    entries.reserve(rows.RecordCount());
    const dao::Field key = rows.Fields(0);
    for (; !rows.EOF(); rows.MoveNext())
        entries.append({displayName(stageIndex, rows), key.Value().asLong()});
    rows.Close();
    return entries;
}

void frmMain::FillClientCombo() {
    fillCombo(0);
}

void frmMain::FillComputerCombo() {
    fillCombo(1);
}

void frmMain::fillCombo(int stageIndex) {
    Selector* selector = Combo1[at(stageIndex)];
    LoadingList = true;
    selector->clearEntries();
    QList<Selector::Entry> entries;
    Trap step;
    step([&] { entries = readEntries(stageIndex); });
    if (entries.isEmpty()) {
        setTabCaption(stageIndex + 1, defaultCaption(stageIndex + 1));
        SetStageLocked(stageIndex + 1, true);
        UpdateToolbarState();
        LoadingList = false;
        return;
    }
    selector->setEntries(std::move(entries));
    step([&] { Data1[at(stageIndex)]->MoveFirst(); });
    selectSilently(stageIndex, findEntry(stageIndex, displayNameOfFields(stageIndex)));
    if (!selector->currentText().isEmpty())
        setTabCaption(stageIndex + 1, selector->currentText());
    UpdateToolbarState();
    LoadingList = false;
}

// The first entry that begins with the text; of several clients of one name the one on show.
int frmMain::findEntry(int stageIndex, const QString& wanted) {
    const Selector* selector = Combo1[at(stageIndex)];
    const int first = selector->findPrefix(wanted);
    if (first < 0)
        return first;
    const qint32 key = keyOfRecord(stageIndex);
    for (int i = first; i < selector->entryCount(); ++i) {
        if (selector->entryText(i).compare(wanted, Qt::CaseInsensitive) != 0)
            break;
        if (selector->entryData(i) == key)
            return i;
    }
    return first;
}

void frmMain::selectSilently(int stageIndex, int index) {
    const QSignalBlocker quiet(Combo1[at(stageIndex)]);
    Combo1[at(stageIndex)]->setCurrentIndex(index);
    Combo1[at(stageIndex)]->update();
    RememberedIndex[at(stageIndex)] = index;
}

void frmMain::ReplaceComboItem(Selector* selector, const QString& newText, int position) {
    selector->replaceText(position, newText);
}

void frmMain::RefreshComboItem(int stageIndex) {
    Selector* selector = Combo1[at(stageIndex)];
    const int index = selector->currentIndex();
    const QString shown = displayNameOfFields(stageIndex);
    if (index < 0 || selector->entryText(index) == shown ||
        selector->entryData(index) != keyOfRecord(stageIndex))
        return;
    ReplaceComboItem(selector, shown, index);
    setTabCaption(stageIndex + 1, shown);
}

void frmMain::SetStageLocked(int stage, bool locked) {
    if (stage != 1 && stage != 2)
        return;
    locked_[at(stage - 1)] = locked;
    QPalette paper;  // of a locked field: that of the window, so that nobody wonders why it takes no letter
    if (locked)
        paper.setColor(QPalette::Base, palette().color(QPalette::Window));
    for (int i = 0; i < kEntryFields; ++i) {
        if (stageOfField(i) != stage)
            continue;
        Text1[at(i)]->setPalette(paper);
        if (auto* line = qobject_cast<QLineEdit*>(Text1[at(i)]))
            line->setReadOnly(locked);
        else if (auto* lines = qobject_cast<QPlainTextEdit*>(Text1[at(i)]))
            lines->setReadOnly(locked);
    }
    if (stage != 1)
        return;
    for (platform::DateField* date : DTPicker1)
        date->setEnabled(!locked);
    Check1->setEnabled(!locked);
}

// --- Choosing an entry.

void frmMain::selectorChanged(int stageIndex) {
    Selector* selector = Combo1[at(stageIndex)];
    int index = selector->currentIndex();
    if (index == RememberedIndex[at(stageIndex)] || index == -1)
        return;
    const qint32 number = selector->entryData(index);
    Trap step;
    bool ok = false;
    step([&] { SaveStage(stageIndex, ok); });
    if (!ok)
        return;
    // A record just saved may have put its own entry before the one that was chosen.
    if (selector->entryData(index) != number)
        ++index;
    step.clear();
    platform::DataControl& control = *Data1[at(stageIndex)];
    step([&] {
        control.FindFirst(QStringLiteral("%1=%2").arg(QLatin1String(kKeys[stageIndex])).arg(number));
    });
    if (step.failed())
        return stayOnRecord(stageIndex);
    if (control.Recordset().NoMatch()) {
        dropPendingRow(stageIndex);
        tellMissing(selector->entryText(index));
        index = 0;
    } else {
        StageDirty[at(stageIndex)] = false;
    }
    selectSilently(stageIndex, index);
    setTabCaption(stageIndex + 1, selector->currentText());
    if (stageIndex == 0)
        setTabCaption(2, defaultCaption(2));
    RefreshComboItem(stageIndex);
    UpdateToolbarState();
}

// A new record that was given up must not be written after all, by the next one who types there.
void frmMain::dropPendingRow(int stageIndex) {
    platform::DataControl& control = *Data1[at(stageIndex)];
    Trap step;
    step([&] {
        if (control.Recordset().EditMode() != dao::Recordset::EditModeKind::None)
            control.CancelUpdate();
    });
}

// The chosen record could not be asked for: the selector goes back to the one on show.
void frmMain::stayOnRecord(int stageIndex) {
    dropPendingRow(stageIndex);
    if (RememberedIndex[at(stageIndex)] < 0)
        return showEntryOfRecord(stageIndex);
    selectSilently(stageIndex, RememberedIndex[at(stageIndex)]);
}

void frmMain::tellMissing(const QString& entry) {
    const QString name = entry.isEmpty() ? QStringLiteral("selected item") : entry;
    box(GetResString(118, {{QStringLiteral("%1"), name}}), BoxIcon::Exclamation);
}

void frmMain::typeAheadChanged(int stageIndex) {
    const int found = Combo1[at(stageIndex)]->findPrefix(Text2[at(stageIndex)]->text());
    if (found >= 0)
        Combo1[at(stageIndex)]->setCurrentIndex(found);
}

// --- Changing the tab.

void frmMain::tabChanged(int tabIndex) {
    const int newStage = tabIndex + 1;
    if (puttingTabBack_ || newStage == CurrentStage || newStage < 1)
        return;
    Trap step;
    bool ok = false;
    step([&] { SaveRecord(CurrentStage, ok); });
    if (!ok) {
        puttingTabBack_ = true;
        TabStrip1->setCurrentIndex(CurrentStage - 1);
        puttingTabBack_ = false;
        return;
    }
    const int oldStage = CurrentStage;
    CurrentStage = newStage;
    showStage(newStage, step);
    updateStagesAhead(oldStage, newStage, step);
    step([&] { UpdateServiceButtons(); });
    step([&] { UpdateToolbarState(); });
    if (step.failed())
        box(QStringLiteral("An unexpected error has occured - ") + step.line(), BoxIcon::Exclamation);
}

void frmMain::showStage(int newStage, Trap& step) {
    step([&] { UpdateServiceButtons(); });
    step([&] { showTabImages(newStage); });
    step([&] { TabStrip1->repaint(); });
    step([&] { panes_->setCurrentIndex(newStage - 1); });
    step([&] { UpdateToolbarState(); });
}

// Each step by itself: a stage that could not be read must be emptied, or the records of the client before
// stand under the name of this one.
void frmMain::updateStagesAhead(int oldStage, int newStage, Trap& step) {
    if (oldStage == 1 && newStage > 1)
        updateComputerStage(newStage == 3, step);
    else if (oldStage == 2 && newStage == 3 && isStale(2, serviceSource())) {
        step([&] { SetStatusText(kWorking); });
        updateServiceStage(step);
        step([&] { SetStatusText({}); });
    }
}

bool frmMain::isStale(int stageIndex, const QString& source) const {
    return source.compare(Data1[at(stageIndex)]->RecordSource, Qt::CaseInsensitive) != 0;
}

void frmMain::updateComputerStage(bool servicesToo, Trap& step) {
    const QString source = computerSource();
    const QString chosen = Combo1[1]->currentText();
    setTabCaption(2, chosen.isEmpty() ? defaultCaption(2) : chosen);
    if (!isStale(1, source))
        return;
    step([&] { SetStatusText(kWorking); });
    step([&] { refresh(1, source); });
    step([&] { FillComputerCombo(); });
    if (servicesToo && isStale(2, serviceSource()))
        updateServiceStage(step);
    step([&] { SetStatusText({}); });
}

void frmMain::updateServiceStage(Trap& step) {
    step([&] { refresh(2, serviceSource()); });
    step([&] { FillServiceList({}); });
    step([&] { UpdateServiceButtons(); });
}

// A stage whose source could not be read must be read again at the next move, so its text is not left
// standing.
void frmMain::refresh(int stageIndex, const QString& source) {
    platform::DataControl& control = *Data1[at(stageIndex)];
    control.RecordSource = source;
    try {
        control.Refresh();
    } catch (const dao::Error&) {
        control.RecordSource.clear();
        throw;
    }
}

// --- Marks of change.

void frmMain::fieldChanged(int index) {
    if (LoadingList)
        return;
    const size_t i = at(stageOfField(index) - 1);
    StageDirty[i] = Data1[i]->DataChanged(Text1[at(index)]);
    UpdateToolbarState();
}

void frmMain::firmBoxClicked() {
    if (LoadingList)
        return;
    StageDirty[0] = Data1[0]->DataChanged(Check1);
    UpdateToolbarState();
}
