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
    int count() const { return static_cast<int>(columns_.size()); }
    bool has(int index) const { return static_cast<std::size_t>(index) < columns_.size(); }
    void check(int index) const;                   // 3265
    const sql::ResultColumn& at(int index) const;  // 3265
    int indexOf(std::string_view name) const;      // 3265

 private:
    std::vector<sql::ResultColumn> columns_;
    FieldNames names_;
};

}  // namespace dao
