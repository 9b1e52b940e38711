// Clients and computers: adding, saving, dropping and deleting a record in place.

#include <QList>

#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/main_fields.h"
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
    const int stageIndex = CurrentStage - 1;
    const bool wasLocked = isStageLocked(CurrentStage);
    SetStageLocked(CurrentStage, false);
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
        return;
    SetStatusText({});
    SetStageLocked(CurrentStage, wasLocked);
    showEntryOfRecord(stageIndex);
    box(GetResString(169) + QStringLiteral("\n\n") + step.line(), BoxIcon::Critical);
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
            writeNew(stageIndex);
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
            writeNew(stageIndex);
        else
            writeEdit(stageIndex, RememberedIndex[at(stageIndex)]);
    } else if (wantsToFix(errors)) {
        selectSilently(stageIndex, RememberedIndex[at(stageIndex)]);
        setFocusToField(focusField);
        ok = false;
        return;
    } else {
        Data1[at(stageIndex)]->UpdateControls();
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
        step([&] { control.CancelUpdate(); });
        if (Combo1[at(stageIndex)]->entryCount() == 0)
            SetStageLocked(stageIndex + 1, true);
        if (step.failed())
            showSaveFailure(kCancelFailed, stageIndex, step.line());
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

void frmMain::writeNew(int stageIndex) {
    platform::DataControl& control = *Data1[at(stageIndex)];
    Trap step;
    step([&] {
        if (stageIndex == 1)
            control.Recordset().Fields("CustID") = Combo1[0]->entryData(Combo1[0]->currentIndex());
        control.UpdateRecord();
        control.setBookmark(control.Recordset().LastModified());
    });
    AddNewMode = false;
    SetStatusText({});
    if (step.failed()) {
        // The row is not there. The fields go back to the record that is current: typed over it, the new
        // client's data would end up in the record of another one.
        const QString line = step.line();
        dropFailedRow(stageIndex);
        return showSaveFailure(kAddFailed, stageIndex, line);
    }
    const QString name = displayNameOfRecord(stageIndex);
    const int entry = Combo1[at(stageIndex)]->addEntry(name, keyOfRecord(stageIndex));
    selectSilently(stageIndex, entry);
    setTabCaption(stageIndex + 1, name);
}

void frmMain::dropFailedRow(int stageIndex) {
    platform::DataControl& control = *Data1[at(stageIndex)];
    Trap step;
    if (control.Recordset().EditMode() != dao::Recordset::EditModeKind::None)
        step([&] { control.CancelUpdate(); });
    step([&] { control.UpdateControls(); });
    if (Combo1[at(stageIndex)]->entryCount() == 0)
        SetStageLocked(stageIndex + 1, true);
    showEntryOfRecord(stageIndex);
}

void frmMain::writeEdit(int stageIndex, int entry) {
    Selector* selector = Combo1[at(stageIndex)];
    const bool onShow = entry == selector->currentIndex();
    const QString before = selector->entryText(entry);
    const QString name = displayNameOfFields(stageIndex);
    const auto rename = [&](const QString& entryText) {
        ReplaceComboItem(selector, entryText, entry);
        if (onShow)
            setTabCaption(stageIndex + 1, entryText);
    };
    if (entry >= 0 && before != name)
        rename(name);
    SetStatusText({});
    Trap step;
    step([&] { Data1[at(stageIndex)]->UpdateRecord(); });
    if (!step.failed())
        return;
    if (entry >= 0 && before != name)
        rename(before);
    StageDirty[at(stageIndex)] = true;  // what was typed still stands there, to be saved by another try
    showSaveFailure(kEditFailed, stageIndex, step.line());
}

void frmMain::showSaveFailure(int messageId, int stageIndex, const QString& line) {
    box(GetResString(messageId, {{QStringLiteral("%1"), QString::number(stageIndex + 1)}}) +
            QLatin1Char('\n') + line,
        BoxIcon::Critical);
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
        box(step.line(), BoxIcon::Critical);
        return;
    }
    removeCurrentEntry(stageIndex);
    step.clear();
    step([&] { control.MoveNext(); });
    if (control.Recordset().EOF() && Combo1[at(stageIndex)]->entryCount() > 0) {
        step([&] { control.MoveFirst(); });
        selectSilently(stageIndex, 0);
        setTabCaption(stageIndex + 1, Combo1[at(stageIndex)]->currentText());
    }
    StageDirty[at(stageIndex)] = false;
    UpdateToolbarState();
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
