#pragma once

#include <vector>

#include "platform/dao/keyed_block.h"
#include "platform/dao/pending_field.h"

namespace dao {

// A row of a keyset between Edit and Update: what is locked for it, what it was, and how the change is
// written.
class EditedRow {
 public:
    EditedRow(const KeysetView& set, KeyedBlock& rows, std::vector<PendingField>& fields)
        : set_(set), rows_(rows), fields_(fields) {}

    void lock(std::size_t row);  // 3260
    void unlock() noexcept;
    // The locked row lies there among those in hand; the fields are its own until somebody sets them.
    void begin(std::size_t place);
    // All of the change, or an error and nothing; the lock ends with it. 3197, 3167, 3164.
    void write(OpenFile& to);
    std::size_t row() const { return row_; }

 private:
    EditedRows standsIn(bool written) const;
    bool isChanged(int source) const;
    std::vector<driver::FieldValue> changedFields(int source) const;
    bool writeAtOnce(OpenFile& to);
    void checkUnchanged();
    void writeFields(driver::Store& store);

    const KeysetView& set_;
    KeyedBlock& rows_;
    std::vector<PendingField>& fields_;
    std::size_t row_ = 0;
    EditedRows locked_;
    std::int64_t epoch_ = 0;
    std::vector<Value> original_;  // as Edit read it
};

}  // namespace dao
