#include "records/entry_fields.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "platform/controls/date_field.h"
#include "records/main_fields.h"

QWidget* EntryFields::of(const EntryRow& row) const {
    const auto i = static_cast<size_t>(row.index);
    if (row.kind == EntryKind::Check) {
        return firm;
    }
    return row.kind == EntryKind::Date ? static_cast<QWidget*>(dates[i]) : texts[i];
}

QString EntryFields::text(int index) const {
    const QWidget* field = texts[static_cast<size_t>(index)];
    if (const auto* line = qobject_cast<const QLineEdit*>(field)) {
        return line->text();
    }
    return qobject_cast<const QPlainTextEdit*>(field)->toPlainText();
}

void EntryFields::setText(int index, const QString& text) {
    QWidget* field = texts[static_cast<size_t>(index)];
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
        line->setText(text);
    } else {
        qobject_cast<QPlainTextEdit*>(field)->setPlainText(text);
    }
}

void EntryFields::focus(int index) const {
    if (index >= 0 && index < kCount) {
        texts[static_cast<size_t>(index)]->setFocus(Qt::OtherFocusReason);
    }
}

QPlainTextEdit* makeLines(QWidget* parent) {
    auto* lines = new QPlainTextEdit(parent);
    lines->setTabChangesFocus(true);
    lines->setMinimumHeight(lines->fontMetrics().lineSpacing() * 3);
    return lines;
}
