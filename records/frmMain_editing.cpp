// Clients and computers: adding, saving, dropping and deleting a record in place.

#include <QList>

#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/main_fields.h"
#include "records/typed_entry.h"
#include "shell/modMain.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Selector;
using platform::Trap;

namespace {

struct RequiredField {
    int stageIndex, field, messageId;
};
// In the order in which they are asked for.
constexpr RequiredField kRequired[] = {{0, 0, 119},  {0, 1, 120},  {0, 7, 121}, {0, 8, 122},
                                       {0, 10, 123}, {0, 11, 124}, {1, 19, 125}};

constexpr int kAddFailed = 1043, kEditFailed = 1044, kCancelFailed = 1045;
const QString kDeleteFailed =
    QStringLiteral("An unexpected error has occured while deleting the current record.");

size_t at(int index) {
    return static_cast<size_t>(index);
}

}  // namespace

void frmMain::ValidateStage(int& focusField, int stageIndex, QString& errors) const {
    focusField = -1;
    errors.clear();
    for (const RequiredField& required : kRequired) {
        if (required.stageIndex != stageIndex || !fieldText(required.field).trimmed().isEmpty())
            continue;
        if (focusField < 0)
            focusField = required.field;
        errors += (errors.isEmpty() ? QString() : QStringLiteral("\n")) + GetResString(required.messageId);
    }
}

void frmMain::AddNewRecord() {
    if (AddNewMode) {
        box(GetResString(129), BoxIcon::Exclamation);
        return;
    }
    // Leaving a record saves it, and a new one leaves it.
    bool ok = false;
    SaveRecord(CurrentStage, ok);
    if (!ok)
        return;
    SetStatusText(QStringLiteral("Add new mode..."));
    if (CurrentStage == 3) {
        EditService(0);
        SetStatusText({});
        return;
    }
    if (beginAdd(CurrentStage - 1))
        setFocusToField(CurrentStage == 1 ? kSurname : kMachineName);
}

// The stage on show gets a blank record. False with the reason shown where there could be none: all stands
// as it stood then.
bool frmMain::beginAdd(int stageIndex) {
    const bool wasLocked = isStageLocked(stageIndex + 1);
    SetStageLocked(stageIndex + 1, false);
    selectSilently(stageIndex, -1);
    if (stageIndex == 0)
        setTabCaption(1, defaultCaption(1));
    setTabCaption(2, defaultCaption(2));
    Trap step;
    step([&] { Data1[at(stageIndex)]->AddNew(); });
    AddNewMode = !step.failed();
    StageDirty[at(stageIndex)] = false;
    UpdateToolbarState();
    if (AddNewMode)
        return true;
    SetStatusText({});
    SetStageLocked(stageIndex + 1, wasLocked);
    showEntryOfRecord(stageIndex);
    box(GetResString(169) + QStringLiteral("\n\n") + step.line(), BoxIcon::Critical);
    return false;
}

// A new record whose row was lost goes on being new, with what was typed for it. Without a row of its own it
// would be written into the record of somebody else. Where there can be none just now the fields keep what
// was typed all the same.
void frmMain::addAgain(int stageIndex, Trap& step) {
    const TypedEntry typed(*this, stageIndex);
    step([&] { Data1[at(stageIndex)]->AddNew(); });
    typed.putBack(*this);
}

bool frmMain::wantsToFix(const QString& errors) {
    return box(GetResString(126, {{QStringLiteral("%1"), errors}}), BoxIcon::Exclamation,
               BoxButtons::YesNo) == BoxAnswer::Yes;
}

void frmMain::SaveRecord(int stage, bool& ok) {
    ok = true;
    if (stage != 1 && stage != 2)
        return;
    const int stageIndex = stage - 1;
    // A stage without records asks for nothing: nobody could type what is missing there.
    if (!AddNewMode && Combo1[at(stageIndex)]->entryCount() == 0)
        StageDirty[at(stageIndex)] = false;
    if (!StageDirty[at(stageIndex)] && !AddNewMode)
        return;
    int focusField = -1;
    QString errors;
    ValidateStage(focusField, stageIndex, errors);
    if (errors.isEmpty()) {
        StageDirty[at(stageIndex)] = false;
        if (AddNewMode)
            ok = writeNew(stageIndex);
        else
            writeEdit(stageIndex, Combo1[at(stageIndex)]->currentIndex());
    } else if (wantsToFix(errors)) {
        setFocusToField(focusField);
        ok = false;
        return;
    } else {
        dropEdit(stageIndex);
    }
    UpdateToolbarState();
}

