#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/dao/recordset.h"

// Rows of which one is current, and the fields of it that the report prints. A field is named by its place
// among the names. What cannot be read counts as empty, so that one odd value does not cost the shop the
// report.
class ReportRows {
 public:
    using Names = std::span<const char* const>;
    ReportRows() = default;
    virtual ~ReportRows() = default;
    ReportRows(const ReportRows&) = delete;
    ReportRows& operator=(const ReportRows&) = delete;

    virtual std::int64_t count() const = 0;
    virtual void goTo(std::int64_t place) = 0;  // from 0
    virtual void next() = 0;
    // False where the file has no field of this name.
    virtual bool has(int field) const = 0;
    // nullptr where it is Null or cannot be read. Lives until another row is current.
    virtual const dao::Value* value(int field) const = 0;

    const std::string& text(int field) const;      // empty for Null
    std::optional<double> date(int field) const;   // days; nothing where it is no date
    std::optional<float> number(int field) const;  // nothing where it is no number
    std::optional<std::int32_t> key(int field) const;
    bool flag(int field) const;
};

// Those of a record set, with the fields looked up once.
class OpenedRows final : public ReportRows {
 public:
    OpenedRows(dao::Recordset rows, Names names);
    ~OpenedRows() override;  // closes the record set

    std::int64_t count() const override { return rows_.RecordCount(); }
    void goTo(std::int64_t place) override { rows_.setAbsolutePosition(place); }
    void next() override { rows_.MoveNext(); }
    bool has(int field) const override { return fields_[static_cast<std::size_t>(field)].has_value(); }
    const dao::Value* value(int field) const override;

    bool isAtEnd() const { return rows_.EOF(); }
    bool find(const std::string& criterion);  // false, and another row is current, where none meets it

 private:
    dao::Recordset rows_;
    std::vector<std::optional<dao::Field>> fields_;
};

// Does something at each row, and lets `turn` say now and then whether to go on: false where it does not.
bool walkThrough(OpenedRows& rows, const std::function<void()>& atRow, const std::function<bool()>& turn);

// Some of the rows, one behind the other, the first of them current.
struct ReportPart {
    std::shared_ptr<ReportRows> rows;
    std::int64_t count = 0;
};

// The computers of many clients, or the services of many computers, read at one time.
class ReportBatch {
 public:
    // `rows` in order of their owners, the first of them current. An owner without rows has a part of none.
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
