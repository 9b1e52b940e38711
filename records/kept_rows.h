#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "records/report_rows.h"

// Rows of the report as bytes: what the fields held, end to end. What could not be read is kept as Null.
class KeptRows final : public ReportRows {
 public:
    // Puts the current row behind those that are there. `fields`: how many names there are.
    static void keep(const ReportRows& row, std::size_t fields, std::string& bytes);

    // In order of their owners, then of what stands in `order` (-1: nothing), then as they were kept. `has`:
    // which of the fields the file has.
    KeptRows(std::string bytes, std::vector<bool> has, int owner, int order);

    std::int64_t count() const override { return static_cast<std::int64_t>(places_.size()); }
    void goTo(std::int64_t place) override;
    void next() override { goTo(at_ + 1); }  // nothing to read behind the last one
    bool has(int field) const override { return has_[static_cast<std::size_t>(field)]; }
    const dao::Value* value(int field) const override;

 private:
    std::size_t findCells(std::size_t row);  // the end of the row that begins there

    std::string bytes_;
    std::vector<bool> has_;
    std::vector<std::size_t> places_;  // of the rows in the bytes, in their order
    std::vector<std::size_t> cells_;   // of the current row in the bytes
    std::int64_t at_ = 0;
    mutable std::vector<dao::Value> values_;  // of those that have been asked for
};
