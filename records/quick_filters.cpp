#include "records/quick_filters.h"

#include <charconv>

namespace quick_filters {
namespace {

const QString kFrom = QStringLiteral(
    " FROM Customers LEFT JOIN (Computers LEFT JOIN Services ON Computers.MachineID = Services.MachineID) "
    "ON Customers.CustID = Computers.CustID WHERE ");
const QString kNumbers = QStringLiteral("SELECT Customers.CustID, Computers.MachineID, Services.ID");
const QString kHead = kNumbers + kFrom;
// What is still to be paid, in the unit that the file holds. Neither rate nor rounding takes part, so that a
// filter finds the same jobs whatever unit the screen is set to.
const QString kRest = QStringLiteral(
    "((((1-[Services]![Discount]/100)*[Services]![Price]*(1+([Services]![GST]/100))))-[Services]![Paid])");
const QString kShownRest = QStringLiteral(
    ", ((1-[Services]![Discount]/100)*[Services]![Price]*(1+([Services]![GST]/100)))-[Services]![Paid] AS "
    "Expr1");
const QString kOpen = QStringLiteral("((Services.ServiceFinished)<#1/1/1900#)");
const QString kAnd = QStringLiteral(" AND ");
const QString kOwed = kRest + QStringLiteral(">0.1);");
const QString kPaid = kRest + QStringLiteral("<=0.1)");
const QString kPriced = QStringLiteral("((Services.Price)>0);");

// The fourth argument, in one of the two, has come down with the statement; the shop's counts rest on it.
QString dueWithin(int days, const char* fourthArgument) {
    return QStringLiteral(
               "(((Services.ServiceToBeFinished)>=#1/1/1900#) AND "
               "((DateDiff(\"d\",Now(),[Services]![ServiceToBeFinished]%1))<=%2)")
        .arg(QLatin1String(fourthArgument))
        .arg(days);
}

}  // namespace

bool isFilter(int number) {
    return number >= 0 && number < static_cast<int>(kFilters.size());
}

QString caption(int number) {
    return isFilter(number) ? QLatin1String(kFilters[static_cast<size_t>(number)].caption) : QString();
}

QString statement(int number, int dueDateDiff) {
    switch (number) {
        case 0:
            return kHead + QStringLiteral("(((Services.ServiceFinished)>=#1/1/1900#)") + kAnd + kOwed;
        case 1:
            return kHead + QLatin1Char('(') + kOpen + kAnd + kOwed;
        case 2:
            return kNumbers + kShownRest + kFrom + QLatin1Char('(') + kPaid + kAnd + kOpen + kAnd + kPriced;
        case 3:
            return kHead + dueWithin(dueDateDiff, "") + kAnd + kOpen + kAnd + kOwed;
        case 4:
            return kHead + dueWithin(dueDateDiff, ",2") + kAnd + kOpen + kAnd + kPaid + kAnd + kPriced;
        default:
            return {};
    }
}

void IdList::add(std::int32_t id) {
    if (id == last_) {
        return;
    }
    last_ = id;
    ++count_;
    if (!terms_.empty()) {
        terms_ += " OR ";
    }
    char digits[16];
    const auto written = std::to_chars(digits, digits + sizeof digits, id);
    terms_.append(term_).append(digits, written.ptr);
}

std::string IdList::selection(const char* table) const {
    return std::string("SELECT * FROM ") + table + " WHERE " + terms_ + ";";
}

Found collect(dao::Recordset rows) {
    Found found;
    const dao::Field client = rows.Fields("CustID");
    const dao::Field computer = rows.Fields("MachineID");
    const dao::Field service = rows.Fields("ID");
    for (; !rows.EOF(); rows.MoveNext()) {
        found.clients.add(client.Value().asLong());
        found.computers.add(computer.Value().asLong());
        found.services.add(service.Value().asLong());
    }
    return found;
}

QString statistics(const Found& found) {
    return QStringLiteral(
               "Filtering the database suceeded. Returned:\n\nClient(s): %1\nComputer(s): %2\nSevice(s): %3")
        .arg(found.clients.count())
        .arg(found.computers.count())
        .arg(found.services.count());
}

}  // namespace quick_filters
