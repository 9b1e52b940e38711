#pragma once

#include <functional>
#include <limits>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "platform/dao/sqlite/pages.h"

namespace dao::driver {

using StoredCell = std::variant<std::monostate, std::int64_t, double, std::string>;

struct StoredRow {
    std::int64_t rowid = 0;
    std::vector<StoredCell> cells;
};

// Row keys that an unreadable page may have held: behind `after`, up to `upTo`.
struct Gap {
    std::int64_t after = std::numeric_limits<std::int64_t>::min();
    std::int64_t upTo = std::numeric_limits<std::int64_t>::max();
    bool holds(std::int64_t rowid) const { return rowid > after && rowid <= upTo; }
};

// Walks the trees of a file page by page and steps over what cannot be read.
class TreeReader {
 public:
    explicit TreeReader(PageFile& pages) : pages_(pages) {}

    using OnRow = std::function<void(StoredRow)>;
    struct Missing {
        std::vector<Gap> gaps;           // unreadable pages of the tree
        std::vector<std::int64_t> rows;  // rows whose own content is unreadable
        bool empty() const { return gaps.empty() && rows.empty(); }
    };
    Missing readTable(PageNumber root, const OnRow& onRow);
    // The entries of an index: the fields' values and behind them the row's key. False if a page of it is
    // unreadable.
    using OnEntry = std::function<void(const std::vector<StoredCell>&)>;
    bool readIndex(PageNumber root, const OnEntry& onEntry);

    void markFreePages();
    // Leaves of tables that no tree leads to any more.
    std::vector<PageNumber> strayLeaves();
    // Every row of one leaf.
    void readLeaf(PageNumber page, const OnRow& onRow, Missing& missing);
    // The same of a page that may be anything: nothing where it is no whole leaf of a table.
    void readStrayLeaf(PageNumber page, const OnRow& onRow, Missing& missing);

 private:
    struct Cell {
        std::size_t payloadAt = 0;
        std::uint64_t payloadSize = 0;
        std::int64_t rowid = 0;
        PageNumber child = 0;
    };

    bool isTableLeaf(PageNumber page);
    bool visit(PageNumber page) { return visited_.insert(page).second; }
    void walkTable(PageNumber page, const Gap& range, int depth, const OnRow& onRow, Missing& missing);
    bool walkIndex(PageNumber page, int depth, const OnEntry& onEntry);
    bool payload(const std::string& page, const Cell& cell, std::size_t localLimit, std::string& out);
    static std::vector<std::size_t> cellPlaces(const std::string& page, PageNumber number);
    static bool parseRecord(const std::string& payload, std::vector<StoredCell>& cells);

    PageFile& pages_;
    std::set<PageNumber> visited_;
};

}  // namespace dao::driver
