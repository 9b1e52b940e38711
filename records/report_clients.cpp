#include "records/report_clients.h"

#include "records/client_order.h"
#include "records/report_fields.h"
#include "records/report_rows.h"

using namespace report_fields;

namespace {

void addTo(ClientOrder& order, const OpenedRows& client) {
    if (const std::optional<std::int32_t> number = client.key(kCustID)) {  // nothing of a deleted one
        const dao::Value* name = client.value(kSurname);
        order.add(*number, name == nullptr ? nullptr : &name->textRef());
    }
}

}  // namespace

// Who is in the report is of one moment: only the numbers and the names are read for it. A large shop's
// clients with all that is known of them would fill the memory of a workstation.
std::optional<ReportResult> ReportClients::findAll(const ReportTurns& turns) {
    ClientOrder order;
    OpenedRows rows(database_.OpenRecordset(queries_.clients, dao::dbOpenDynaset),
                    ReportRows::Names(kClientFields).first<kSurname + 1>());
    if (!rows.has(kCustID) || !rows.has(kSurname)) {
        return ReportResult::NotRead;
    }
    const ReportTurns::Turn turn = turns.beforeFirst(rows.count());
    const auto add = [&] { addTo(order, rows); };
    const auto sort = [&] { order.sort(); };
    if (!walkThrough(rows, add, turn) || !turns.run(order.size(), sort, turn)) {
        return ReportResult::BrokenOff;
    }
    numbers_ = order.numbers();
    return numbers_.empty() ? std::optional(ReportResult::Empty) : std::nullopt;
}

std::optional<ReportResult> ReportClients::findOne(std::int32_t number) {
    OpenedRows rows(database_.OpenRecordset("SELECT CustID FROM " + queries_.clientTable() +
                                                " WHERE CustID=" + std::to_string(number),
                                            dao::dbOpenSnapshot),
                    ReportRows::Names(kClientFields).first<kCustID + 1>());
    for (; !rows.isAtEnd(); rows.next()) {
        numbers_.push_back(rows.key(kCustID).value_or(-1));
    }
    if (!numbers_.empty()) {
        return std::nullopt;
    }
    return isAnybodyThere() ? ReportResult::ClientMissing : ReportResult::Empty;
}

bool ReportClients::isAnybodyThere() {
    dao::Recordset all = database_.OpenRecordset("SELECT CustID FROM " + queries_.clientTable());
    const bool isEmpty = all.EOF();
    all.Close();
    return !isEmpty;
}
