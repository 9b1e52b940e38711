#include "records/report_shelf.h"

#include <algorithm>

#include "records/kept_rows.h"

namespace {

constexpr std::size_t kKinds = 3;

std::vector<bool> fieldsOf(const ReportRows& rows, std::size_t names) {
    std::vector<bool> has(names);
    for (std::size_t field = 0; field < names; ++field) {
        has[field] = rows.has(static_cast<int>(field));
    }
    return has;
}

}  // namespace

// --- Who belongs where.

void ReportShelf::Groups::add(std::int32_t number, std::size_t group) {
    entries_.push_back({number, static_cast<std::uint32_t>(group)});
}

void ReportShelf::Groups::sort() {
    std::sort(entries_.begin(), entries_.end(),
              [](const Entry& a, const Entry& b) { return a.number < b.number; });
}

// Numbers of a counter follow one by one, but for the deleted ones.
std::optional<std::size_t> ReportShelf::Groups::find(std::int32_t number) const {
    if (entries_.empty() || number < entries_.front().number) {
        return std::nullopt;
    }
    const auto guess = static_cast<std::size_t>(static_cast<std::int64_t>(number) - entries_.front().number);
    if (guess < entries_.size() && entries_[guess].number == number) {
        return entries_[guess].group;
    }
    const auto found = std::lower_bound(entries_.begin(), entries_.end(), number,
                                        [](const Entry& entry, std::int32_t n) { return entry.number < n; });
    return found != entries_.end() && found->number == number ? std::optional<std::size_t>(found->group)
                                                              : std::nullopt;
}

// --- Putting aside.

ReportShelf::ReportShelf(const Limits& limits, std::span<const std::int32_t> clients, const QString& folder)
    : groups_((clients.size() + limits.group - 1) / limits.group),
      shelf_(folder, groups_ * kKinds, limits.memory) {
    for (std::size_t i = 0; i < clients.size(); ++i) {
        clients_.add(clients[i], i / limits.group);
    }
    clients_.sort();
}

bool ReportShelf::fill(dao::Database& database, std::span<const Table> tables,
                       const std::function<bool()>& proceed) {
    for (const Table& table : tables) {
        const auto kind = static_cast<Kind>(tables_.size());
        tables_.push_back(table);
        OpenedRows rows(database.OpenRecordset(table.statement, dao::dbOpenDynaset), table.names);
        has_[kind] = fieldsOf(rows, table.names.size());
        if (!walkThrough(
                rows, [&] { putRow(rows, kind); }, proceed)) {
            return false;
        }
        if (table.key >= 0) {
            computers_.sort();
        }
    }
    return true;
}

void ReportShelf::putRow(const ReportRows& row, Kind kind) {
    const Table& table = tables_[kind];
    const std::optional<std::int32_t> owner = row.key(table.owner);
    const auto group = !owner ? std::nullopt : (kind == kServiceTable ? computers_ : clients_).find(*owner);
    if (!group) {
        return;
    }
    row_.clear();
    KeptRows::keep(row, table.names.size(), row_);
    shelf_.put(placeOf(*group, kind), row_);
    if (const auto key = table.key < 0 ? std::nullopt : row.key(table.key)) {
        computers_.add(*key, *group);
    }
}

// --- Taking.

std::shared_ptr<ReportRows> ReportShelf::take(std::size_t group, Kind kind) {
    const Table& table = tables_[kind];
    return std::make_shared<KeptRows>(shelf_.take(placeOf(group, kind)), has_[kind], table.owner,
                                      table.order);
}
