#include "platform/controls/data_control.h"

#include <QCheckBox>
#include <QDate>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QWidget>
#include <optional>
#include <utility>

#include "platform/controls/date_field.h"
#include "platform/dao/dbengine.h"
#include "platform/dao/error.h"
#include "platform/system/dates.h"

namespace platform {
namespace {

// A date that nobody filled in, as it lies in the file. The filters and reports of the shop count on it.
constexpr dao::Date kNoDate{1.0};
constexpr int kNoLimit = 32767;

std::optional<QDate> shownDate(const dao::Value& value) {
    if (value.isNull() || value.asDate() == kNoDate) {
        return std::nullopt;
    }
    return toQDate(value.asDate());
}

void show(QWidget* widget, const dao::Value& value) {
    const auto text = [&] { return QString::fromStdString(value.asText()); };
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        line->setText(text());
        line->setCursorPosition(0);
    } else if (auto* page = qobject_cast<QPlainTextEdit*>(widget)) {
        page->setPlainText(text());
    } else if (auto* box = qobject_cast<QCheckBox*>(widget)) {
        box->setChecked(!value.isNull() && value.asBool());
    } else if (auto* date = qobject_cast<DateField*>(widget)) {
        date->setValue(shownDate(value));
    }
}

// What the widget would write over the value that its field holds now.
dao::Value valueOf(const QWidget* widget, const dao::Value& now) {
    QString text;
    if (const auto* box = qobject_cast<const QCheckBox*>(widget)) {
        return box->isChecked();
    }
    if (const auto* date = qobject_cast<const DateField*>(widget)) {
        const std::optional<QDate> day = date->value();
        return day ? fromQDate(*day) : kNoDate;
    }
    if (const auto* line = qobject_cast<const QLineEdit*>(widget)) {
        text = line->text();
    } else if (const auto* page = qobject_cast<const QPlainTextEdit*>(widget)) {
        text = page->toPlainText();
    }
    return text.isEmpty() && now.isNull() ? now : dao::Value(text.toStdString());
}

bool meansNoRow(int error) {
    return error == dao::errRecordDeleted || error == dao::errNoCurrentRecord ||
           error == dao::errObjectClosed;
}

}  // namespace

DataControl::DataControl(QObject* parent) : QObject(parent) {}

void DataControl::Refresh() {
    recordset_.Close();
    recordset_ = {};
    try {
        if (!database_ || openName_ != DatabaseName) {
            database_.Close();
            database_ =
                dao::DBEngine::OpenDatabase(DatabaseName.toStdString(), false, false, Connect.toStdString());
            openName_ = DatabaseName;
        }
        if (const QString statement = RecordSource(); !statement.isEmpty()) {
            recordset_ = database_.OpenRecordset(statement.toStdString(), dao::dbOpenDynaset);
            limitLengths();
        }
        showRow();
    } catch (...) {  // passed on below; the fields must not show a row that no longer stands behind them
        recordset_ = {};
        showEmpty();
        throw;
    }
}

void DataControl::Close() {
    recordset_.Close();
    recordset_ = {};
    database_.Close();
    database_ = {};
    openName_.clear();
    showEmpty();
}

// A failed move may have dropped a row being added. Then the fields go back to the row that is current;
// otherwise what was typed stays.
template <typename Step>
void DataControl::moveBy(Step step) {
    const bool wasAdding = isAdding();
    try {
        step();
    } catch (...) {  // passed on below
        if (wasAdding && !isAdding()) {
            showRow();
        }
        throw;
    }
    showRow();
}

void DataControl::MoveFirst() {
    moveBy([this] { recordset_.MoveFirst(); });
}

void DataControl::MoveLast() {
    moveBy([this] { recordset_.MoveLast(); });
}

void DataControl::MoveNext() {
    moveBy([this] { recordset_.MoveNext(); });
}

void DataControl::Move(qint64 rows) {
    moveBy([&] { recordset_.Move(rows); });
}

void DataControl::setBookmark(const dao::Bookmark& place) {
    moveBy([&] { recordset_.setBookmark(place); });
}

void DataControl::FindFirst(const QString& criterion) {
    const bool wasAdding = isAdding();
    recordset_.FindFirst(criterion.toStdString());
    if (!recordset_.NoMatch() || (wasAdding && !isAdding())) {
        showRow();
    }
}

void DataControl::AddNew() {
    recordset_.AddNew();
    showEmpty();
}

