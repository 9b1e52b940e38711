#include "records/entry_binding.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "records/entry_fields.h"
#include "records/main_fields.h"
#include "records/stages.h"

namespace {

// A date has no signal of its own here: changing it alone does not make a record one to be saved.
void listen(Stages& stages, int stageIndex, QWidget* field) {
    const auto typed = [&stages, stageIndex, field] { stages.fieldTyped(stageIndex, field); };
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
        QObject::connect(line, &QLineEdit::textChanged, field, typed);
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field)) {
        QObject::connect(lines, &QPlainTextEdit::textChanged, field, typed);
    } else if (auto* check = qobject_cast<QCheckBox*>(field)) {
        QObject::connect(check, &QCheckBox::toggled, field, typed);
    }
}

}  // namespace

void bindFields(Stages& stages, const EntryFields& fields) {
    for (const Stage& stage : stages) {
        for (const EntryRow& row : stage.pane.rows()) {
            stage.data().fields().bind(fields.of(row), QLatin1String(row.field));
        }
    }
    // Afterwards: a field's mark of change must be set before we ask for it.
    for (const Stage& stage : stages) {
        for (const EntryRow& row : stage.pane.rows()) {
            listen(stages, stage.index(), fields.of(row));
        }
    }
    for (int index : {kDescription, kServiceKinds}) {
        listen(stages, kServices, fields.texts[static_cast<size_t>(index)]);
    }
}
