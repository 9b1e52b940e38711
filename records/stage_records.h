#pragma once

#include <QString>

#include "platform/controls/data_control.h"
#include "platform/controls/name_list.h"
#include "records/stage_facts.h"

// The record set of one stage: what it holds, and the row that it stands on.
class StageRecords {
 public:
    // `parent` owns the record set.
    StageRecords(const StageFacts& facts, QObject* parent);

    platform::DataControl& data() const { return *data_; }

    qint32 key() const;        // of the current row; -1 where there is none
    QString name() const;      // of the current row; throws dao::Error
    void find(qint32 number);  // throws as DataControl::FindFirst
    // With their numbers, sorted; throws dao::Error.
    platform::NameList names() const;

    bool isStale(const platform::Selection& selection) const;
    void refresh(const platform::Selection& selection);  // throws as DataControl::Refresh

    bool hasNewRow() const;
    // A new record that was given up must not be written after all, by the next one who types there.
    void dropPendingRow();

 private:
    const StageFacts& facts_;
    platform::DataControl* data_;
};