void frmMain::SaveStage(int stageIndex, bool& ok) {
    ok = true;
    if (!StageDirty[at(stageIndex)] && !AddNewMode)
        return;
    int focusField = -1;
    QString errors;
    ValidateStage(focusField, stageIndex, errors);
    if (errors.isEmpty()) {
        StageDirty[at(stageIndex)] = false;
        if (AddNewMode)
            ok = writeNew(stageIndex);
        else
            writeEdit(stageIndex, RememberedIndex[at(stageIndex)]);
    } else if (wantsToFix(errors)) {
        selectSilently(stageIndex, RememberedIndex[at(stageIndex)]);
        setFocusToField(focusField);
        ok = false;
        return;
    } else {
        Trap step;
        step([&] { Data1[at(stageIndex)]->UpdateControls(); });
        StageDirty[at(stageIndex)] = false;
        AddNewMode = false;  // the move to the chosen record drops the new one
        SetStatusText({});
    }
    UpdateToolbarState();
}

// The user has given up what was typed: the stored record comes back.
void frmMain::dropEdit(int stageIndex) {
    platform::DataControl& control = *Data1[at(stageIndex)];
    Trap step;
    step([&] { control.UpdateControls(); });
    StageDirty[at(stageIndex)] = false;
    if (AddNewMode) {
        AddNewMode = false;
        step.clear();
        step([&] {
            if (control.Recordset().EditMode() == dao::Recordset::EditModeKind::Add)
                control.CancelUpdate();
        });
        if (Combo1[at(stageIndex)]->entryCount() == 0)
            SetStageLocked(stageIndex + 1, true);
        if (step.failed())
            showSaveFailure(kCancelFailed, stageIndex, {});
    }
    showEntryOfRecord(stageIndex);
    SetStatusText({});
}

// The selector and the tab go to the record on show.
void frmMain::showEntryOfRecord(int stageIndex) {
    const QString name = displayNameOfFields(stageIndex);
    const bool nothingThere = Combo1[at(stageIndex)]->entryCount() == 0;
    selectSilently(stageIndex, nothingThere ? -1 : findEntry(stageIndex, name));
    setTabCaption(stageIndex + 1, nothingThere ? defaultCaption(stageIndex + 1) : name);
}

// False where the row could not be written: it goes on being added then, and whoever wanted to leave it
// stays.
bool frmMain::writeNew(int stageIndex) {
    Trap step;
    qint32 number = -1;
    const bool written = writeRow(stageIndex, number, step);
    AddNewMode = !written;
    SetStatusText({});
    if (written) {
        takeNewEntry(stageIndex, number);
    } else {
        selectSilently(stageIndex, -1);
        Trap again;
        addAgain(stageIndex, again);
    }
    if (step.failed())
        showSaveFailure(kAddFailed, stageIndex, step.line());
    return written;
}

// Writes the new record and makes it the current one. False where it is not in the file.
bool frmMain::writeRow(int stageIndex, qint32& number, Trap& step) {
    platform::DataControl& control = *Data1[at(stageIndex)];
    if (!hasNewRow(stageIndex))
        addAgain(stageIndex, step);
    if (!hasNewRow(stageIndex))
        return false;
    if (stageIndex == 1)
        step([&] { control.Recordset().Fields("CustID") = Combo1[0]->entryData(Combo1[0]->currentIndex()); });
    number = keyOfRecord(stageIndex);
    bool written = false;
    step([&] {
        control.UpdateRecord();
        written = true;
    });
    if (written)
        step([&] { control.setBookmark(control.Recordset().LastModified()); });
    StageDirty[at(stageIndex)] = false;
    return written;
}

bool frmMain::hasNewRow(int stageIndex) {
    bool adding = false;
    Trap step;
    step(
        [&] { adding = Data1[at(stageIndex)]->Recordset().EditMode() == dao::Recordset::EditModeKind::Add; });
    return adding;
}

// A record just written gets its entry. Where somebody has taken it away again at once the one on show stays.
void frmMain::takeNewEntry(int stageIndex, qint32 number) {
    const bool current = keyOfRecord(stageIndex) == number;
    QString name = displayNameOfFields(stageIndex);
    Trap step;
    if (current)
        step([&] { name = displayNameOfRecord(stageIndex); });
    const int entry = Combo1[at(stageIndex)]->addEntry(name, number);
    if (!current) {
        step([&] { Data1[at(stageIndex)]->UpdateControls(); });
        return showEntryOfRecord(stageIndex);
    }
    selectSilently(stageIndex, entry);
    setTabCaption(stageIndex + 1, name);
}

