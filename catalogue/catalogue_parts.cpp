#include "catalogue/catalogue_parts.h"

#include <QLineEdit>

#include "catalogue/catalogue_switch.h"
#include "catalogue/list_facts.h"
#include "catalogue/type_ahead.h"
#include "platform/controls/list_box.h"
#include "platform/controls/list_view.h"

CatalogueParts::CatalogueParts(QWidget* window, WindowCommands& commands)
    : status(window),
      groups(groupFacts(), window, status),
      manufacturers(manufacturerFacts(), window, status),
      products(groups, manufacturers, window, status),
      copies(window),
      groupCommands(groups, copies, window),
      manufacturerCommands(manufacturers, copies, window),
      productCommands(products, groups, manufacturers, copies, window),
      draw(products, groups, copies, window),
      drag(&products.rows(), window),
      menus(window, status),
      bars({{{&groups, &groupCommands, groups.search().box()},
             {&manufacturers, &manufacturerCommands, manufacturers.search().box()},
             {&products, &productCommands, nullptr}}},
           commands, window, status, menus) {
    const auto readProducts = [this] { products.update(QString(), false); };
    int pane = 0;
    for (ListPane* list : {&groups, &manufacturers}) {
        QObject::connect(list, &ListPane::productsWanted, &products, readProducts);
        QObject::connect(list, &ListPane::productsLeft, &products, &ProductPane::clear);
        QObject::connect(&list->rows(), &platform::ListBox::doubleClicked, list, [this, list] {
            list->takeFocus();
            bars.runOnList(CatalogueCommand::Edit);
        });
        QObject::connect(&list->rows(), &platform::ListBox::contextMenuAsked, &bars,
                         [this, pane](const QPoint& at) { bars.openMenu(pane, at); });
        ++pane;
    }
    for (CatalogueSwitch* each : status.switches()) {
        QObject::connect(each, &CatalogueSwitch::turned, &products, readProducts);
    }
    QObject::connect(&products.rows(), &platform::ListView::itemActivated, &products,
                     [this] { productCommands.edit(); });
    QObject::connect(&products.rows(), &platform::ListView::contextMenuAsked, &bars,
                     [this](const QPoint& at) { bars.openMenu(CatalogueBars::kProducts, at); });
    QObject::connect(&drag, &ProductDrag::dropped, &products, [this] { draw.execute(); });
}

CataloguePane& CatalogueParts::pane(int index) {
    const std::array<CataloguePane*, CatalogueBars::kPanes> panes{&groups, &manufacturers, &products};
    return *panes[static_cast<size_t>(index)];
}
