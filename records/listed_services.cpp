#include "records/listed_services.h"

#include "platform/controls/list_view.h"
#include "platform/system/trap.h"
#include "records/shop_records.h"

using platform::ListItem;
using platform::ListView;
using platform::Trap;

ListedServices::ListedServices(QWidget& window, ListView& pane, const MainStart& start, ShopRecords& shop,
                               MainChoices& choices, const StageSwitch& tabs, MainView& surface)
    : pane_(pane),
      start_(start),
      shop_(shop),
      owner_(shop.stages, shop.fields, choices, surface),
      view(shop.fields, pane, tabs),
      list(pane, shop.stages[kServices].data(), owner_),
      commands(window, pane, shop.stages[kServices].data(), owner_, view, list.details()),
      sorting(start, pane, shop.reading, choices.order, surface) {}

bool ListedServices::InitServiceListView(QString& errorText) {
    Trap step;
    step([&] { start_.begin(StartStep::ServiceList); });
    if (!step.failed()) {
        list.build(step);
    }
    if (!step.failed()) {
        connectRows();
    }
    return outcome(step, 167, errorText);
}

void ListedServices::connectRows() {
    QObject::connect(&pane_, &ListView::itemActivated, &pane_, [this] { commands.editSelected(); });
    QObject::connect(&pane_, &ListView::deletePressed, &pane_,
                     [this] { shop_.removal.DeleteRecord(shop_.stages.CurrentStage - 1); });
    QObject::connect(&pane_, &ListView::itemClicked, &pane_, [this] {
        if (const ListItem* item = pane_.selectedItem()) {
            list.showDetails(*item);
        }
    });
}
