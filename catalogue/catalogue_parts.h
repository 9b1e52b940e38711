#pragma once

#include "catalogue/catalogue_bars.h"
#include "catalogue/catalogue_menus.h"
#include "catalogue/catalogue_status.h"
#include "catalogue/list_commands.h"
#include "catalogue/list_pane.h"
#include "catalogue/product_commands.h"
#include "catalogue/product_drag.h"
#include "catalogue/product_draw.h"
#include "catalogue/product_pane.h"
#include "catalogue/requisition_copies.h"

// What the catalogue's window is made of, from the ground up: each part knows those above it in this list,
// and what it has to say to the others goes out as a signal.
struct CatalogueParts {
    CatalogueParts(QWidget* window, WindowCommands& commands);
    CataloguePane& pane(int index);  // 0 groups, 1 manufacturers, 2 products

    CatalogueStatus status;
    ListPane groups, manufacturers;
    ProductPane products;
    RequisitionCopies copies;
    ListCommands groupCommands, manufacturerCommands;
    ProductCommands productCommands;
    ProductDraw draw;
    ProductDrag drag;
    CatalogueMenus menus;
    CatalogueBars bars;
};
