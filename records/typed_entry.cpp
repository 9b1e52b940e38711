#include "records/typed_entry.h"

#include <QCheckBox>
#include <QDate>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "platform/controls/date_field.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"
#include "records/stage.h"

namespace {

QVariant valueOf(const QWidget* field) {
    if (const auto* line = qobject_cast<const QLineEdit*>(field)) {
        return line->text();
    }
    if (const auto* lines = qobject_cast<const QPlainTextEdit*>(field)) {
        return lines->toPlainText();
    }
    if (const auto* box = qobject_cast<const QCheckBox*>(field)) {
        return box->isChecked();
    }
    return qobject_cast<const platform::DateField*>(field)->value().value_or(QDate());
}

void setValue(QWidget* field, const QVariant& value) {
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
        line->setText(value.toString());
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field)) {
        lines->setPlainText(value.toString());
    } else if (auto* box = qobject_cast<QCheckBox*>(field)) {
        box->setChecked(value.toBool());
    } else {
        qobject_cast<platform::DateField*>(field)->setValue(value.toDate());
    }
}

}  // namespace

TypedEntry::TypedEntry(const Stage& stage) {
    for (const EntryRow& row : stage.pane.rows()) {
        QWidget* field = stage.pane.all().of(row);
        QVariant value = valueOf(field);  // before the question: reading a date ends the typing of it
        if (stage.data().fields().isChanged(field)) {
            values_.append({field, std::move(value)});
        }
    }
}

// The marks are set here and not left to the fields: a colleague may have written just what was typed, and
// then nothing changes on the screen.
void TypedEntry::putBack(Stage& stage) const {
    for (const auto& [field, value] : values_) {
        setValue(field, value);
        stage.data().fields().setChanged(field, true);
        if (qobject_cast<const platform::DateField*>(field) == nullptr) {
            stage.dirty = true;
        }
    }
}
