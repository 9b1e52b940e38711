#pragma once

#include <QString>
#include <span>

#include "records/stage_facts.h"

class EntryFields;
struct EntryRow;

// The fields of one stage's pane. The stage of services has none.
class StageFields {
 public:
    // Both outlive it.
    StageFields(const StageFacts& facts, const EntryFields& fields);

    const EntryFields& all() const { return fields_; }  // those of the other panes, too
    std::span<const EntryRow> rows() const;
    QString name() const { return facts_.nameOfFields(fields_); }  // as entry and tab show it
    // The messages of all required fields that are empty, and the first of these fields; -1: none.
    QString missing(int& focusField) const;

    bool isLocked() const { return locked_; }
    void setLocked(bool locked);  // nothing can be typed into locked ones

 private:
    const StageFacts& facts_;
    const EntryFields& fields_;
    bool locked_ = false;
};
