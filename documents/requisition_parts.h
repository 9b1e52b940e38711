#pragma once

#include "documents/product_return.h"
#include "documents/requisition_bar.h"
#include "documents/requisition_catalogue.h"
#include "documents/requisition_list.h"
#include "documents/requisition_print.h"
#include "documents/requisition_status.h"

class QDialog;

// What the requisition's window is made of. Each part knows those above it in this list that it works with,
// and what it has to say to the others goes out as a signal.
struct RequisitionParts {
    explicit RequisitionParts(QDialog& window);

    RequisitionBar bar;
    RequisitionStatus status;
    RequisitionList list;
    ProductReturn giveBack;
    RequisitionPrint print;
    RequisitionCatalogue catalogue;

 private:
    void connectParts();
    void showCommands();
};
