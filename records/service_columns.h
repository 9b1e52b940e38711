#pragma once

#include <QString>
#include <span>

#include "common/list_cells.h"
#include "platform/controls/list_view.h"
#include "records/service_values.h"

// A service as the file has it.
struct StoredService {
    qint32 id = 0;
    ServiceValues values{};
};

std::span<const ListColumn> serviceColumns();
// The field of the file that holds it, and by which a column is sorted.
QString fieldOf(ServiceColumn column);

// The row of a service as the list shows it.
platform::ListItem itemOf(const StoredService& service);
// Cells, state and tag of what was typed; the row's key stays.
void showTyped(platform::ListItem& row, const ServiceTexts& service);

// One row of the list, read by name. `row` outlives it.
class ServiceCells {
 public:
    explicit ServiceCells(const platform::ListItem& row) : row_(row) {}
    qint32 serviceId() const { return service_row::idOfKey(row_.Key); }
    QString text(ServiceColumn column) const;  // as the row shows it; empty where it has no such cell

 private:
    const platform::ListItem& row_;
};
