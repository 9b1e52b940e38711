#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/dao/recordset.h"

// A record set with the fields that the report prints, looked up once. A field is named by its place among
// the names. What cannot be read counts as empty, so that one odd value does not cost the shop the report.
class ReportRows {
 public:
    using Names = std::span<const char* const>;
    ReportRows(dao::Recordset rows, Names names);
    ~ReportRows();  // closes the record set
    ReportRows(const ReportRows&) = delete;
    ReportRows& operator=(const ReportRows&) = delete;

    // Its current row is what the readings below are of.
    dao::Recordset& set() { return rows_; }
    // False where the file has no field of this name.
    bool has(int field) const { return fields_[static_cast<std::size_t>(field)].has_value(); }
    const std::string& text(int field) const;      // empty for Null
    std::optional<double> date(int field) const;   // days; nothing where it is no date
    std::optional<float> number(int field) const;  // nothing where it is no number
    std::optional<std::int32_t> key(int field) const;
    bool flag(int field) const;

 private:
    const dao::Value* value(int field) const;  // nullptr where it is Null or cannot be read

    dao::Recordset rows_;
    std::vector<std::optional<dao::Field>> fields_;
};

// Some of the rows of a record set, one behind the other, the first of them current.
struct ReportPart {
    std::shared_ptr<ReportRows> rows;
    std::int64_t count = 0;
};

// The computers of many clients, or the services of many computers, read by one statement.
class ReportBatch {
 public:
    // `rows` in order of their owners. An owner without rows has a part of none.
    void take(std::shared_ptr<ReportRows> rows, int ownerField, const std::vector<std::int32_t>& owners);
    void clear();
    std::optional<ReportPart> part(std::int32_t owner) const;  // nothing of an owner that was not read
    std::vector<std::int32_t> keys(int field) const;           // of all rows

 private:
    struct Range {
        std::int64_t first = 0;
        std::int64_t count = 0;
    };
    std::shared_ptr<ReportRows> rows_;
    std::unordered_map<std::int32_t, Range> ranges_;
};
