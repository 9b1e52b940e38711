#pragma once

#include <string_view>
#include <vector>

#include "platform/dao/field_names.h"
#include "platform/sql/writer.h"

namespace dao {

// The columns of a record set, by number and by name. A number counts from 0.
class Columns {
 public:
    void assign(std::vector<sql::ResultColumn> columns);

    const std::vector<sql::ResultColumn>& all() const { return columns_; }
    int count() const { return count_; }
    bool has(int index) const { return index >= 0 && index < count_; }
    void check(int index) const;                   // 3265
    const sql::ResultColumn& at(int index) const;  // 3265
    int indexOf(std::string_view name) const;      // 3265

 private:
    std::vector<sql::ResultColumn> columns_;
    int count_ = 0;  // asked at each look at a field
    FieldNames names_;
};

}  // namespace dao
