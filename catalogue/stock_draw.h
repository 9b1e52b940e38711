#pragma once

#include <QString>
#include <optional>

#include "platform/dao/recordset.h"

// The writes by which a product goes from the shelf to the requisition of a service, and back. Each function
// is one write of the file: read afresh under the lock, written, let go, so that no workstation loses what
// another has drawn meanwhile. Nothing binds two of them together: the stock goes down first and the row is
// written after it; giving back, the row goes first. Goods that are missing are found at the next count,
// goods that are counted twice are sold twice.
namespace stock_draw {

// Lowers the stock of the set's current row. Throws dao::Error; the row is then as it was, and its lock let
// go.
void takeFromStock(dao::Recordset products, float quantity);

struct Addition {
    float quantity = 0;
    QString serialNumber;
    bool append = false;  // the serial number goes behind the ones that the row has
    QString unit;
};
// Adds to the set's current row. A field that cannot be written leaves the others; a failure is silent, the
// list then shows what is in the file.
void addToRow(dao::Recordset requisition, const Addition& addition);

struct Row {
    qint32 serviceId = 0, productId = 0;
    QString manufacturer, group, name, description;
    Addition drawn;
    std::optional<float> price;  // euro; none: could not be told, and is left empty
};
// A new row; becomes the current one. Silent as addToRow.
void addRow(dao::Recordset requisition, const Row& row);

// Raises the stock of a product again. False where it has left the catalogue. Throws dao::Error.
bool giveBack(dao::Recordset products, qint32 productId, float quantity);

}  // namespace stock_draw
