#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/database.h"
#include "records/report_choices.h"
#include "records/report_queries.h"
#include "records/report_rows.h"
#include "records/report_shelf.h"
#include "records/report_turns.h"

// What is selected in the main window; -1: nothing.
struct ReportSelection {
    std::int32_t client = -1;
    std::int32_t computer = -1;
    std::int32_t service = -1;
};

// The rows of a report: those of a block of clients at a time, with their computers and services where all
// are wanted; of a large shop they are put aside before. The rows are the same, whichever way they come.
class ReportReading {
 public:
    // All of these outlive it.
    ReportReading(dao::Database& database, const ReportQueries& queries, const ReportChoices& choices,
                  const ReportSelection& selection)
        : database_(database), queries_(queries), choices_(choices), selection_(selection) {}

    struct Limits {
        std::size_t readAhead;  // clients of a block; 0: each client, his computers and each computer's
                                // services by a statement of their own
        ReportShelf::Limits shelf;
    };
    // For a report over the clients `ids`; `folder` is for what is put aside. False where `turn` says so.
    // What cannot be put aside is read block by block, as in a small shop.
    bool begin(const Limits& limits, const QString& folder, const std::vector<std::int32_t>& ids,
               const ReportTurns::Turn& turn);
    void letGo() { shelf_.reset(); }  // what was put aside
    std::size_t block() const { return block_; }

    // The clients `ids`, who are the block of that number, counted from 0. Throws as OpenRecordset does where
    // the clients themselves cannot be read.
    void read(std::size_t block, const std::vector<std::int32_t>& ids);
    // Of those who were read; nobody whom somebody has deleted meanwhile.
    std::shared_ptr<ReportRows> client(std::int32_t id) const;
    // Both throw as OpenRecordset does. `all`: the selection of a computer and a service does not count.
    ReportPart computers(std::int32_t custId, bool all);
    ReportPart services(std::int32_t machineId, bool all);

 private:
    bool fill(ReportShelf& shelf, const ReportTurns::Turn& turn);
    void takeFromShelf(std::size_t group, const std::vector<std::int32_t>& ids);
    void readClients(const std::vector<std::int32_t>& ids);
    void readFor(const std::vector<std::int32_t>& owners);

    dao::Database& database_;
    const ReportQueries& queries_;
    const ReportChoices& choices_;
    const ReportSelection& selection_;
    bool readsAhead_ = false;
    std::size_t block_ = 1;  // clients
    ReportBatch clients_, computers_, services_;
    std::unique_ptr<ReportShelf> shelf_;  // of a large shop
};