void DataControl::CancelUpdate() {
    recordset_.CancelUpdate();
    showRow();
}

void DataControl::Delete() {
    recordset_.Delete();
}

void DataControl::UpdateControls() {
    showRow();
}

void DataControl::UpdateRecord() {
    using Mode = dao::Recordset::EditModeKind;
    for (const Binding& binding : bindings_) {
        if (const auto* date = qobject_cast<DateField*>(binding.widget)) {
            date->value();  // a date still being typed is part of the record, and marks itself as changed
        }
    }
    const bool adding = recordset_.EditMode() == Mode::Add;
    try {
        if (recordset_.EditMode() == Mode::None) {
            recordset_.Edit();
        }
        writeFields(adding);
        recordset_.Update();
    } catch (...) {  // passed on below
        if (recordset_.EditMode() != Mode::None) {
            recordset_.CancelUpdate();
        }
        throw;
    }
    for (Binding& binding : bindings_) {
        binding.changed = false;
    }
}

// A row being added also gets what nobody touched, unless the program has put something there itself.
void DataControl::writeFields(bool adding) {
    for (const Binding& binding : bindings_) {
        if (!binding.widget) {
            continue;
        }
        dao::Field field = recordset_.Fields(binding.field.toStdString());
        if (binding.changed || (adding && field.Value().isNull())) {
            field = valueOf(binding.widget, field.Value());
        }
    }
}

// Bindings
// --------------------------------------------------------------------------------------------------------

void DataControl::bind(QWidget* widget, const QString& field) {
    bindings_.append({widget, field, false});
    const auto mark = [this, widget] { markChanged(widget); };
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        connect(line, &QLineEdit::textChanged, this, mark);
    } else if (auto* page = qobject_cast<QPlainTextEdit*>(widget)) {
        connect(page, &QPlainTextEdit::textChanged, this, mark);
    } else if (auto* box = qobject_cast<QCheckBox*>(widget)) {
        connect(box, &QCheckBox::toggled, this, mark);
    } else if (auto* date = qobject_cast<DateField*>(widget)) {
        connect(date, &DateField::valueChanged, this, mark);
    } else {
        Q_ASSERT_X(false, "DataControl::bind", "a widget that shows no field");
    }
    if (recordset_) {
        limitLengths();
        showRow();
    }
}

void DataControl::markChanged(const QWidget* widget) {
    if (!showing_) {
        setDataChanged(widget, true);
    }
}

bool DataControl::DataChanged(const QWidget* widget) const {
    for (const Binding& binding : bindings_) {
        if (binding.widget == widget) {
            return binding.changed;
        }
    }
    return false;
}

void DataControl::setDataChanged(const QWidget* widget, bool changed) {
    for (Binding& binding : bindings_) {
        if (binding.widget == widget) {
            binding.changed = changed;
        }
    }
}

void DataControl::limitLengths() {
    for (const Binding& binding : bindings_) {
        if (auto* line = qobject_cast<QLineEdit*>(binding.widget)) {
            const int size = recordset_.Fields(binding.field.toStdString()).Size();
            line->setMaxLength(size > 0 ? size : kNoLimit);
        }
    }
}

// Showing
// ---------------------------------------------------------------------------------------------------------

bool DataControl::isAdding() const {
    return recordset_ && recordset_.EditMode() == dao::Recordset::EditModeKind::Add;
}

void DataControl::showRow() {
    QList<dao::Value> values;
    try {
        if (recordset_ && (isAdding() || !(recordset_.BOF() || recordset_.EOF()))) {
            for (const Binding& binding : bindings_) {
                values.append(recordset_[binding.field.toStdString()]);
            }
        }
    } catch (const dao::Error& error) {
        showEmpty();
        if (!meansNoRow(error.Number())) {
            throw;
        }
        return;
    }
    values.resize(bindings_.size());
    put(values);
}

void DataControl::showEmpty() {
    put(QList<dao::Value>(bindings_.size()));
}

// All flags first: whoever listens to one field's text and asks whether it was changed gets "no" for each of
// them.
void DataControl::put(const QList<dao::Value>& values) {
    const QScopedValueRollback showing(showing_, true);
    for (Binding& binding : bindings_) {
        binding.changed = false;
    }
    for (qsizetype i = 0; i < bindings_.size(); ++i) {
        if (bindings_.at(i).widget) {
            show(bindings_.at(i).widget, values.at(i));
        }
    }
    emit repositioned();
}

}  // namespace platform
