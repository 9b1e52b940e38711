#pragma once

#include <QString>
#include <optional>

#include "platform/controls/selector.h"
#include "records/stage_facts.h"
#include "records/stage_fields.h"
#include "records/stage_records.h"

class MainView;

// One stage of the main window: its record set, the fields of its pane, its selector, and what is known of
// the record on show. Four things stand for one position and move together: the current row, the selector's
// entry, `remembered`, the caption of the tab. The stage of services has neither selector nor entry rows.
class Stage {
 public:
    // `fields` and `window` outlive the stage; `parent` owns its record set.
    Stage(int index, const EntryFields& fields, MainView& window, QObject* parent);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    StageRecords records;
    StageFields pane;
    bool dirty = false;  // a field has been changed since the last save or cancel
    int remembered = 0;  // the entry that the record set stands on; -1 while a record is being added

    int index() const { return index_; }
    const StageFacts& facts() const { return stageFacts(index_); }
    platform::DataControl& data() const { return records.data(); }
    platform::Selector& selector();  // filled, where that was put off
    void setSelector(platform::Selector* selector) { selector_ = selector; }

    void showCaption(const QString& text);  // of its tab
    void showUsualCaption();                // that of a stage where nothing is chosen

    qint32 chosen() const;       // the number of the selector's entry; -1 where there is none
    QString chosenName() const;  // the text of the same; empty where there is none
    bool isChosen() const { return putOff_ || selector_->currentIndex() >= 0; }
    bool isEmpty() const { return !putOff_ && selector_->entryCount() == 0; }
    int findEntry(const QString& name);  // of several of one name that of the current row
    void select(int entry);              // without a signal, and remembered
    void showEntryOfRecord();            // selector and tab go to the record on show
    void refreshEntry();  // to the text of the fields, where the entry is that of the record on show
    void fill();  // the selector, from the selection; its first record is shown. Locks an empty stage.
    // The same, but the file is not asked for the entries until somebody looks at the selector: that of a
    // stage nobody sees is mostly filled anew before anybody does.
    void fillWhenSeen();

    // The entry of the first record, which is the one on show until the selector is filled.
    struct PutOff {
        QString name;
        qint32 number;
    };
    // All that is read afresh, and what depends on it: taken before a reading that may be left, put back
    // where it was. What was typed is not part of it (TypedEntry).
    struct Kept {
        platform::DataControl::Reading reading;
        platform::Selector::Kept entries;
        std::optional<PutOff> putOff;
        int remembered;
        bool dirty;
        bool locked;
    };
    Kept keep();
    void putBack(Kept kept);

 private:
    bool readEntries();  // whether there are any

    int index_;
    MainView& window_;
    platform::Selector* selector_ = nullptr;
    std::optional<PutOff> putOff_;  // nothing: the selector is filled
};
