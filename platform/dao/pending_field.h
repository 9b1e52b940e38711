#pragma once

#include "platform/dao/value.h"
#include "platform/sql/writer.h"

namespace dao {

// A field of the row that is being edited or added.
struct PendingField {
    Value value;
    bool changed = false;  // set since Edit or AddNew

    // As the column holds it. 3421 for a text that is no sound one, 3163 for one that is too long, and what
    // Value::as throws where it is not to be had in the column's type.
    void set(const sql::ResultColumn& to, Value&& given);
};

}  // namespace dao
