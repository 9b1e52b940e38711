#include "records/service_details.h"

#include "platform/controls/data_control.h"
#include "platform/dao/dao.h"
#include "platform/system/trap.h"
#include "records/service_columns.h"
#include "records/service_list_owner.h"

void ServiceDetails::loadTypes(platform::DataControl& services) {
    dao::Recordset table;
    bool opened = false;
    platform::Trap step;
    step([&] {
        table = services.Database().OpenRecordset("ServiceTypes", dao::dbOpenTable);
        opened = true;
    });
    if (!opened) {
        return;
    }
    typeNames_ = {QString()};
    for (std::int64_t i = table.RecordCount(); i > 0; --i) {
        QString name;  // a kind that cannot be read keeps its place: services name kinds by position
        step([&] { name = QString::fromStdString(table["Service"].asText()); });
        typeNames_.append(name);
        step([&] { table.MoveNext(); });
    }
    table.Close();
}

void ServiceDetails::show(const platform::ListItem& item) {
    const ServiceCells cells(item);
    owner_.showTexts(cells.text(ServiceColumn::Comments),
                     service_row::typeNames(cells.text(ServiceColumn::Types), typeNames_));
    shownKey_ = item.Key;
}

void ServiceDetails::showNothing() {
    owner_.showTexts({}, {});
}
