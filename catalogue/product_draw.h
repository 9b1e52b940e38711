#pragma once

class CatalogueParent;
class ListPane;
class ProductPane;
class QWidget;
class RequisitionCopies;
namespace platform {
class Trap;
}

// Draws the selected product from stock for the service whose requisition opened the catalogue: asks how
// many, looks what the file holds by now, and writes stock and requisition.
class ProductDraw {
 public:
    ProductDraw(ProductPane& products, const ListPane& groups, const RequisitionCopies& requisitions,
                QWidget* window);

    void execute();  // nothing without a selected product or a requisition

 private:
    struct Draw;  // one product on its way from the stock to the requisition
    enum class StockCheck { Goes, AskAgain, Stop, Failed };

    bool askQuantity(Draw& draw);
    StockCheck checkStock(Draw& draw, platform::Trap& step);
    bool draw(const Draw& draw, platform::Trap& step);
    void tellFailed(const platform::Trap& step);
    bool addToRow(const Draw& draw);  // false: the row is not there any more
    void addNewRow(const Draw& draw);
    CatalogueParent* parent() const;

    ProductPane& products_;
    const ListPane& groups_;
    const RequisitionCopies& requisitions_;
    QWidget* window_;
};
