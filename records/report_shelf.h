#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/dao/database.h"
#include "records/report_rows.h"
#include "records/row_shelf.h"

// The rows of a report over a large shop. Clients stand in it by their names, in the file by their numbers:
// fetched as they are printed, each of millions of rows would be looked for by itself, in pages that have to
// be deciphered again and again. So every table is gone through once, in the order in which it lies, and its
// rows are put aside with those of the same group of clients.
class ReportShelf {
 public:
    struct Limits {
        std::size_t fromClients = 5000;  // below it a shelf is not worth the while
        std::size_t group = 1000;        // clients whose rows are in memory at a time
        std::size_t memory = 8U << 20U;  // bytes that are put aside before they go into a file
    };
    // One table as the report prints it.
    struct Table {
        std::string statement;  // without an order
        ReportRows::Names names;
        int owner;  // the field that tells whose row it is
        int key;    // the one that the owner field of the next table tells; -1: none
        int order;  // the one that rows of the same owner are in order of; -1: none
    };
    enum Kind : std::size_t { kClientTable, kComputerTable, kServiceTable };

    // `clients`: their numbers, in the order of the report. `folder`: for the file.
    ReportShelf(const Limits& limits, std::span<const std::int32_t> clients, const QString& folder);

    // Of clients, computers and services; fewer: those first ones. `proceed` is called again and again and
    // may do what a report's Proceed may. False: it said so. Throws what reading and RowShelf throw.
    bool fill(dao::Database& database, std::span<const Table> tables, const std::function<bool()>& proceed);

    // The rows of a group of clients, counted from 0; of a kind that was put aside, and but once.
    std::shared_ptr<ReportRows> take(std::size_t group, Kind kind);

 private:
    // Which group a client's or a computer's number belongs to.
    class Groups {
     public:
        void add(std::int32_t number, std::size_t group);
        void sort();
        std::optional<std::size_t> find(std::int32_t number) const;

     private:
        struct Entry {
            std::int32_t number;
            std::uint32_t group;
        };
        std::vector<Entry> entries_;
    };
    void putRow(const ReportRows& row, Kind kind);
    std::size_t placeOf(std::size_t group, Kind kind) const { return kind * groups_ + group; }

    std::size_t groups_;
    RowShelf shelf_;
    Groups clients_, computers_;
    std::vector<Table> tables_;
    std::array<std::vector<bool>, 3> has_;
    std::string row_;
};
