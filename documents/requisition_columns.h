#pragma once

#include <QString>
#include <span>
#include <vector>

#include "common/list_cells.h"
#include "common/list_columns.h"
#include "platform/controls/list_view.h"
#include "platform/dao/recordset.h"

namespace platform {
class Trap;
}

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

platform::ListItem totalRow();

// The fields of the rows as a requisition reads them, looked up once: a name would be compared for each of
// thousands of rows otherwise. Throws dao::Error 3265 for a field that the rows do not have.
class SourceFields {
 public:
    explicit SourceFields(const dao::Recordset& rows);
    // The row of the current record. Throws where somebody has deleted it meanwhile. Its price, its quantity
    // and its amount are had each by itself, under `step`: where one is missing its cell stays empty.
    platform::ListItem row(platform::Trap& step) const;

 private:
    struct TextField {
        RequisitionColumn column;
        dao::Field field;
    };
    void showAmounts(platform::ListItem& row, platform::Trap& step) const;

    dao::Field id_;
    std::vector<TextField> texts_;
    dao::Field unit_, price_, quantity_;
};

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
