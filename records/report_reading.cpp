#include "records/report_reading.h"

#include <algorithm>
#include <span>

#include "platform/system/trap.h"
#include "records/report_fields.h"

using namespace report_fields;
using platform::Trap;

namespace {

std::string listOf(const std::vector<std::int32_t>& numbers) {
    std::string list;
    for (const std::int32_t number : numbers) {
        if (!list.empty()) {
            list += ',';
        }
        list += std::to_string(number);
    }
    return list;
}

std::shared_ptr<OpenedRows> openRows(dao::Database& database, const std::string& statement,
                                     ReportRows::Names names) {
    return std::make_shared<OpenedRows>(database.OpenRecordset(statement, dao::dbOpenSnapshot), names);
}

// All rows of the statement, or the one that meets the criterion; none where none does. Throws as
// OpenRecordset does.
ReportPart openPart(dao::Database& database, const std::string& statement, ReportRows::Names names,
                    const std::string& criterion) {
    const std::shared_ptr<OpenedRows> rows = openRows(database, statement, names);
    ReportPart part{rows, rows->count()};
    if (part.count > 0 && !criterion.empty()) {
        part.count = rows->find(criterion) ? 1 : 0;
    }
    return part;
}

// Of what is selected, where only that is wanted; empty: all of them.
std::string criterionOf(bool wanted, const char* key, std::int32_t selected) {
    return wanted ? std::string(key) + "=" + std::to_string(selected) : std::string();
}

}  // namespace

bool ReportReading::begin(const Limits& limits, const QString& folder, const std::vector<std::int32_t>& ids,
                          const ReportTurns::Turn& turn) {
    shelf_.reset();
    readsAhead_ = limits.readAhead > 0;
    block_ = std::max<std::size_t>(limits.readAhead, 1);
    if (choices_.ShowOnlySelectedClient || !readsAhead_ || ids.size() < limits.shelf.fromClients) {
        return true;
    }
    bool goesOn = true;
    Trap step;
    step([&] {
        shelf_ = std::make_unique<ReportShelf>(limits.shelf, ids, folder);
        goesOn = fill(*shelf_, turn);
    });
    if (step.failed()) {
        shelf_.reset();
    } else {
        block_ = limits.shelf.group;
    }
    return goesOn;
}

bool ReportReading::fill(ReportShelf& shelf, const ReportTurns::Turn& turn) {
    const ReportShelf::Table tables[] = {
        {queries_.clients, kClientFields, kCustID, -1, -1},
        {queries_.computers(), kComputerFields, kOwner, kMachineID, kMachineName},
        {queries_.services(), kServiceFields, kMachine, -1, placeOf(ServiceColumn::Started)}};
    return shelf.fill(database_, std::span(tables).first(choices_.IncludeComputers ? std::size(tables) : 1),
                      turn);
}

void ReportReading::read(std::size_t block, const std::vector<std::int32_t>& ids) {
    if (shelf_) {
        takeFromShelf(block, ids);
        return;
    }
    readClients(ids);
    if (readsAhead_ && choices_.IncludeComputers && !choices_.ShowOnlySelectedClient) {
        readFor(ids);
    }
}

void ReportReading::takeFromShelf(std::size_t group, const std::vector<std::int32_t>& ids) {
    clients_.take(shelf_->take(group, ReportShelf::kClientTable), kCustID, ids);
    if (choices_.IncludeComputers) {
        computers_.take(shelf_->take(group, ReportShelf::kComputerTable), kOwner, ids);
        services_.take(shelf_->take(group, ReportShelf::kServiceTable), kMachine,
                       computers_.keys(kMachineID));
    }
}

void ReportReading::readClients(const std::vector<std::int32_t>& ids) {
    clients_.take(
        openRows(database_,
                 "SELECT * FROM " + queries_.clientTable() + " WHERE CustID IN (" + listOf(ids) + ")",
                 kClientFields),
        kCustID, ids);
}

// A shop of fifty thousand clients would otherwise ask the file a hundred thousand times. What cannot be read
// so is asked for one by one.
void ReportReading::readFor(const std::vector<std::int32_t>& owners) {
    computers_.clear();
    services_.clear();
    Trap step;
    step([&] {
        computers_.take(openRows(database_,
                                 queries_.computers() + " WHERE CustID IN (" + listOf(owners) +
                                     ") ORDER BY CustID, MachineName ASC",
                                 kComputerFields),
                        kOwner, owners);
        const std::vector<std::int32_t> machines = computers_.keys(kMachineID);
        if (machines.empty()) {
            return;
        }
        services_.take(openRows(database_,
                                queries_.services() + " WHERE MachineID IN (" + listOf(machines) +
                                    ") ORDER BY MachineID, ServiceStarted ASC",
                                kServiceFields),
                       kMachine, machines);
    });
}

std::shared_ptr<ReportRows> ReportReading::client(std::int32_t id) const {
    const std::optional<ReportPart> client = clients_.part(id);
    return client && client->count > 0 ? client->rows : nullptr;
}

ReportPart ReportReading::computers(std::int32_t custId, bool all) {
    const std::optional<ReportPart> read = all ? computers_.part(custId) : std::nullopt;
    return read ? *read
                : openPart(database_,
                           queries_.computers() + " WHERE CustID=" + std::to_string(custId) +
                               " ORDER BY MachineName ASC;",
                           kComputerFields,
                           criterionOf(choices_.ShowOnlySelectedComputer && !all, "MachineID",
                                       selection_.computer));
}

ReportPart ReportReading::services(std::int32_t machineId, bool all) {
    const std::optional<ReportPart> read = all ? services_.part(machineId) : std::nullopt;
    return read ? *read
                : openPart(database_,
                           queries_.services() + " WHERE MachineID=" + std::to_string(machineId) +
                               " ORDER BY ServiceStarted ASC",
                           kServiceFields,
                           criterionOf(choices_.ShowOnlySelectedService && !all, "ID", selection_.service));
}
