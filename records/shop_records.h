#pragma once

#include "records/entry_fields.h"
#include "records/main_choices.h"
#include "records/record_editing.h"
#include "records/record_removal.h"
#include "records/stage_reading.h"
#include "records/stages.h"

// The shop's records under the open window: the stages with their fields, and what is done to them.
struct ShopRecords {
    // Both outlive it; `parent` owns the record sets.
    ShopRecords(const MainChoices& choices, MainView& window, QObject* parent)
        : stages(fields, choices.order, window, parent),
          reading(stages, window),
          editing(stages, fields, window),
          removal(stages, editing, window),
          filter(stages, reading, editing, choices.filter, window),
          session(stages, reading, editing, filter, choices.session, window) {}

    EntryFields fields;
    Stages stages;
    StageReading reading;
    RecordEditing editing;
    RecordRemoval removal;
    ShopFilter filter;
    ShopSession session;
};
