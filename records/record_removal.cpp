#include "records/record_removal.h"

#include "common/modMain.h"
#include "platform/system/trap.h"
#include "records/main_view.h"
#include "records/record_editing.h"
#include "records/stages.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Selector;
using platform::Trap;

namespace {

const QString kDeleteFailed =
    QStringLiteral("An unexpected error has occured while deleting the current record.");

}  // namespace

RecordRemoval::RecordRemoval(Stages& stages, const RecordEditing& editing, MainView& window)
    : stages_(stages), editing_(editing), window_(window) {}

bool RecordRemoval::mayDelete(const Stage& stage) {
    if (editing_.AddNewMode) {
        window_.box(GetResString(148), BoxIcon::Exclamation);
        return false;
    }
    const dao::Recordset& rows = stage.data().Recordset();
    bool empty = true;
    Trap step;
    step([&] { empty = rows.BOF() && rows.EOF(); });
    if (empty) {
        window_.box(GetResString(127), BoxIcon::Information);
        return false;
    }
    return window_.box(GetResString(128), BoxIcon::Exclamation, BoxButtons::YesNo, BoxAnswer::No) ==
           BoxAnswer::Yes;
}

void RecordRemoval::DeleteRecord(int stageIndex) {
    Stage& stage = stages_[stageIndex];
    if (!mayDelete(stage)) {
        return;
    }
    if (stageIndex == kServices) {
        return window_.DeleteSelectedService();
    }
    Trap step;
    step([&] { stage.data().Delete(); });
    // A record that a colleague has deleted first is gone all the same; any other failure leaves it there.
    if (step.failed() && step.number() != dao::errRecordDeleted) {
        window_.box(kDeleteFailed + QLatin1Char('\n') + step.line(), BoxIcon::Critical);
        return;
    }
    removeEntry(stage);
    moveOn(stage);
    stage.dirty = false;
    window_.UpdateToolbarState();
}

void RecordRemoval::moveOn(Stage& stage) {
    bool atEnd = false;
    Trap step;
    step([&] { stage.data().MoveNext(); });
    step([&] { atEnd = stage.data().Recordset().EOF(); });
    if (!atEnd || stage.entries.isEmpty()) {
        return;
    }
    step([&] { stage.data().MoveFirst(); });
    stage.entries.select(0);
    stage.caption.show(stage.entries.selector().currentText());
}

void RecordRemoval::removeEntry(Stage& stage) {
    Selector& selector = stage.entries.selector();
    const int entry = selector.currentIndex();
    selector.removeEntry(entry);
    const int left = selector.entryCount();
    if (left > 0) {
        stage.entries.select(entry < left ? entry : 0);
        stage.caption.show(selector.currentText());
        return;
    }
    stage.entries.remembered = -1;
    stage.pane.setLocked(true);
    stage.caption.showUsual();
}
