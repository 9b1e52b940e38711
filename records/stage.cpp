#include "records/stage.h"

#include <QSignalBlocker>
#include <utility>

#include "common/modMain.h"
#include "platform/system/trap.h"
#include "records/main_view.h"

using platform::Selector;
using platform::Trap;

Stage::Stage(int index, const EntryFields& fields, MainView& window, QObject* parent)
    : records(stageFacts(index), parent), pane(stageFacts(index), fields), index_(index), window_(window) {}

void Stage::showCaption(const QString& text) {
    window_.setTabCaption(index_ + 1, text);
}

void Stage::showUsualCaption() {
    showCaption(GetResString(facts().captionId));
}

// --- The record on show, and its entry.

Selector& Stage::selector() {
    if (const std::optional<PutOff> due = std::exchange(putOff_, std::nullopt); due && readEntries()) {
        select(findEntry(due->name));
    }
    return *selector_;
}

qint32 Stage::chosen() const {
    return putOff_ ? putOff_->number : selector_->entryData(selector_->currentIndex());
}

QString Stage::chosenName() const {
    return putOff_ ? putOff_->name : selector_->currentText();
}

int Stage::findEntry(const QString& name) {
    const Selector& entries = selector();
    const int first = entries.findPrefix(name);
    if (first < 0) {
        return first;
    }
    const qint32 wanted = records.key();
    for (int i = first; i < entries.entryCount(); ++i) {
        if (entries.entryText(i).compare(name, Qt::CaseInsensitive) != 0) {
            break;
        }
        if (entries.entryData(i) == wanted) {
            return i;
        }
    }
    return first;
}

void Stage::select(int entry) {
    Selector& entries = selector();
    const QSignalBlocker quiet(&entries);
    entries.setCurrentIndex(entry);
    entries.update();
    remembered = entry;
}

void Stage::showEntryOfRecord() {
    const QString name = pane.name();
    select(isEmpty() ? -1 : findEntry(name));
    if (isEmpty()) {
        showUsualCaption();
    } else {
        showCaption(name);
    }
}

void Stage::refreshEntry() {
    Selector& entries = selector();
    const int entry = entries.currentIndex();
    const QString shown = pane.name();
    if (entry < 0 || entries.entryText(entry) == shown || entries.entryData(entry) != records.key()) {
        return;
    }
    entries.replaceText(entry, shown);
    showCaption(shown);
}

// --- Reading.

void Stage::fill() {
    putOff_.reset();
    if (!readEntries()) {
        return;
    }
    Trap step;
    step([&] { data().MoveFirst(); });
    select(findEntry(pane.name()));
    if (const QString text = chosenName(); !text.isEmpty()) {
        showCaption(text);
    }
}

bool Stage::readEntries() {
    platform::NameList names;
    Trap step;
    step([&] { names = records.names(); });
    if (names.size() == 0) {
        selector_->clearEntries();
        showUsualCaption();
        pane.setLocked(true);
        return false;
    }
    selector_->setEntries(std::move(names));
    return true;
}

void Stage::fillWhenSeen() {
    bool hasRecords = false;
    Trap step;
    step([&] {
        data().MoveFirst();
        hasRecords = !data().Recordset().EOF();
    });
    if (!hasRecords) {
        return fill();
    }
    putOff_ = {pane.name(), records.key()};
    if (!chosenName().isEmpty()) {
        showCaption(chosenName());
    }
}

// --- A reading that was left.

Stage::Kept Stage::keep() {
    Kept kept{data().takeOut(), {}, putOff_, remembered, dirty, pane.isLocked()};
    if (selector_ != nullptr) {
        kept.entries = selector_->keep();
    }
    return kept;
}

void Stage::putBack(Kept kept) {
    data().putBack(std::move(kept.reading));
    putOff_ = std::move(kept.putOff);
    remembered = kept.remembered;
    dirty = kept.dirty;
    if (selector_ == nullptr) {
        return;
    }
    pane.setLocked(kept.locked);
    selector_->putBack(kept.entries);
    if (const QString name = chosenName(); !name.isEmpty()) {
        showCaption(name);
    } else {
        showUsualCaption();
    }
}
