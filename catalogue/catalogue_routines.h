#pragma once

#include <QString>

#include "catalogue/catalogue_names.h"
#include "platform/system/sort_tag.h"

class QAction;

// What the catalogue does, under the names by which it is told: each is a routine of the part that does it.
// Panes: 0 groups, 1 manufacturers, 2 products.
class CatalogueRoutines : public CatalogueNames {
 public:
    // Rebuilds the record source of a pane and its list. `selectKey`: a product's key, or the text of a
    // list's row; empty: what was selected, else the first row. `reset`: back to the default order.
    void DataUpdate(int index, const QString& selectKey, bool reset);
    void RefreshProduct(bool reset);
    void ToolbarUpdate();
    // A failure is told in a box, and gives: not sorted, empty field, "ASC"; and "0Naziv0".
    platform::SortTag GetSortTagData(const QString& tag);
    QString SetSortTagData(bool sorted, const QString& field, const QString& order);
    void cP_Click(int item);
    void cP_ItemHighlight(int item, bool enabled, bool separator);
    void ShowStatusText(const QString& text, bool sticky);
    // The list that has the focus: SortMode; `force`: also where it is in that order already.
    void SortList(int mode, bool force);
    void AddNewProduct();
    void EditProduct();
    void DeleteProduct();
    void DeleteAllProduct();
    void AddNewGrpMft();  // groups and manufacturers: of the list that has the focus
    void EditGrpMft();
    void DeleteGrpMft();
    void DeleteAllGrpMft();
    void TrebovanjeExecute();  // draws the selected product from stock for the parent's service
    QAction* toolbarButton(const QString& key) const;  // nullptr where there is none
    const QString& dragIcon() const;                   // "drag", "nodrop", or empty

 protected:
    CatalogueRoutines(QWidget* window, WindowCommands& commands);

 private:
    QWidget* window_;
};
