#include "documents/requisition_return.h"

#include "catalogue/stock_draw.h"
#include "common/window_helpers.h"
#include "platform/system/trap.h"

namespace requisition {
namespace {

bool findRow(dao::Recordset& rows, const QString& id) {
    rows.FindFirst("OpremaID=" + id.toStdString());
    return !rows.NoMatch();
}

}  // namespace

bool takeOff(platform::DataControl& drawn, const QString& productId, bool& found, platform::Trap& step) {
    found = true;
    bool isOnRow = false, deleted = false;
    step([&] { isOnRow = found = findRow(drawn.Recordset(), productId); });
    if (!isOnRow) {
        return false;
    }
    step([&] {
        drawn.Delete();
        deleted = true;
    });
    step(refreshCache);
    return deleted;
}

Returned giveBack(platform::DataControl& drawn, const RequisitionCells& row, dao::Recordset& stock,
                  platform::Trap& step) {
    bool found = false;
    if (!takeOff(drawn, row.productId(), found, step)) {
        return found ? Returned::Failed : Returned::NotDrawn;
    }
    Returned result = Returned::Failed;
    step([&] {
        result = stock_draw::giveBack(stock, row.productId().toInt(), numberOf(row.quantity()))
                     ? Returned::Done
                     : Returned::NoProduct;
    });
    return result;
}

}  // namespace requisition
