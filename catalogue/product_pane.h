#pragma once

#include <QString>
#include <optional>

#include "catalogue/catalogue_pane.h"
#include "catalogue/product_choice.h"
#include "catalogue/product_columns.h"
#include "catalogue/product_detail.h"

class ListPane;
namespace platform {
class ListView;
}

// The products of the chosen group and manufacturer, and the note of the selected one under them.
class ProductPane : public CataloguePane {
    Q_OBJECT
 public:
    ProductPane(const ListPane& groups, const ListPane& manufacturers, QWidget* window,
                CatalogueStatus& status);

    QWidget* surface() const { return surface_; }
    platform::ListView& rows() const { return *list_; }
    const ProductDetail& detail() const { return detail_; }
    QWidget* list() const override;
    bool hasRows() const override;
    bool hasSelection() const override;
    bool hasGroupAndManufacturer() const;        // a row is chosen in both lists
    std::optional<ProductRow> selected() const;  // nothing: no product is selected

    void click();              // what a click on the selected product does
    void clear();              // and the detail box
    void take(int position);   // a row that has left the table leaves the list
    void refresh(bool reset);  // `reset`: also back to the order of the table

 protected:
    QString selection() const override;
    QString statement(const platform::SortTag& sort) const override;
    QString fill() override;
    void select(const QString& key) override;
    void showSort(const platform::SortTag& sort) override;
    void filled() override { click(); }

 private:
    void clickColumn(int column);

    ProductChoice choice_;
    QWidget* surface_;
    platform::ListView* list_;
    ProductDetail detail_;
};
