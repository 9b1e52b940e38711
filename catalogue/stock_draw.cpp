#include "catalogue/stock_draw.h"

#include <utility>

#include "common/window_helpers.h"
#include "platform/dao/recordset.h"
#include "platform/system/trap.h"

namespace stock_draw {
namespace {

// Of the row that the set stands on.
void changeStock(dao::Recordset& products, float by) {
    try {
        products.Edit();
        products.Fields("Stanje") = products["Stanje"].asSingle() + by;
        products.Update();
    } catch (...) {
        platform::Trap release;  // the failure that counts is on its way
        release([&] { products.CancelUpdate(); });
        throw;
    }
    products.setBookmark(products.LastModified());
    refreshCache();
}

dao::Value priceOf(const Row& row) {
    return row.price ? dao::Value(*row.price) : dao::Value();
}

void keep(dao::Recordset& rows, platform::Trap& step) {
    platform::Trap update;
    update([&] { rows.Update(); });
    if (update.failed()) {  // the others must not wait for the lock of a write that has failed
        step([&] { rows.CancelUpdate(); });
    } else {
        step([&] { rows.setBookmark(rows.LastModified()); });
    }
    step(refreshCache);
}

}  // namespace

void takeFromStock(dao::Recordset products, float quantity) {
    changeStock(products, -quantity);
}

void addToRow(dao::Recordset requisition, const Addition& addition) {
    platform::Trap step;
    const auto set = [&](const char* field, auto&& value) {
        step([&] { requisition.Fields(field) = value(); });
    };
    step([&] { requisition.Edit(); });
    set("Stanje", [&] { return requisition["Stanje"].asSingle() + addition.quantity; });
    set("SN", [&] {
        const QString old = QString::fromStdString(requisition["SN"].asText());
        const bool joins = !old.isEmpty() && addition.append;
        return (joins ? old + QStringLiteral(", ") + addition.serialNumber : addition.serialNumber)
            .toStdString();
    });
    set("JM", [&] { return addition.unit.toStdString(); });
    keep(requisition, step);
}

void addRow(dao::Recordset requisition, const Row& row) {
    platform::Trap step;
    step([&] { requisition.AddNew(); });
    const std::pair<const char*, dao::Value> fields[] = {{"ServiceID", row.serviceId},
                                                         {"OpremaID", row.productId},
                                                         {"JM", row.drawn.unit.toStdString()},
                                                         {"SN", row.drawn.serialNumber.toStdString()},
                                                         {"Proizvodjac", row.manufacturer.toStdString()},
                                                         {"Grupa", row.group.toStdString()},
                                                         {"Naziv", row.name.toStdString()},
                                                         {"Opis", row.description.toStdString()},
                                                         {"Stanje", row.drawn.quantity},
                                                         {"Cena", priceOf(row)}};
    for (const auto& field : fields) {
        step([&] { requisition.Fields(field.first) = field.second; });
    }
    keep(requisition, step);
}

bool giveBack(dao::Recordset products, qint32 productId, float quantity) {
    products.FindFirst("ID=" + std::to_string(productId));
    if (products.NoMatch()) {
        return false;
    }
    changeStock(products, quantity);
    return true;
}

}  // namespace stock_draw
