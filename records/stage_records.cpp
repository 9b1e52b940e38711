#include "records/stage_records.h"

#include "platform/controls/long_wait.h"
#include "platform/dao/row_walk.h"
#include "platform/system/trap.h"

using platform::NameList;
using platform::Selection;
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
    std::string name;
    facts_.namesOfRows(data_->Recordset())(name);
    return QString::fromStdString(name);
}

void StageRecords::find(qint32 number) {
    data_->FindFirst(QStringLiteral("%1=%2").arg(QLatin1String(facts_.key)).arg(number));
}

// --- Reading.

NameList StageRecords::names() const {
    Selection entries = data_->selection;
    entries.columns = QLatin1String(facts_.entryColumns);
    NameList names;
    Trap step;
    step([&] { names.expect(static_cast<std::size_t>(data_->Recordset().RecordCount())); });
    const dao::BeginWalk begin = [&](const dao::Recordset& rows) {
        return [&names, number = rows.Fields(0), writeName = facts_.namesOfRows(rows),
                name = std::string()]() mutable {
            name.clear();
            writeName(name);
            names.add({name, number.Value().asLong()});
        };
    };
    platform::LongWait::run([&] {
        dao::walkRows(data_->Database(), entries.text().toStdString(), begin);
        names.sort();
    });
    return names;
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
