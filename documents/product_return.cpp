#include "documents/product_return.h"

#include "catalogue/stock_draw.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "documents/frmInvoiceEx_error.h"
#include "documents/frmTrebovanjeError.h"
#include "documents/requisition_list.h"
#include "documents/requisition_return.h"
#include "platform/system/trap.h"

using platform::BoxIcon;
using platform::Trap;
using requisition::Returned;

namespace {

constexpr qint32 kNotFound = 1;  // whichever table lacks it

// The products' table; none: `step` tells why.
dao::Recordset openStock(const RequisitionList& list, Trap& step) {
    dao::Recordset stock;
    step([&] { stock = list.data().Database().OpenRecordset("Oprema", dao::dbOpenDynaset); });
    return stock;
}

// One row of the list. True where it has to be listed among those that could not be given back.
bool giveBack(const RequisitionList& list, const platform::ListItem& item, dao::Recordset& stock,
              frmTrebovanjeError& problems, Trap& step) {
    const RequisitionCells row(item);
    if (row.isTotal()) {
        return false;
    }
    const Returned result = requisition::giveBack(list.data(), row, stock, step);
    if (result != Returned::NotDrawn && result != Returned::NoProduct) {
        return false;
    }
    problems.AddListItem(item.Key, row.manufacturer(), row.group(), row.name(), row.description(),
                         numberOf(row.price()), numberOf(row.quantity()), kNotFound);
    return true;
}

}  // namespace

ProductReturn::ProductReturn(RequisitionList& list, QWidget* window) : list_(list), window_(window) {}

bool ProductReturn::mayDelete(const QString& question) const {
    return !AskBeforeDelete ||
           box(window_, question + QStringLiteral("\n\nNastavljate?"), BoxIcon::Exclamation,
               platform::BoxButtons::YesNo) != platform::BoxAnswer::No;
}

void ProductReturn::tellFailure(const Trap& step, const char* procedure) const {
    if (step.failed()) {
        box(window_, step.line() + requisition::occuredIn(procedure), BoxIcon::Exclamation);
    }
}

void ProductReturn::selected() {
    const platform::ListItem* selected = list_.view().selectedItem();
    if (!selected || !list_.hasProducts() || RequisitionCells(*selected).isTotal()) {
        return;
    }
    const QString id = RequisitionCells(*selected).productId();
    const float quantity = numberOf(RequisitionCells(*selected).quantity());
    if (!mayDelete(
            QStringLiteral("Spremate se da izbrisete trebovanu stavku iz liste trebovanja. Njenim "
                           "brisanjem povecacete stanje ovog proizvoda za trebovanu kolicinu, ukoliko on "
                           "prethodno nije bio izbrisan."))) {
        return;
    }
    Trap step;
    bool found = false;
    const bool deleted = requisition::takeOff(list_.data(), id, found, step);
    if (!found) {
        box(window_,
            QStringLiteral(
                "Stavka nije nadjena u tabeli trebovanja. Mozda ju je neko u medjuvremenu izbrisao."),
            BoxIcon::Exclamation);
    }
    list_.refresh(false);
    if (deleted) {
        addToStock(id, quantity, step);
    }
    tellFailure(step, "TrebovanjeDelete");
}

void ProductReturn::addToStock(const QString& productId, float quantity, Trap& step) {
    bool hasProduct = true;
    dao::Recordset stock = openStock(list_, step);
    if (stock) {
        step([&] { hasProduct = stock_draw::giveBack(stock, productId.toInt(), quantity); });
    }
    stock.Close();
    if (!hasProduct) {
        box(window_,
            QStringLiteral(
                "Proizvod koji ste izbrisali iz liste trebovanja vise ne postoji u listi proizvoda. "
                "Verovatno je izbrisan. Azuriranje nije bilo moguce."),
            BoxIcon::Information);
    }
}

void ProductReturn::all() {
    if (!list_.hasProducts()) {
        return;
    }
    if (!mayDelete(
            QStringLiteral("Spremate se da izbrisete sve trebovane stavke iz liste trebovanja. Njihovim "
                           "brisanjem povecacete stanje ovih proizvoda za trebovanu kolicinu, ukoliko oni "
                           "prethodno nisu bili izbrisani."))) {
        return;
    }
    frmTrebovanjeError problems(window_);
    int problemCount = 0;
    Trap step;
    dao::Recordset stock = openStock(list_, step);
    // Without the products' table nothing is taken off the requisition.
    for (int i = 1; stock && i <= list_.view().count(); ++i) {
        problemCount += giveBack(list_, list_.view().item(i), stock, problems, step) ? 1 : 0;
    }
    list_.refresh(false);
    if (problemCount > 0) {
        problems.Display();
    }
    stock.Close();
    problems.Unload();
    tellFailure(step, "TrebovanjeDeleteAll");
}
