#pragma once

#include <QString>
#include <optional>

#include "catalogue/catalogue_pane.h"
#include "catalogue/list_order.h"

class CatalogueSwitch;
class TypeAhead;
struct ListFacts;
namespace platform {
class ListBox;
}

// A list above the products, with its search box: the groups, or the manufacturers. The chosen rows of both
// say which products are shown.
class ListPane : public CataloguePane {
    Q_OBJECT
 public:
    ListPane(const ListFacts& facts, QWidget* window, CatalogueStatus& status);

    const ListFacts& facts() const { return facts_; }
    ListOrder& order() { return order_; }
    QWidget* surface() const { return controls_.surface; }
    platform::ListBox& rows() const { return *controls_.list; }
    TypeAhead& search() const { return *controls_.search; }
    QWidget* list() const override;
    bool hasRows() const override;
    bool hasSelection() const override;
    bool restricts() const;  // the chosen row says which products are shown

    void click();     // what a person's click on a row does
    void remember();  // the products of the selected row are the ones that are shown
    void forget();    // the next click reads the products, whatever it hits

 signals:
    void productsWanted();  // of the rows that are chosen now
    void productsLeft();    // no row is chosen, no products are shown

 protected:
    QString selection() const override;
    QString statement(const platform::SortTag& sort) const override;
    QString fill() override;
    void select(const QString& key) override;

 private:
    struct Controls {
        Controls(const ListFacts& facts, const CatalogueSwitch& allManufacturers, QWidget* window);
        QWidget* surface;
        platform::ListBox* list;
        TypeAhead* search;
    };
    void leave();

    const ListFacts& facts_;
    const CatalogueSwitch& allManufacturers_;
    Controls controls_;
    ListOrder order_;
    // The row whose products were read at the last click; none: the next click reads, whatever it hits.
    std::optional<QString> lastSelection_;
};
