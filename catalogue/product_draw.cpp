#include "catalogue/product_draw.h"

#include <optional>

#include "catalogue/catalogue_parent.h"
#include "catalogue/frmInputBox.h"
#include "catalogue/list_pane.h"
#include "catalogue/product_columns.h"
#include "catalogue/product_pane.h"
#include "catalogue/requisition_copies.h"
#include "catalogue/row_search.h"
#include "catalogue/stock_draw.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/controls/list_view.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

struct ProductDraw::Draw {
    ProductRow product;  // as the list shows it
    float listed = 0;    // pieces, as the list said when the person chose
    float quantity = 0;
    QString serialNumber;
    bool append = false;

    stock_draw::Addition addition() const { return {quantity, serialNumber, append, product.unit()}; }
};

namespace {

// Euro; none where the list shows no number. The list shows dinars where the shop wants them; the requisition
// never keeps them.
std::optional<float> priceInEuro(const ProductRow& product) {
    const std::optional<double> shown = product.price();
    if (!shown || (CeneDinarske && KursKupovni == 0)) {
        return std::nullopt;
    }
    return static_cast<float>(CeneDinarske ? *shown / static_cast<double>(KursKupovni) : *shown);
}

// Many a product's own name is a type number that says little without its maker.
QString nameOf(const ProductRow& product) {
    return (product.text(ProductColumn::Manufacturer) + QLatin1Char(' ') + product.text(ProductColumn::Name))
        .trimmed();
}

}  // namespace

ProductDraw::ProductDraw(ProductPane& products, const ListPane& groups, const RequisitionCopies& requisitions,
                         QWidget* window)
    : products_(products), groups_(groups), requisitions_(requisitions), window_(window) {}

CatalogueParent* ProductDraw::parent() const {
    return requisitions_.parentForm;
}

void ProductDraw::execute() {
    const std::optional<ProductRow> selected = products_.selected();
    if (!selected || !parent()) {
        return;
    }
    Draw wanted;
    wanted.product = *selected;
    wanted.listed = selected->stock();
    if (wanted.listed == 0) {
        box(window_, QStringLiteral("Proizvoda nema na stanju. Ne mozete da ga trebujete."),
            BoxIcon::Information);
        return;
    }
    Trap step;
    StockCheck check = StockCheck::AskAgain;
    while (check == StockCheck::AskAgain) {
        if (!askQuantity(wanted)) {
            return;
        }
        check = checkStock(wanted, step);
    }
    if (check == StockCheck::Stop) {
        return;
    }
    if (check == StockCheck::Failed) {
        tellFailed(step);
    } else if (!draw(wanted, step)) {
        return;
    }
    parent()->TrebovanjeRefresh(false);
    products_.update(wanted.product.key(), false);
}

// The stock goes down first: goods that are counted twice are worse than a line that is missing. False: the
// product is drawn already, and that shall do.
bool ProductDraw::draw(const Draw& draw, Trap& step) {
    const bool rowExists = parent()->requisitionList().hasItem(draw.product.key());
    if (rowExists && box(window_,
                         QStringLiteral("Proizvod je vec trebovan. Zelite li da nova kolicina bude dodata na "
                                        "postojecu?"),
                         BoxIcon::Question, BoxButtons::YesNo) != BoxAnswer::Yes) {
        return false;
    }
    step([&] { stock_draw::takeFromStock(products_.data().Recordset(), draw.quantity); });
    if (step.failed()) {
        tellFailed(step);
    } else if (!(rowExists && addToRow(draw))) {
        addNewRow(draw);
    }
    return true;
}

void ProductDraw::tellFailed(const Trap& step) {
    box(window_,
        QStringLiteral("Doslo je do neocekivane greske prilikom upisivanja trebovane kolicine proizvoda u "
                       "bazu podataka.\n\nGreska je data kao:\n%1 (frmKonfiguratorEx->TrebovanjeExecute())")
            .arg(step.line()),
        BoxIcon::Exclamation);
}

