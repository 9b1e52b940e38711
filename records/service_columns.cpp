#include "records/service_columns.h"

#include <array>

#include "platform/system/dates.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

using platform::HeaderAlignment;

namespace {

constexpr int kWidth = 1440;  // twips
constexpr bool kMoney = true;

struct Row {
    ServiceColumn name;
    ListColumn list;
    QString (*stored)(const StoredService&);  // the cell's text
    QString (*typed)(const TypedService&);
};

QString dateCell(dao::Date date) {
    return service_row::isFinished(date) ? platform::textOfDate(date) : QString();
}

constexpr std::array kRows = {
    Row{ServiceColumn::Started,
        {"ServiceStarted", nullptr, 151, HeaderAlignment::Left, kWidth},
        [](const StoredService& s) { return s.started ? platform::textOfDate(*s.started) : QString(); },
        [](const TypedService& s) { return s.started; }},
    Row{ServiceColumn::ToBeFinished,
        {"ServiceToBeFinished", nullptr, 152, HeaderAlignment::Left, kWidth},
        [](const StoredService& s) { return dateCell(s.figures.toBeFinished); },
        [](const TypedService& s) { return s.toBeFinished; }},
    Row{ServiceColumn::Finished,
        {"ServiceFinished", nullptr, 153, HeaderAlignment::Left, kWidth},
        [](const StoredService& s) { return dateCell(s.figures.finished); },
        [](const TypedService& s) { return s.finished; }},
    Row{ServiceColumn::Price,
        {"Price", nullptr, 154, HeaderAlignment::Right, kWidth, kMoney},
        [](const StoredService& s) { return platform::formatGrouped(s.figures.price); },
        [](const TypedService& s) { return platform::formatGrouped(s.price); }},
    Row{ServiceColumn::Discount,
        {"Discount", nullptr, 155, HeaderAlignment::Right, kWidth},
        [](const StoredService& s) { return platform::textOfSingle(s.figures.discount); },
        [](const TypedService& s) { return platform::textOfSingle(s.discount); }},
    Row{ServiceColumn::Tax,
        {"GST", nullptr, 156, HeaderAlignment::Right, kWidth},
        [](const StoredService& s) { return platform::textOfSingle(s.figures.gst); },
        [](const TypedService& s) { return platform::textOfSingle(s.tax); }},
    Row{ServiceColumn::Paid,
        {"Paid", nullptr, 157, HeaderAlignment::Right, kWidth, kMoney},
        [](const StoredService& s) { return platform::formatGrouped(s.figures.paid); },
        [](const TypedService& s) { return platform::formatGrouped(s.paid); }},
};

constexpr bool eachStandsAtItsName() {
    for (std::size_t i = 0; i < kRows.size(); ++i) {
        if (kRows[i].name != static_cast<ServiceColumn>(i)) {
            return false;
        }
    }
    return kRows.size() == static_cast<std::size_t>(ServiceColumn::Count);
}
static_assert(eachStandsAtItsName(), "the table and the names of the columns have one order");

constexpr auto kColumns = [] {
    std::array<ListColumn, kRows.size()> columns{};
    for (std::size_t i = 0; i < kRows.size(); ++i) {
        columns[i] = kRows[i].list;
    }
    return columns;
}();

// An amount too large to be computed with is a debt, never a settled bill.
QString stateOf(const service_row::Figures& figures) {
    dao::Currency rest = figures.price;
    platform::Trap step;
    step([&] { rest = service_row::remainder(figures); });
    return service_row::stateKey(service_row::isFinished(figures.finished),
                                 service_row::isPaid(rest, figures.price > dao::Currency()));
}

QString stateOf(const TypedService& service) {
    dao::Currency rest;
    platform::Trap step;
    step([&] {
        rest = service_row::settledRemainder(
            service_row::editorRemainder(service.price, service.discount, service.tax, service.paid));
    });
    return service_row::stateKey(service_row::isFinished(service_row::typedDate(service.finished)),
                                 service_row::isPaid(rest, service.price > 0));
}

}  // namespace

std::span<const ListColumn> serviceColumns() {
    return kColumns;
}

QString fieldOf(ServiceColumn column) {
    return QString::fromLatin1(kColumns[static_cast<std::size_t>(column)].field);
}

platform::ListItem itemOf(const StoredService& service) {
    platform::ListItem item;
    item.Key = service_row::keyOf(service.id);
    item.SmallIcon = stateOf(service.figures);
    item.subItems.reserve(static_cast<qsizetype>(kRows.size()) - 1);
    for (const Row& row : kRows) {
        setCell(item, row.name, row.stored(service));
    }
    item.Tag = service_row::tagOf(service.types, service.comments);
    return item;
}

void showTyped(platform::ListItem& item, const TypedService& service) {
    item.SmallIcon = stateOf(service);
    for (const Row& row : kRows) {
        setCell(item, row.name, row.typed(service));
    }
    item.Tag = service_row::tagOf(service.types, service.comments);
}
