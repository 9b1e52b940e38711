#include "records/record_editing.h"

#include "common/modMain.h"
#include "platform/system/trap.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"
#include "records/main_view.h"
#include "records/stages.h"
#include "records/typed_entry.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Selector;
using platform::Trap;

namespace {

constexpr int kAddFailed = 1043, kEditFailed = 1044, kCancelFailed = 1045;

}  // namespace

RecordEditing::RecordEditing(Stages& stages, const EntryFields& fields, MainView& window)
    : stages_(stages), fields_(fields), window_(window) {}

// --- Adding.

void RecordEditing::AddNewRecord() {
    if (AddNewMode) {
        window_.box(GetResString(129), BoxIcon::Exclamation);
        return;
    }
    // Leaving a record saves it, and a new one leaves it.
    bool ok = false;
    SaveRecord(stages_.CurrentStage, ok);
    if (!ok) {
        return;
    }
    window_.SetStatusText(QStringLiteral("Add new mode..."));
    const int stageIndex = stages_.CurrentStage - 1;
    if (stageIndex == kServices) {
        window_.EditService(0);
        window_.SetStatusText({});
        return;
    }
    if (beginAdd(stages_[stageIndex])) {
        fields_.focus(stageIndex == kClients ? kSurname : kMachineName);
    }
}

bool RecordEditing::beginAdd(Stage& stage) {
    const bool wasLocked = stage.pane.isLocked();
    stage.pane.setLocked(false);
    stage.entries.select(-1);
    stage.caption.showUsual();
    stages_[kComputers].caption.showUsual();
    Trap step;
    step([&] { stage.data().AddNew(); });
    AddNewMode = !step.failed();
    stage.dirty = false;
    window_.UpdateToolbarState();
    if (AddNewMode) {
        return true;
    }
    window_.SetStatusText({});
    stage.pane.setLocked(wasLocked);
    stage.showEntryOfRecord();
    window_.box(GetResString(169) + QStringLiteral("\n\n") + step.line(), BoxIcon::Critical);
    return false;
}

// A new record whose row was lost goes on being new, with what was typed for it. Without a row of its own it
// would be written into the record of somebody else. Where there can be none just now the fields keep what
// was typed all the same.
void RecordEditing::addAgain(Stage& stage, Trap& step) {
    const TypedEntry typed(stage);
    step([&] { stage.data().AddNew(); });
    typed.putBack(stage);
    window_.UpdateToolbarState();
}

// --- Leaving a record.

void RecordEditing::SaveRecord(int stage, bool& ok) {
    ok = true;
    if (stage != 1 && stage != 2) {
        return;
    }
    Stage& left = stages_[stage - 1];
    // A stage without records asks for nothing: nobody could type what is missing there.
    if (!AddNewMode && left.entries.isEmpty()) {
        left.dirty = false;
    }
    leave(left, Leaving::ByCommand, ok);
}

bool RecordEditing::saveWhatIsTyped() {
    const Stage& stage = stages_[stages_.CurrentStage - 1];
    bool typed = AddNewMode;
    for (const EntryRow& row : stage.pane.rows()) {
        typed = typed || (row.kind != EntryKind::Date && stage.data().fields().isChanged(fields_.of(row)));
    }
    bool ok = true;
    if (typed) {
        SaveRecord(stages_.CurrentStage, ok);
    }
    return ok;
}

void RecordEditing::leave(Stage& stage, Leaving how, bool& ok) {
    ok = true;
    if (!stage.dirty && !AddNewMode) {
        return;
    }
    int focusField = -1;
    const QString errors = stage.pane.missing(focusField);
    if (errors.isEmpty()) {
        write(stage, how, ok);
    } else if (wantsToFix(errors)) {
        if (how == Leaving::ByChoice) {
            stage.entries.select(stage.entries.remembered);
        }
        fields_.focus(focusField);
        ok = false;
        return;
    } else {
        giveUp(stage, how);
    }
    window_.UpdateToolbarState();
}

bool RecordEditing::wantsToFix(const QString& errors) {
    return window_.box(GetResString(126, {{QStringLiteral("%1"), errors}}), BoxIcon::Exclamation,
                       BoxButtons::YesNo) == BoxAnswer::Yes;
}

void RecordEditing::write(Stage& stage, Leaving how, bool& ok) {
    stage.dirty = false;
    if (AddNewMode) {
        ok = writeNew(stage);
    } else {
        writeEdit(stage, how == Leaving::ByChoice ? stage.entries.remembered
                                                  : stage.entries.selector().currentIndex());
    }
}

// The user has given up what was typed: the stored record comes back, unless another one is to come. The move
// to that one drops a new record.
void RecordEditing::giveUp(Stage& stage, Leaving how) {
    if (how == Leaving::ByCommand) {
        return dropEdit(stage);
    }
    Trap step;
    step([&] { stage.data().UpdateControls(); });
    stage.dirty = false;
    AddNewMode = false;
    window_.SetStatusText({});
}

