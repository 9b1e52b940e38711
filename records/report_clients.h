#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/dao/database.h"
#include "records/report_queries.h"
#include "records/report_result.h"
#include "records/report_turns.h"

// Who is in a report: the numbers of its clients, in its order. Found once, as they are at that moment.
class ReportClients {
 public:
    // Both outlive it.
    ReportClients(dao::Database& database, const ReportQueries& queries)
        : database_(database), queries_(queries) {}

    // Each answers what ends the report before it begins; nothing: it may begin. Throws dao::Error.
    std::optional<ReportResult> findAll(const ReportTurns& turns);
    std::optional<ReportResult> findOne(std::int32_t number);

    const std::vector<std::int32_t>& numbers() const { return numbers_; }

 private:
    bool isAnybodyThere();

    dao::Database& database_;
    const ReportQueries& queries_;
    std::vector<std::int32_t> numbers_;
};
