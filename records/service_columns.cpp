#include "records/service_columns.h"

#include <array>

#include "common/window_helpers.h"
#include "platform/system/trap.h"

namespace {

constexpr auto kColumns = [] {
    std::array<ListColumn, service_fields::kListed> columns{};
    for (std::size_t i = 0; i < columns.size(); ++i) {
        columns[i] = serviceField(static_cast<ServiceColumn>(i)).list;
    }
    return columns;
}();

service_row::Figures figuresOf(const ServiceValues& values) {
    return {.price = values[ServiceColumn::Price].asCurrency(),
            .paid = values[ServiceColumn::Paid].asCurrency(),
            .discount = values[ServiceColumn::Discount].asSingle(),
            .gst = values[ServiceColumn::Tax].asSingle()};
}

// An amount too large to be computed with is a debt, never a settled bill.
QString stateOf(const ServiceValues& values) {
    const service_row::Figures figures = figuresOf(values);
    dao::Currency rest = figures.price;
    platform::Trap step;
    step([&] { rest = service_row::remainder(figures); });
    return service_row::stateKey(service_row::isFinished(values[ServiceColumn::Finished].asDate()),
                                 service_row::isPaid(rest, figures.price > dao::Currency()));
}

QString stateOf(const ServiceTexts& service) {
    const auto number = [&](ServiceColumn column) { return numberOf(service[column]); };
    dao::Currency rest;
    platform::Trap step;
    step([&] {
        rest = service_row::settledRemainder(
            service_row::editorRemainder(number(ServiceColumn::Price), number(ServiceColumn::Discount),
                                         number(ServiceColumn::Tax), number(ServiceColumn::Paid)));
    });
    return service_row::stateKey(
        service_row::isFinished(service_row::typedDate(service[ServiceColumn::Finished])),
        service_row::isPaid(rest, number(ServiceColumn::Price) > 0));
}

}  // namespace

std::span<const ListColumn> serviceColumns() {
    return kColumns;
}

QString fieldOf(ServiceColumn column) {
    return QString::fromLatin1(serviceField(column).list.field);
}

platform::ListItem itemOf(const StoredService& service) {
    if (!isComplete(service.values)) {
        StoredService whole = service;
        countMissingAsNothing(whole.values);
        return itemOf(whole);
    }
    const ServiceValues& values = service.values;
    platform::ListItem item;
    item.Key = service_row::keyOf(service.id);
    item.SmallIcon = stateOf(values);
    item.subItems = QList<QString>(static_cast<qsizetype>(kColumns.size()) - 1);
    for (const ServiceField& field : serviceFields()) {
        if (isListed(field.name)) {
            setCell(item, field.name, cellOfValue(field.kind, values[field.name]));
        }
    }
    item.Tag = service_row::storedTag(values[ServiceColumn::Types].textRef(),
                                      values[ServiceColumn::Comments].textRef());
    return item;
}

void showTyped(platform::ListItem& item, const ServiceTexts& service) {
    item.SmallIcon = stateOf(service);
    for (const ServiceField& field : serviceFields()) {
        if (isListed(field.name)) {
            setCell(item, field.name, cellOfText(field.kind, service[field.name]));
        }
    }
    item.Tag = service_row::tagOf(service[ServiceColumn::Types], service[ServiceColumn::Comments]);
}

QString ServiceCells::text(ServiceColumn column) const {
    switch (column) {
        case ServiceColumn::Comments:
            return service_row::commentsOfTag(row_.Tag);
        case ServiceColumn::Types:
            return service_row::typesOfTag(row_.Tag);
        default:
            return cellOf(row_, column);
    }
}
