#include "platform/controls/data_control.h"

#include <utility>

#include "platform/controls/long_wait.h"
#include "platform/dao/dbengine.h"

namespace platform {

DataControl::DataControl(QObject* parent) : QObject(parent), fields_(recordset_) {
    connect(&fields_, &BoundFields::shown, this, &DataControl::repositioned);
}

void DataControl::Refresh() {
    recordset_.Close();
    recordset_ = {};
    try {
        LongWait::run([this] { read(); });
        if (recordset_) {
            fields_.limitLengths();
        }
        fields_.showRow();
    } catch (...) {  // passed on below; the fields must not show a row that no longer stands behind them
        recordset_ = {};
        fields_.showEmpty();
        throw;
    }
}

void DataControl::read() {
    if (!database_ || database_.Name() != DatabaseName.toStdString()) {
        database_.Close();
        database_ =
            dao::DBEngine::OpenDatabase(DatabaseName.toStdString(), false, false, Connect.toStdString());
    }
    if (const QString statement = RecordSource(); !statement.isEmpty()) {
        recordset_ = database_.OpenRecordset(statement.toStdString(), dao::dbOpenDynaset);
    }
}

DataControl::Reading DataControl::takeOut() {
    return {std::exchange(recordset_, {}), selection};
}

void DataControl::putBack(Reading reading) {
    recordset_.Close();
    recordset_ = std::move(reading.rows);
    selection = std::move(reading.selection);
    fields_.showRow();
}

void DataControl::Close() {
    recordset_.Close();
    recordset_ = {};
    database_.Close();
    database_ = {};
    fields_.showEmpty();
}

void DataControl::MoveFirst() {
    fields_.follow([this] { recordset_.MoveFirst(); });
}

void DataControl::MoveLast() {
    fields_.follow([this] { recordset_.MoveLast(); });
}

void DataControl::MoveNext() {
    fields_.follow([this] { recordset_.MoveNext(); });
}

void DataControl::Move(qint64 rows) {
    fields_.follow([&] { recordset_.Move(rows); });
}

void DataControl::setBookmark(const dao::Bookmark& place) {
    fields_.follow([&] { recordset_.setBookmark(place); });
}

void DataControl::FindFirst(const QString& criterion) {
    const bool wasAdding = fields_.isAdding();
    recordset_.FindFirst(criterion.toStdString());
    if (!recordset_.NoMatch() || (wasAdding && !fields_.isAdding())) {
        fields_.showRow();
    }
}

void DataControl::AddNew() {
    recordset_.AddNew();
    fields_.showEmpty();
}

void DataControl::CancelUpdate() {
    recordset_.CancelUpdate();
    fields_.showRow();
}

void DataControl::Delete() {
    recordset_.Delete();
}

void DataControl::UpdateControls() {
    fields_.showRow();
}

void DataControl::UpdateRecord() {
    using Mode = dao::Recordset::EditModeKind;
    fields_.endTyping();
    const bool adding = recordset_.EditMode() == Mode::Add;
    try {
        if (recordset_.EditMode() == Mode::None) {
            recordset_.Edit();
        }
        fields_.write(adding);
        recordset_.Update();
    } catch (...) {  // passed on below
        if (recordset_.EditMode() != Mode::None) {
            recordset_.CancelUpdate();
        }
        throw;
    }
    fields_.forgetChanges();
}

}  // namespace platform
