#include "records/stage.h"

#include <QLineEdit>
#include <QPalette>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "common/modMain.h"
#include "platform/system/trap.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"
#include "records/main_view.h"

using platform::Selection;
using platform::Selector;
using platform::Trap;
using EditMode = dao::Recordset::EditModeKind;

Stage::Stage(int index, const EntryFields& fields, MainView& window, QObject* parent)
    : index_(index), fields_(fields), window_(window), data_(new platform::DataControl(parent)) {}

std::span<const EntryRow> Stage::rows() const {
    return facts().pane == nullptr ? std::span<const EntryRow>() : facts().pane->rows;
}

void Stage::setLocked(bool locked) {
    if (rows().empty()) {
        return;
    }
    locked_ = locked;
    for (const EntryRow& row : rows()) {
        QWidget* field = fields_.of(row);
        if (row.kind == EntryKind::Date || row.kind == EntryKind::Check) {
            field->setEnabled(!locked);
            continue;
        }
        QPalette
            paper;  // of a locked field: that of the window, so that nobody wonders why it takes no letter
        if (locked) {
            paper.setColor(QPalette::Base, field->window()->palette().color(QPalette::Window));
        }
        field->setPalette(paper);
        if (auto* line = qobject_cast<QLineEdit*>(field)) {
            line->setReadOnly(locked);
        } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field)) {
            lines->setReadOnly(locked);
        }
    }
}

void Stage::showCaption(const QString& text) {
    window_.setTabCaption(index_ + 1, text);
}

void Stage::showUsualCaption() {
    showCaption(GetResString(facts().captionId));
}

QString Stage::missing(int& focusField) const {
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

// --- The record on show, and its entry.

qint32 Stage::key() const {
    qint32 key = -1;
    Trap step;
    step([&] { key = data_->Recordset()[facts().key].asLong(); });
    return key;
}

qint32 Stage::chosen() const {
    return selector_->entryData(selector_->currentIndex());
}

int Stage::findEntry(const QString& name) const {
    const int first = selector_->findPrefix(name);
    if (first < 0) {
        return first;
    }
    const qint32 wanted = key();
    for (int i = first; i < selector_->entryCount(); ++i) {
        if (selector_->entryText(i).compare(name, Qt::CaseInsensitive) != 0) {
            break;
        }
        if (selector_->entryData(i) == wanted) {
            return i;
        }
    }
    return first;
}

void Stage::select(int entry) {
    const QSignalBlocker quiet(selector_);
    selector_->setCurrentIndex(entry);
    selector_->update();
    remembered = entry;
}

void Stage::showEntryOfRecord() {
    const QString name = nameOfFields();
    select(isEmpty() ? -1 : findEntry(name));
    if (isEmpty()) {
        showUsualCaption();
    } else {
        showCaption(name);
    }
}

void Stage::refreshEntry() {
    const int entry = selector_->currentIndex();
    const QString shown = nameOfFields();
    if (entry < 0 || selector_->entryText(entry) == shown || selector_->entryData(entry) != key()) {
        return;
    }
    selector_->replaceText(entry, shown);
    showCaption(shown);
}

void Stage::findRecord(qint32 number) {
    data_->FindFirst(QStringLiteral("%1=%2").arg(QLatin1String(facts().key)).arg(number));
}

// --- Reading.

bool Stage::isStale(const Selection& selection) const {
    return !sameRows(selection, data_->selection());
}

// A stage that could not be read must be read again at the next move, so its selection is not left standing.
void Stage::refresh(const Selection& selection) {
    data_->select(selection);
    try {
        data_->Refresh();
    } catch (const dao::Error&) {
        data_->select({});
        throw;
    }
}

QList<Selector::Entry> Stage::readEntries() const {
    Selection names = data_->selection();
    names.columns = QLatin1String(facts().entryColumns);
    dao::Recordset rows = data_->Database().OpenRecordset(names.text().toStdString(), dao::dbOpenSnapshot);
    QList<Selector::Entry> entries;
    entries.reserve(rows.RecordCount());
    const dao::Field number = rows.Fields(0);
    for (; !rows.EOF(); rows.MoveNext()) {
        entries.append({facts().nameOfRow(rows), number.Value().asLong()});
    }
    rows.Close();
    return entries;
}

void Stage::fill() {
    selector_->clearEntries();
    QList<Selector::Entry> entries;
    Trap step;
    step([&] { entries = readEntries(); });
    if (entries.isEmpty()) {
        showUsualCaption();
        setLocked(true);
        return;
    }
    selector_->setEntries(std::move(entries));
    step([&] { data_->MoveFirst(); });
    select(findEntry(nameOfFields()));
    if (!selector_->currentText().isEmpty()) {
        showCaption(selector_->currentText());
    }
}

// --- A row being added or edited.

bool Stage::hasNewRow() const {
    bool adding = false;
    Trap step;
    step([&] { adding = data_->Recordset().EditMode() == EditMode::Add; });
    return adding;
}

// A new record that was given up must not be written after all, by the next one who types there.
void Stage::dropPendingRow() {
    Trap step;
    step([&] {
        if (data_->Recordset().EditMode() != EditMode::None) {
            data_->CancelUpdate();
        }
    });
}
