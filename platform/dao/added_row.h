#pragma once

#include <vector>

#include "platform/dao/keyset_view.h"
#include "platform/dao/pending_field.h"

namespace dao {

// A row of a keyset between AddNew and Update: it goes into the table whose rows stand in one row of the set
// at most, under the number that was drawn for it.
class AddedRow {
 public:
    AddedRow(const KeysetView& set, std::vector<PendingField>& fields) : set_(set), fields_(fields) {}

    void begin(OpenFile& to);           // the number is drawn; the fields are those of an empty row
    std::int64_t insert(OpenFile& to);  // answers its key; an error, and nothing is written

 private:
    std::vector<driver::FieldValue> given(const sql::ColumnInfo* counter, const Value& number) const;

    const KeysetView& set_;
    std::vector<PendingField>& fields_;
    std::int64_t number_ = 0;  // 0: the table has no counter
};

}  // namespace dao
