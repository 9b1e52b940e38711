#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <utility>

#include "platform/controls/selector.h"
#include "records/stage_records.h"

// The entries of one stage's selector: read when somebody looks at them, and which of them is chosen. The
// stage of services has no selector, and asks nothing of this.
class StageEntries {
 public:
    // `records` outlive it. `whenNone`: called where the file turns out to have no entry.
    StageEntries(const StageRecords& records, std::function<void()> whenNone)
        : records_(records), whenNone_(std::move(whenNone)) {}

    int remembered = 0;  // the entry that the record set stands on; -1 while a record is being added

    void setSelector(platform::Selector* selector) { selector_ = selector; }
    bool hasSelector() const { return selector_ != nullptr; }
    platform::Selector& selector();  // filled, where that was put off

    qint32 chosen() const;       // the number of the selector's entry; -1 where there is none
    QString chosenName() const;  // the text of the same; empty where there is none
    bool isChosen() const { return putOff_ || selector_->currentIndex() >= 0; }
    bool isEmpty() const { return !putOff_ && selector_->entryCount() == 0; }

    int find(const QString& name);  // of several of one name that of the current row; -1: there is none
    void select(int entry);         // without a signal, and remembered
    bool read();                    // from the file, now; whether there are any
    // They are read when somebody looks. Until then the first record is told by its name and number.
    void putOff(const QString& name, qint32 number) { putOff_ = {name, number}; }

    struct First {
        QString name;
        qint32 number;
    };
    struct Kept {
        platform::Selector::Kept entries;
        std::optional<First> putOff;
        int remembered;
    };
    Kept keep() const;
    void putBack(Kept kept);

 private:
    const StageRecords& records_;
    std::function<void()> whenNone_;
    platform::Selector* selector_ = nullptr;
    std::optional<First> putOff_;  // nothing: the selector is filled
};
