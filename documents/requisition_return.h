#pragma once

#include <QString>

#include "documents/requisition_columns.h"
#include "platform/controls/data_control.h"
#include "platform/dao/recordset.h"

namespace platform {
class Trap;
}

// Giving a drawn product back: off the requisition first, then into stock.
namespace requisition {

enum class Returned {
    Done,
    NotDrawn,   // a colleague has given it back already; nothing is done
    NoProduct,  // off the requisition, and the catalogue has it no more
    Failed,     // `step` tells why
};

// Takes the product's row off the requisition that `drawn` is open on. `found`: whether it was there, or
// could not be looked for. True where the row is gone by our doing. Only then may its quantity go back to
// stock: a row that stays would be given back twice.
bool takeOff(platform::DataControl& drawn, const QString& productId, bool& found, platform::Trap& step);

// The whole of it, for one row of the list; `stock` is open on the table of products.
Returned giveBack(platform::DataControl& drawn, const RequisitionCells& row, dao::Recordset& stock,
                  platform::Trap& step);

}  // namespace requisition
