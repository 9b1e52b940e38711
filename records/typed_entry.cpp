#include "records/typed_entry.h"

#include <QCheckBox>
#include <QDate>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "records/frmMain.h"
#include "records/main_fields.h"

namespace {

QVariant valueOf(const QWidget* field) {
    if (const auto* line = qobject_cast<const QLineEdit*>(field))
        return line->text();
    if (const auto* lines = qobject_cast<const QPlainTextEdit*>(field))
        return lines->toPlainText();
    if (const auto* box = qobject_cast<const QCheckBox*>(field))
        return box->isChecked();
    return qobject_cast<const platform::DateField*>(field)->value().value_or(QDate());
}

void setValue(QWidget* field, const QVariant& value) {
    if (auto* line = qobject_cast<QLineEdit*>(field))
        line->setText(value.toString());
    else if (auto* lines = qobject_cast<QPlainTextEdit*>(field))
        lines->setPlainText(value.toString());
    else if (auto* box = qobject_cast<QCheckBox*>(field))
        box->setChecked(value.toBool());
    else
        qobject_cast<platform::DateField*>(field)->setValue(value.toDate());
}

}  // namespace

TypedEntry::TypedEntry(const frmMain& window, int stageIndex) : stageIndex_(stageIndex) {
    const platform::DataControl& control = *window.Data1[static_cast<size_t>(stageIndex)];
    for (const EntryRow& row : entryPane(stageIndex).rows) {
        QWidget* field = window.entryField(row);
        QVariant value = valueOf(field);  // before the question: reading a date ends the typing of it
        if (control.DataChanged(field))
            values_.append({field, std::move(value)});
    }
}

// The marks are set here and not left to the fields: a colleague may have written just what was typed, and
// then nothing changes on the screen.
void TypedEntry::putBack(frmMain& window) const {
    const auto stage = static_cast<size_t>(stageIndex_);
    for (const auto& [field, value] : values_) {
        setValue(field, value);
        window.Data1[stage]->setDataChanged(field, true);
        if (qobject_cast<const platform::DateField*>(field) == nullptr)
            window.StageDirty[stage] = true;
    }
    window.UpdateToolbarState();
}
