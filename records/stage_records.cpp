#include "records/stage_records.h"

#include "platform/system/trap.h"

using platform::Selection;
using platform::Selector;
using platform::Trap;
using EditMode = dao::Recordset::EditModeKind;

StageRecords::StageRecords(const StageFacts& facts, QObject* parent)
    : facts_(facts), data_(new platform::DataControl(parent)) {}

// --- The current row.

qint32 StageRecords::key() const {
    qint32 key = -1;
    Trap step;
    step([&] { key = data_->Recordset()[facts_.key].asLong(); });
    return key;
}

QString StageRecords::name() const {
    return facts_.nameOfRow(data_->Recordset());
}

void StageRecords::find(qint32 number) {
    data_->FindFirst(QStringLiteral("%1=%2").arg(QLatin1String(facts_.key)).arg(number));
}

// --- Reading.

QList<Selector::Entry> StageRecords::entries() const {
    Selection names = data_->selection;
    names.columns = QLatin1String(facts_.entryColumns);
    dao::Recordset rows = data_->Database().OpenRecordset(names.text().toStdString(), dao::dbOpenSnapshot);
    QList<Selector::Entry> entries;
    entries.reserve(rows.RecordCount());
    const dao::Field number = rows.Fields(0);
    for (; !rows.EOF(); rows.MoveNext()) {
        entries.append({facts_.nameOfRow(rows), number.Value().asLong()});
    }
    rows.Close();
    return entries;
}

bool StageRecords::isStale(const Selection& selection) const {
    return !sameRows(selection, data_->selection);
}

// What could not be read must be read again at the next move, so its selection is not left standing.
void StageRecords::refresh(const Selection& selection) {
    data_->selection = selection;
    try {
        data_->Refresh();
    } catch (const dao::Error&) {
        data_->selection = {};
        throw;
    }
}

// --- A row being added or edited.

bool StageRecords::hasNewRow() const {
    bool adding = false;
    Trap step;
    step([&] { adding = data_->Recordset().EditMode() == EditMode::Add; });
    return adding;
}

void StageRecords::dropPendingRow() {
    Trap step;
    step([&] {
        if (data_->Recordset().EditMode() != EditMode::None) {
            data_->CancelUpdate();
        }
    });
}
