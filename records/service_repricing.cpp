#include "records/service_repricing.h"

#include "platform/controls/boxes.h"
#include "platform/dao/dao.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/service_row.h"
#include "shell/modMain.h"

namespace {

// 0 where the row shows no number.
float shownNumber(const platform::ListItem& row, int subItem) {
    return platform::readSingle(row.SubItems(subItem)).value_or(0.0F);
}

void repriceRow(platform::ListItem& row, float total) {
    row.setSubItems(3, platform::formatGrouped(total));
    const float paid = shownNumber(row, 6);
    const float gst = shownNumber(row, 5);
    const float discount = shownNumber(row, 4);
    dao::Currency rest;
    platform::Trap step;
    step([&] {
        rest = service_row::settledRemainder(service_row::editorRemainder(total, discount, gst, paid));
    });
    row.SmallIcon = service_row::repricedState(row.SmallIcon, rest, total);
}

}  // namespace

void RepriceService(frmMain& window, qint32 id, float total) {
    platform::DataControl& services = *window.Data1[2];
    bool asked = false;
    platform::Trap step;
    step([] { dao::DBEngine::Idle(dao::dbRefreshCache); });
    step([&] {
        services.FindFirst(QStringLiteral("ID=%1").arg(id));
        asked = true;
    });
    if (!asked)
        return;  // another service stands there: it must not get this price
    if (services.Recordset().NoMatch()) {
        platform::showBox({GetResString(177), GetResString(1), platform::BoxIcon::Exclamation}, &window);
        return;
    }
    step([&] { services.Recordset().Edit(); });
    step([&] {
        window.ListView1->changeItem(service_row::keyOf(id),
                                     [&](platform::ListItem& row) { repriceRow(row, total); });
    });
    const service_row::ScreenUnit unit{CeneDinarske, KursKupovni};
    step([&] { services.Recordset().Fields("Price") = unit.toStored(total); });
    step([&] { services.Recordset().Update(); });
    if (step.failed()) {
        platform::Trap letGo;  // of the write lock, which other workstations are waiting for
        letGo([&] {
            if (services.Recordset().EditMode() != dao::Recordset::EditModeKind::None)
                services.Recordset().CancelUpdate();
        });
    }
}
