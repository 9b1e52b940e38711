#include "records/stage_fields.h"

#include <QLineEdit>
#include <QPalette>
#include <QPlainTextEdit>

#include "common/modMain.h"
#include "platform/controls/dressing.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"

namespace {

// The paper of a locked field is that of the window, so that nobody wonders why it takes no letter.
void showPaper(QWidget& field, bool locked) {
    QPalette paper;
    if (locked) {
        paper.setColor(QPalette::Base, paper.color(QPalette::Window));
    }
    field.setPalette(paper);
}

void lockText(QWidget* field, bool locked) {
    platform::keepDressed(*field, [field, locked] { showPaper(*field, locked); });
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
        line->setReadOnly(locked);
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field)) {
        lines->setReadOnly(locked);
    }
}

}  // namespace

StageFields::StageFields(const StageFacts& facts, const EntryFields& fields)
    : facts_(facts), fields_(fields) {}

std::span<const EntryRow> StageFields::rows() const {
    return facts_.pane == nullptr ? std::span<const EntryRow>() : facts_.pane->rows;
}

QString StageFields::missing(int& focusField) const {
    focusField = -1;
    QString errors;
    for (const EntryRow& row : rows()) {
        if (row.missingId == 0 || !fields_.text(row.index).trimmed().isEmpty()) {
            continue;
        }
        if (focusField < 0) {
            focusField = row.index;
        }
        errors += (errors.isEmpty() ? QString() : QStringLiteral("\n")) + GetResString(row.missingId);
    }
    return errors;
}

void StageFields::setLocked(bool locked) {
    if (rows().empty()) {
        return;
    }
    locked_ = locked;
    for (const EntryRow& row : rows()) {
        QWidget* field = fields_.of(row);
        if (row.kind == EntryKind::Date || row.kind == EntryKind::Check) {
            field->setEnabled(!locked);
        } else {
            lockText(field, locked);
        }
    }
}
