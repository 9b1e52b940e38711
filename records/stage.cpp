#include "records/stage.h"

#include <QSignalBlocker>

#include "common/modMain.h"
#include "platform/system/trap.h"
#include "records/main_view.h"

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

qint32 Stage::chosen() const {
    return selector_->entryData(selector_->currentIndex());
}

int Stage::findEntry(const QString& name) const {
    const int first = selector_->findPrefix(name);
    if (first < 0) {
        return first;
    }
    const qint32 wanted = records.key();
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
    const QString name = pane.name();
    select(isEmpty() ? -1 : findEntry(name));
    if (isEmpty()) {
        showUsualCaption();
    } else {
        showCaption(name);
    }
}

void Stage::refreshEntry() {
    const int entry = selector_->currentIndex();
    const QString shown = pane.name();
    if (entry < 0 || selector_->entryText(entry) == shown || selector_->entryData(entry) != records.key()) {
        return;
    }
    selector_->replaceText(entry, shown);
    showCaption(shown);
}

// --- Reading.

void Stage::fill() {
    selector_->clearEntries();
    platform::NameList names;
    Trap step;
    step([&] { names = records.names(); });
    if (names.size() == 0) {
        showUsualCaption();
        pane.setLocked(true);
        return;
    }
    selector_->setEntries(std::move(names));
    step([&] { data().MoveFirst(); });
    select(findEntry(pane.name()));
    if (!selector_->currentText().isEmpty()) {
        showCaption(selector_->currentText());
    }
}
