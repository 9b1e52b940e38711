#pragma once

#include <QString>

class QWidget;
class RequisitionList;
namespace platform {
class Trap;
}

// Gives products of the requisition back to stock, one or all, and tells what could not be given back.
class ProductReturn {
 public:
    ProductReturn(RequisitionList& list, QWidget* window);

    void selected();  // nothing where no product is selected
    void all();       // what could not be given back is listed in a window

 private:
    bool mayDelete(const QString& question) const;
    void tellFailure(const platform::Trap& step, const char* procedure) const;
    void addToStock(const QString& productId, float quantity, platform::Trap& step);

    RequisitionList& list_;
    QWidget* window_;
};
