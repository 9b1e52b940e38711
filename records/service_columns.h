#pragma once

#include <QString>
#include <optional>
#include <span>

#include "common/list_cells.h"
#include "common/list_columns.h"
#include "platform/controls/list_view.h"
#include "records/service_row.h"

// The columns of the services list. What a column is called, how wide it starts and how its cell is written
// stands in one table (service_columns.cpp), one row a column, in this order. Everybody else names a column.
enum class ServiceColumn {
    Started,
    ToBeFinished,
    Finished,
    Price,     // in the unit on screen
    Discount,  // percent
    Tax,       // percent
    Paid,      // in the unit on screen
    Count,     // no column
};

// A service as the file has it, the amounts already in the unit on screen.
struct StoredService {
    qint32 id = 0;
    std::optional<dao::Date> started;  // nothing: no start date is stored
    service_row::Figures figures;
    QString types;  // positions from 1, "|" between
    QString comments;
};

// The same as the editor gives it back: dates as short dates, empty where they were left open; amounts in the
// unit on screen.
struct TypedService {
    QString started, toBeFinished, finished;
    float price = 0, discount = 0, tax = 0, paid = 0;
    QString types, comments;
};

std::span<const ListColumn> serviceColumns();
// The field that the column shows and is sorted by.
QString fieldOf(ServiceColumn column);

// The row of a service as the list shows it.
platform::ListItem itemOf(const StoredService& service);
// Cells, state and tag of what was typed; the row's key stays.
void showTyped(platform::ListItem& row, const TypedService& service);

// One row of the list, read by name. `row` outlives it.
class ServiceCells {
 public:
    explicit ServiceCells(const platform::ListItem& row) : row_(row) {}
    qint32 serviceId() const { return service_row::idOfKey(row_.Key); }
    QString started() const { return cellOf(row_, ServiceColumn::Started); }
    QString toBeFinished() const { return cellOf(row_, ServiceColumn::ToBeFinished); }
    QString finished() const { return cellOf(row_, ServiceColumn::Finished); }
    QString price() const { return cellOf(row_, ServiceColumn::Price); }
    QString discount() const { return cellOf(row_, ServiceColumn::Discount); }
    QString tax() const { return cellOf(row_, ServiceColumn::Tax); }
    QString paid() const { return cellOf(row_, ServiceColumn::Paid); }
    QString types() const { return service_row::typesOfTag(row_.Tag); }

 private:
    const platform::ListItem& row_;
};
