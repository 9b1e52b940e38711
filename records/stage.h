#pragma once

#include <QString>

#include "records/stage_caption.h"
#include "records/stage_entries.h"
#include "records/stage_facts.h"
#include "records/stage_fields.h"
#include "records/stage_records.h"

class MainView;

// One stage of the main window: its record set, the fields of its pane, its selector, and what is known of
// the record on show. Four things stand for one position and move together: the current row, the selector's
// entry, the one remembered, the caption of the tab. The stage of services has neither selector nor entry
// rows.
class Stage {
 public:
    // `fields` and `window` outlive the stage; `parent` owns its record set.
    Stage(int index, const EntryFields& fields, MainView& window, QObject* parent);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    StageRecords records;
    StageFields pane;
    StageCaption caption;
    StageEntries entries;
    bool dirty = false;  // a field has been changed since the last save or cancel

    int index() const { return index_; }
    const StageFacts& facts() const { return stageFacts(index_); }
    platform::DataControl& data() const { return records.data(); }

    // The record that the following stages belong to: see StageEntries.
    qint32 chosen() const { return entries.chosen(); }
    QString chosenName() const { return entries.chosenName(); }
    void showEntryOfRecord();  // selector and tab go to the record on show
    void refreshEntry();       // to the text of the fields, where the entry is that of the record on show
    void fill();  // the selector, from the selection; its first record is shown. Locks an empty stage.
    // The same, but the file is not asked for the entries until somebody looks at the selector: that of a
    // stage nobody sees is mostly filled anew before anybody does.
    void fillWhenSeen();

    // All that is read afresh, and what depends on it: taken before a reading that may be left, put back
    // where it was. What was typed is not part of it (TypedEntry).
    struct Kept {
        platform::DataControl::Reading reading;
        StageEntries::Kept entries;
        bool dirty;
        bool locked;
    };
    Kept keep();
    void putBack(Kept kept);

 private:
    int index_;
};
