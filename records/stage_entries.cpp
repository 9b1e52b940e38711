#include "records/stage_entries.h"

#include <QSignalBlocker>
#include <utility>

#include "platform/system/trap.h"

using platform::Selector;
using platform::Trap;

Selector& StageEntries::selector() {
    if (const std::optional<First> due = std::exchange(putOff_, std::nullopt); due && read()) {
        select(find(due->name));
    }
    return *selector_;
}

qint32 StageEntries::chosen() const {
    return putOff_ ? putOff_->number : selector_->entryData(selector_->currentIndex());
}

QString StageEntries::chosenName() const {
    return putOff_ ? putOff_->name : selector_->currentText();
}

int StageEntries::find(const QString& name) {
    const Selector& entries = selector();
    const int first = entries.findPrefix(name);
    if (first < 0) {
        return first;
    }
    const qint32 wanted = records_.key();
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

void StageEntries::select(int entry) {
    Selector& entries = selector();
    const QSignalBlocker quiet(&entries);
    entries.setCurrentIndex(entry);
    entries.update();
    remembered = entry;
}

bool StageEntries::read() {
    putOff_.reset();
    platform::NameList names;
    Trap step;
    step([&] { names = records_.names(); });
    if (names.size() == 0) {
        selector_->clearEntries();
        whenNone_();
        return false;
    }
    selector_->setEntries(std::move(names));
    return true;
}

StageEntries::Kept StageEntries::keep() const {
    Kept kept{{}, putOff_, remembered};
    if (selector_ != nullptr) {
        kept.entries = selector_->keep();
    }
    return kept;
}

void StageEntries::putBack(Kept kept) {
    putOff_ = std::move(kept.putOff);
    remembered = kept.remembered;
    if (selector_ != nullptr) {
        selector_->putBack(kept.entries);
    }
}