bool ProductDraw::askQuantity(Draw& draw) {
    frmInputBox input(window_);
    input.ProductName = nameOf(draw.product);
    input.Display();
    if (input.Cancelled()) {
        return false;
    }
    draw.quantity = input.Kolicina;
    draw.serialNumber = input.SeriskiBroj;
    draw.append = input.AppendSerialNumber();
    input.Unload();
    return true;
}

// The quantity was typed against the number in the list; here it meets what the file holds by now. Where the
// search for the product failed, nobody knows on which product's record the set stands.
ProductDraw::StockCheck ProductDraw::checkStock(Draw& draw, Trap& step) {
    using row_search::Outcome;
    dao::Recordset rows = products_.data().Recordset();
    refreshCache();
    const Outcome outcome = row_search::find(rows, QStringLiteral("ID=%1").arg(draw.product.id()), step);
    if (outcome == Outcome::Failed) {
        return StockCheck::Failed;
    }
    if (outcome == Outcome::Nothing) {
        box(window_,
            QStringLiteral(
                "Proizvod koji ste pokusali da trebujete nije pronadjen u bazi podataka. Verovatno "
                "ga je neko od korisnika obrisao u medjuvremenu."),
            BoxIcon::Exclamation);
        products_.update(QString(), false);
        return StockCheck::Stop;
    }
    float real = draw.listed;
    step([&] { real = rows["Stanje"].asSingle(); });
    if (real != draw.listed) {
        box(window_,
            QStringLiteral("Doslo je do promene stanja proizvoda koji trebujete.\nRaspoloziva kolicina vise "
                           "nije: %1 vec iznosi: %2.\n\nLista proizvoda ce biti automatski azurirana.")
                .arg(platform::textOfSingle(draw.listed), platform::textOfSingle(real)),
            BoxIcon::Exclamation);
        const QString key = draw.product.key();
        products_.update(key, false);
        if (products_.rows().hasItem(key)) {
            draw.product = ProductRow(products_.rows().item(key));
        }
    }
    if (draw.quantity <= real) {
        return StockCheck::Goes;
    }
    const BoxAnswer answer =
        box(window_,
            QStringLiteral("Trebujete vise nego sto proizvoda ima ma stanju. Trenutno stanje proizvoda je: "
                           "%1.\n\nHocete li da trebujete upravo ovu kolicinu?")
                .arg(platform::textOfSingle(real)),
            BoxIcon::Exclamation, BoxButtons::YesNoCancel);
    if (answer == BoxAnswer::No) {
        return StockCheck::AskAgain;
    }
    draw.quantity = real;
    return answer == BoxAnswer::Yes ? StockCheck::Goes : StockCheck::Stop;
}

bool ProductDraw::addToRow(const Draw& draw) {
    dao::Recordset rows = parent()->requisitionData().Recordset();
    Trap step;  // what fails here is told by the list: it shows what is in the file
    refreshCache();
    if (row_search::find(rows, QStringLiteral("OpremaID=%1").arg(draw.product.id()), step) !=
        row_search::Outcome::Found) {
        box(window_,
            QStringLiteral(
                "Neko je u medjuvremnu obrisao stavku iz liste trebovanja, ona ce ponovo biti dodata "
                "u listu."),
            BoxIcon::Information);
        return false;
    }
    stock_draw::addToRow(rows, draw.addition());
    return true;
}

void ProductDraw::addNewRow(const Draw& draw) {
    stock_draw::addRow(parent()->requisitionData().Recordset(),
                       {.serviceId = parent()->ServiceID(),
                        .productId = draw.product.id(),
                        .manufacturer = draw.product.text(ProductColumn::Manufacturer),
                        .group = groups_.rows().selectedText(),
                        .name = draw.product.text(ProductColumn::Name),
                        .description = draw.product.text(ProductColumn::Description),
                        .drawn = draw.addition(),
                        .price = priceInEuro(draw.product)});
}
