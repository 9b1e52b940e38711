#pragma once

#include <QString>
#include <cstddef>
#include <span>

#include "common/list_cells.h"
#include "common/list_columns.h"
#include "platform/controls/list_view.h"

// The columns of the requisition's list. What a column is called and what it shows stands in one table
// (requisition_columns.cpp), one row a column, in this order. Everybody else names a column.
enum class RequisitionColumn {
    Manufacturer,
    Group,
    Name,
    Description,
    SerialNumber,
    Price,     // of one piece, in the unit on screen
    Quantity,  // drawn
    Amount,    // in the unit on screen
    Count,     // no column
};

std::span<const ListColumn> requisitionColumns();
// The field that the column shows; what the list is sorted by.
QString fieldOf(RequisitionColumn column);

namespace requisition {

// The key of the row that sums up all the others. No product has it.
inline const QString kTotal = QStringLiteral("total");

QString keyOf(const QString& productId);
QString idOf(const platform::ListItem& row);  // the product's number, as it stands in the file

// A row with all its cells, none of them filled.
platform::ListItem emptyRow(const QString& key);
platform::ListItem totalRow(float total);  // in the unit on screen

// The columns whose cells show a text of the file as it stands; the others are reckoned.
inline constexpr std::size_t kTextColumns = 5;
std::span<const RequisitionColumn, kTextColumns> textColumns();

}  // namespace requisition

// One row of the list, read by name. `row` outlives it.
class RequisitionCells {
 public:
    explicit RequisitionCells(const platform::ListItem& row) : row_(row) {}
    bool isTotal() const { return row_.Key == requisition::kTotal; }
    QString productId() const { return requisition::idOf(row_); }
    QString manufacturer() const { return cellOf(row_, RequisitionColumn::Manufacturer); }
    QString group() const { return cellOf(row_, RequisitionColumn::Group); }
    QString name() const { return cellOf(row_, RequisitionColumn::Name); }
    QString description() const { return cellOf(row_, RequisitionColumn::Description); }
    QString price() const { return cellOf(row_, RequisitionColumn::Price); }
    QString quantity() const { return cellOf(row_, RequisitionColumn::Quantity); }
    QString amount() const { return cellOf(row_, RequisitionColumn::Amount); }

 private:
    const platform::ListItem& row_;
};
