#include "platform/controls/bound_fields.h"

#include <QCheckBox>
#include <QDate>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QWidget>
#include <optional>
#include <utility>

#include "platform/controls/date_field.h"
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

void BoundFields::bind(QWidget* widget, const QString& field) {
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
        Q_ASSERT_X(false, "BoundFields::bind", "a widget that shows no field");
    }
    if (rows_) {
        limitLengths();
        showRow();
    }
}

void BoundFields::markChanged(const QWidget* widget) {
    if (!showing_) {
        setChanged(widget, true);
    }
}

bool BoundFields::isChanged(const QWidget* widget) const {
    for (const Binding& binding : bindings_) {
        if (binding.widget == widget) {
            return binding.changed;
        }
    }
    return false;
}

void BoundFields::setChanged(const QWidget* widget, bool changed) {
    for (Binding& binding : bindings_) {
        if (binding.widget == widget) {
            binding.changed = changed;
        }
    }
}

void BoundFields::limitLengths() {
    for (const Binding& binding : bindings_) {
        if (auto* line = qobject_cast<QLineEdit*>(binding.widget)) {
            const int size = rows_.Fields(binding.field.toStdString()).Size();
            line->setMaxLength(size > 0 ? size : kNoLimit);
        }
    }
}

// Showing
// ---------------------------------------------------------------------------------------------------------

bool BoundFields::isAdding() const {
    return rows_ && rows_.EditMode() == dao::Recordset::EditModeKind::Add;
}

void BoundFields::showRow() {
    QList<dao::Value> values;
    try {
        if (rows_ && (isAdding() || !(rows_.BOF() || rows_.EOF()))) {
            for (const Binding& binding : bindings_) {
                values.append(rows_[binding.field.toStdString()]);
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

void BoundFields::showEmpty() {
    put(QList<dao::Value>(bindings_.size()));
}

// All flags first: whoever listens to one field's text and asks whether it was changed gets "no" for each of
// them.
void BoundFields::put(const QList<dao::Value>& values) {
    const QScopedValueRollback showing(showing_, true);
    forgetChanges();
    for (qsizetype i = 0; i < bindings_.size(); ++i) {
        if (bindings_.at(i).widget) {
            show(bindings_.at(i).widget, values.at(i));
        }
    }
    emit shown();
}

// Writing
// ---------------------------------------------------------------------------------------------------------

void BoundFields::endTyping() {
    for (const Binding& binding : bindings_) {
        if (const auto* date = qobject_cast<DateField*>(binding.widget)) {
            date->value();
        }
    }
}

void BoundFields::write(bool adding) {
    for (const Binding& binding : bindings_) {
        if (!binding.widget) {
            continue;
        }
        dao::Field field = rows_.Fields(binding.field.toStdString());
        if (binding.changed || (adding && field.Value().isNull())) {
            field = valueOf(binding.widget, field.Value());
        }
    }
}

void BoundFields::forgetChanges() {
    for (Binding& binding : bindings_) {
        binding.changed = false;
    }
}

}  // namespace platform
