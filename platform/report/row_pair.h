#pragma once

#include <QString>
#include <memory>
#include <utility>
#include <vector>

#include "platform/dao/value.h"
#include "platform/report/rows.h"
#include "platform/report/section.h"

namespace report {

// The row that a report is at, and the one behind it, which tells where a group ends. Throws what the source
// throws.
class RowPair {
 public:
    explicit RowPair(const std::unique_ptr<RowSource>& source) : source_(source) {}

    // The fields that the sections show or group by; others are read when somebody asks for them.
    void readFieldsOf(const std::vector<std::unique_ptr<Section>>& sections);
    qint64 count() const { return source_ ? source_->count() : 0; }
    bool begin();                                // at the first row; false: there is none
    bool peek();                                 // the row behind it; false: it was the last one
    void goOn() { std::swap(current_, next_); }  // to the row behind it
    // The two rows do not belong to one group by this field. False where it is none of the fields read.
    bool differ(const QString& field) const;
    dao::Value value(const QString& field);  // of the row that the report is at; Null where it is at none

 private:
    using Row = std::vector<dao::Value>;
    size_t columnOf(const QString& field);
    void read(Row& row);

    const std::unique_ptr<RowSource>& source_;  // nothing: a report without rows
    std::vector<QString> columns_;
    Row current_, next_;
};

}  // namespace report
