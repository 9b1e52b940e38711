#include "records/stage.h"

#include <utility>

#include "platform/system/trap.h"

using platform::Selector;
using platform::Trap;

Stage::Stage(int index, const EntryFields& fields, MainView& window, QObject* parent)
    : records(stageFacts(index), parent),
      pane(stageFacts(index), fields),
      caption(index, window),
      entries(records,
              [this] {
                  caption.showUsual();
                  pane.setLocked(true);
              }),
      index_(index) {}

// --- The record on show, and its entry.

void Stage::showEntryOfRecord() {
    const QString name = pane.name();
    entries.select(entries.isEmpty() ? -1 : entries.find(name));
    if (entries.isEmpty()) {
        caption.showUsual();
    } else {
        caption.show(name);
    }
}

void Stage::refreshEntry() {
    Selector& selector = entries.selector();
    const int entry = selector.currentIndex();
    const QString shown = pane.name();
    if (entry < 0 || selector.entryText(entry) == shown || selector.entryData(entry) != records.key()) {
        return;
    }
    selector.replaceText(entry, shown);
    caption.show(shown);
}

// --- Reading.

void Stage::fill() {
    if (!entries.read()) {
        return;
    }
    Trap step;
    step([&] { data().MoveFirst(); });
    entries.select(entries.find(pane.name()));
    if (const QString text = chosenName(); !text.isEmpty()) {
        caption.show(text);
    }
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
    entries.putOff(pane.name(), records.key());
    if (!chosenName().isEmpty()) {
        caption.show(chosenName());
    }
}

// --- A reading that was left.

Stage::Kept Stage::keep() {
    return {data().takeOut(), entries.keep(), dirty, pane.isLocked()};
}

void Stage::putBack(Kept kept) {
    data().putBack(std::move(kept.reading));
    dirty = kept.dirty;
    if (entries.hasSelector()) {
        pane.setLocked(kept.locked);
    }
    entries.putBack(std::move(kept.entries));
    if (!entries.hasSelector()) {
        return;
    }
    if (const QString name = chosenName(); !name.isEmpty()) {
        caption.show(name);
    } else {
        caption.showUsual();
    }
}
