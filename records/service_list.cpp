#include "records/service_list.h"

#include <memory>

#include "common/list_columns.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "platform/controls/data_control.h"
#include "platform/controls/pictures.h"
#include "platform/dao/dao.h"
#include "platform/system/trap.h"
#include "records/service_columns.h"
#include "records/service_rows.h"

using platform::ListItem;
using platform::Trap;

namespace {

// A computer's services are computed at once: it takes less time than the eye, and the list then stands as it
// was when it was filled. Beyond that (the whole shop, before a computer is chosen) rows wait until they are
// looked at.
constexpr int kRowsAtOnce = 200;

// As far as there are columns: what a later version keeps for more of them is nothing to this one.
QString figuresFor(const settings::Setting& setting, const QString& usual) {
    return settings::text(setting, usual)
        .section(QLatin1Char(';'), 0, static_cast<qsizetype>(serviceColumns().size()) - 1);
}

void placeServiceColumns(platform::ListView& list, Trap& step) {
    placeColumns(list, figuresFor(settings::LVWColumnWidths, defaultWidths(serviceColumns())),
                 figuresFor(settings::LVWColumnPositions, defaultPositions(serviceColumns())), step);
}

QHash<QString, QIcon> stateIcons() {
    QHash<QString, QIcon> icons;
    for (bool finished : {true, false}) {
        for (bool paid : {true, false}) {
            const QString key = service_row::stateKey(finished, paid);
            icons.insert(key, platform::icon(key));
        }
    }
    return icons;
}

void fillList(platform::ListView& list, const dao::Recordset& services,
              const std::shared_ptr<MadeServices>& made) {
    auto rows =
        std::make_shared<ServiceRows>(services, service_row::ScreenUnit{CeneDinarske, KursKupovni}, made);
    if (rows->count() > kRowsAtOnce) {
        list.setLazyItems(
            rows->count(), [rows](int index) { return rows->make(index); },
            [rows](const QString& key) { return rows->find(key); });
        return;
    }
    for (int index = 1; index <= rows->count(); ++index) {
        if (std::optional<ListItem> item = rows->read(index)) {
            Trap step;  // a row that cannot be added leaves the others standing
            step([&] { list.addItem(std::move(*item)); });
        }
    }
}

}  // namespace

ServiceList::ServiceList(platform::ListView& list, platform::DataControl& services, ServiceListOwner& owner)
    : list_(list),
      services_(services),
      owner_(owner),
      details_(owner),
      made_(std::make_shared<MadeServices>()) {}

void ServiceList::build(Trap& step) {
    step([&] {
        list_.setSmallIcons(stateIcons());
        addColumns(list_, serviceColumns());
    });
    if (!step.failed()) {
        placeServiceColumns(list_, step);
    }
}

void ServiceList::showUnit() {
    ::showUnit(list_, serviceColumns());
}

void ServiceList::loadTypes() {
    details_.loadTypes(services_);
}

void ServiceList::fill(const QString& selectKey) {
    list_.clearItems();
    Trap step;
    step([&] { services_.MoveLast(); });
    if (step.failed()) {
        details_.showNothing();
        owner_.renewRecordCommands();
        return;
    }
    step([&] { services_.MoveFirst(); });
    step([&] { fillList(list_, services_.Recordset(), made_); });
    step([&] {
        if (selectKey.isEmpty()) {
            list_.select(1);
        } else {
            list_.select(selectKey);
        }
    });
    if (const ListItem* item = list_.selectedItem()) {
        details_.show(*item);
    }
    owner_.renewRecordCommands();
}

void ServiceList::closeRows() {
    list_.clearItems();
    made_->clear();
}

void ServiceList::showDetails(const ListItem& item) {
    details_.show(item);
}

std::optional<qint32> ServiceList::selectedId() const {
    const ListItem* selected = list_.selectedItem();
    return selected == nullptr ? std::nullopt : std::optional(ServiceCells(*selected).serviceId());
}
