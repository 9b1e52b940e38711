#include "records/service_repricing.h"

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/dao/dao.h"
#include "platform/dao/recordset.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "records/service_columns.h"

namespace {

void repriceRow(platform::ListItem& row, float total) {
    setCell(row, ServiceColumn::Price, platform::formatGrouped(total));
    const ServiceCells cells(row);
    const float paid = numberOf(cells.text(ServiceColumn::Paid));
    const float gst = numberOf(cells.text(ServiceColumn::Tax));
    const float discount = numberOf(cells.text(ServiceColumn::Discount));
    dao::Currency rest;
    platform::Trap step;
    step([&] {
        rest = service_row::settledRemainder(service_row::editorRemainder(total, discount, gst, paid));
    });
    row.SmallIcon = service_row::repricedState(row.SmallIcon, rest, total);
}

}  // namespace

void repriceService(QWidget& window, platform::ListView& list, platform::DataControl& services, qint32 id,
                    float total) {
    bool asked = false;
    platform::Trap step;
    step(refreshCache);
    step([&] {
        services.FindFirst(QStringLiteral("ID=%1").arg(id));
        asked = true;
    });
    if (!asked) {
        return;  // another service stands there: it must not get this price
    }
    if (services.Recordset().NoMatch()) {
        box(&window, GetResString(177), platform::BoxIcon::Exclamation);
        return;
    }
    step([&] { services.Recordset().Edit(); });
    step([&] {
        list.changeItem(service_row::keyOf(id), [&](platform::ListItem& row) { repriceRow(row, total); });
    });
    const service_row::ScreenUnit unit{CeneDinarske, KursKupovni};
    const auto* const price = serviceField(ServiceColumn::Price).list.field;
    step([&] { services.Recordset().Fields(price) = unit.toStored(total); });
    step([&] { services.Recordset().Update(); });
    if (step.failed()) {
        platform::Trap letGo;  // of the write lock, which other workstations are waiting for
        letGo([&] {
            if (services.Recordset().EditMode() != dao::Recordset::EditModeKind::None) {
                services.Recordset().CancelUpdate();
            }
        });
    }
}