void frmMain::writeEdit(int stageIndex, int entry) {
    Selector* selector = Combo1[at(stageIndex)];
    const QString name = displayNameOfFields(stageIndex);
    if (entry >= 0 && selector->entryText(entry) != name) {
        ReplaceComboItem(selector, name, entry);
        if (entry == selector->currentIndex())
            setTabCaption(stageIndex + 1, name);
    }
    SetStatusText({});
    Trap step;
    step([&] { Data1[at(stageIndex)]->UpdateRecord(); });
    if (step.failed())
        showSaveFailure(kEditFailed, stageIndex, step.line());
}

// `line` tells the engine's reason; none where the shop has nothing to do about it.
void frmMain::showSaveFailure(int messageId, int stageIndex, const QString& line) {
    const QString text = GetResString(messageId, {{QStringLiteral("%1"), QString::number(stageIndex + 1)}});
    box(line.isEmpty() ? text : text + QLatin1Char('\n') + line, BoxIcon::Critical);
}

// --- Deleting.

bool frmMain::mayDelete(int stageIndex) {
    if (AddNewMode) {
        box(GetResString(148), BoxIcon::Exclamation);
        return false;
    }
    const dao::Recordset& rows = Data1[at(stageIndex)]->Recordset();
    bool empty = true;
    Trap step;
    step([&] { empty = rows.BOF() && rows.EOF(); });
    if (empty) {
        box(GetResString(127), BoxIcon::Information);
        return false;
    }
    return box(GetResString(128), BoxIcon::Exclamation, BoxButtons::YesNo, BoxAnswer::No) == BoxAnswer::Yes;
}

void frmMain::DeleteRecord(int stageIndex) {
    if (!mayDelete(stageIndex))
        return;
    if (stageIndex == 2)
        return DeleteSelectedService();
    platform::DataControl& control = *Data1[at(stageIndex)];
    Trap step;
    step([&] { control.Delete(); });
    // A record that a colleague has deleted first is gone all the same; any other failure leaves it there.
    if (step.failed() && step.number() != dao::errRecordDeleted) {
        box(kDeleteFailed + QLatin1Char('\n') + step.line(), BoxIcon::Critical);
        return;
    }
    removeCurrentEntry(stageIndex);
    moveOnAfterDelete(stageIndex);
    StageDirty[at(stageIndex)] = false;
    UpdateToolbarState();
}

void frmMain::moveOnAfterDelete(int stageIndex) {
    platform::DataControl& control = *Data1[at(stageIndex)];
    bool atEnd = false;
    Trap step;
    step([&] { control.MoveNext(); });
    step([&] { atEnd = control.Recordset().EOF(); });
    if (!atEnd || Combo1[at(stageIndex)]->entryCount() == 0)
        return;
    step([&] { control.MoveFirst(); });
    selectSilently(stageIndex, 0);
    setTabCaption(stageIndex + 1, Combo1[at(stageIndex)]->currentText());
}

void frmMain::removeCurrentEntry(int stageIndex) {
    Selector* selector = Combo1[at(stageIndex)];
    const int index = selector->currentIndex();
    selector->removeEntry(index);
    const int left = selector->entryCount();
    if (left > 0) {
        selectSilently(stageIndex, index < left ? index : 0);
        setTabCaption(stageIndex + 1, selector->currentText());
        return;
    }
    RememberedIndex[at(stageIndex)] = -1;
    SetStageLocked(stageIndex + 1, true);
    setTabCaption(stageIndex + 1, defaultCaption(stageIndex + 1));
}

// --- Addresses.

void frmMain::OpenWebOrMail(const QString& address, bool isWeb) {
    QString target = address.trimmed();
    if (target.isEmpty())
        return;
    if (!target.contains(isWeb ? QLatin1Char('.') : QLatin1Char('@'))) {
        box(GetResString(isWeb ? 130 : 131), BoxIcon::Exclamation);
        setFocusToField(isWeb ? kWeb : kEMail);
        return;
    }
    const QString scheme = isWeb ? QStringLiteral("http://") : QStringLiteral("mailto:");
    if (!target.contains(scheme, Qt::CaseInsensitive))
        target.prepend(scheme);
    Trap step;
    step([&] { LaunchAssociated(this, target); });
    step.clear();
}