void RecordEditing::dropEdit(Stage& stage) {
    Trap step;
    step([&] { stage.data().UpdateControls(); });
    stage.dirty = false;
    if (AddNewMode) {
        AddNewMode = false;
        step.clear();
        step([&] {
            if (stage.data().Recordset().EditMode() == dao::Recordset::EditModeKind::Add) {
                stage.data().CancelUpdate();
            }
        });
        if (stage.entries.isEmpty()) {
            stage.pane.setLocked(true);
        }
        if (step.failed()) {
            showFailure(kCancelFailed, stage, {});
        }
    }
    stage.showEntryOfRecord();
    window_.SetStatusText({});
}

// --- Writing.

// False where the row could not be written: it goes on being added then, and whoever wanted to leave it
// stays.
bool RecordEditing::writeNew(Stage& stage) {
    Trap step;
    qint32 number = -1;
    const bool written = writeRow(stage, number, step);
    AddNewMode = !written;
    window_.SetStatusText({});
    if (written) {
        takeNewEntry(stage, number);
    } else {
        stage.entries.select(-1);
        Trap again;
        addAgain(stage, again);
    }
    if (step.failed()) {
        showFailure(kAddFailed, stage, step.line());
    }
    return written;
}

// Writes the new record and makes it the current one. False where it is not in the file.
bool RecordEditing::writeRow(Stage& stage, qint32& number, Trap& step) {
    platform::DataControl& control = stage.data();
    if (!stage.records.hasNewRow()) {
        addAgain(stage, step);
    }
    if (!stage.records.hasNewRow()) {
        return false;
    }
    if (stage.index() == kComputers) {
        const Stage& clients = stages_[kClients];
        step([&] { control.Recordset().Fields(clients.facts().key) = clients.chosen(); });
    }
    number = stage.records.key();
    bool written = false;
    step([&] {
        control.UpdateRecord();
        written = true;
    });
    if (written) {
        step([&] { control.setBookmark(control.Recordset().LastModified()); });
    }
    stage.dirty = false;
    return written;
}

// A record just written gets its entry. Where somebody has taken it away again at once the one on show stays.
void RecordEditing::takeNewEntry(Stage& stage, qint32 number) {
    const bool current = stage.records.key() == number;
    QString name = stage.pane.name();
    Trap step;
    if (current) {
        step([&] { name = stage.records.name(); });
    }
    const int entry = stage.entries.selector().addEntry(name, number);
    if (!current) {
        step([&] { stage.data().UpdateControls(); });
        return stage.showEntryOfRecord();
    }
    stage.entries.select(entry);
    stage.caption.show(name);
}

void RecordEditing::writeEdit(Stage& stage, int entry) {
    Selector& selector = stage.entries.selector();
    const QString name = stage.pane.name();
    if (entry >= 0 && selector.entryText(entry) != name) {
        selector.replaceText(entry, name);
        if (entry == selector.currentIndex()) {
            stage.caption.show(name);
        }
    }
    window_.SetStatusText({});
    Trap step;
    step([&] { stage.data().UpdateRecord(); });
    if (step.failed()) {
        showFailure(kEditFailed, stage, step.line());
    }
}

// `line` tells the engine's reason; none where the shop has nothing to do about it.
void RecordEditing::showFailure(int messageId, const Stage& stage, const QString& line) {
    const QString text =
        GetResString(messageId, {{QStringLiteral("%1"), QString::number(stage.index() + 1)}});
    window_.box(line.isEmpty() ? text : text + QLatin1Char('\n') + line, BoxIcon::Critical);
}

// --- Choosing an entry.

void RecordEditing::choose(int stageIndex) {
    Stage& stage = stages_[stageIndex];
    Selector& selector = stage.entries.selector();
    int entry = selector.currentIndex();
    if (entry == stage.entries.remembered || entry == -1) {
        return;
    }
    const qint32 number = selector.entryData(entry);
    Trap step;
    bool ok = false;
    step([&] { leave(stage, Leaving::ByChoice, ok); });
    if (!ok) {
        return;
    }
    // A record just saved may have put its own entry before the one that was chosen.
    if (selector.entryData(entry) != number) {
        ++entry;
    }
    step.clear();
    step([&] { stage.records.find(number); });
    if (step.failed()) {
        return stayOnRecord(stage);
    }
    if (stage.data().Recordset().NoMatch()) {
        stage.records.dropPendingRow();
        tellMissing(selector.entryText(entry));
        entry = 0;
    } else {
        stage.dirty = false;
    }
    stage.entries.select(entry);
    stage.caption.show(selector.currentText());
    if (stageIndex == kClients) {
        stages_[kComputers].caption.showUsual();
    }
    stage.refreshEntry();
    window_.UpdateToolbarState();
}

// The chosen record could not be asked for: the selector goes back to the one on show.
void RecordEditing::stayOnRecord(Stage& stage) {
    stage.records.dropPendingRow();
    if (stage.entries.remembered < 0) {
        return stage.showEntryOfRecord();
    }
    stage.entries.select(stage.entries.remembered);
}

void RecordEditing::tellMissing(const QString& entry) {
    const QString name = entry.isEmpty() ? QStringLiteral("selected item") : entry;
    window_.box(GetResString(118, {{QStringLiteral("%1"), name}}), BoxIcon::Exclamation);
}
