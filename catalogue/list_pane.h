#pragma once

#include <QString>
#include <optional>

#include "catalogue/catalogue_pane.h"
#include "catalogue/sort_state.h"

class CatalogueSwitch;
class TypeAhead;
namespace platform {
class ListBox;
}

// A list above the products, with its search box: the groups, or the manufacturers. The chosen rows of both
// say which products are shown.
class ListPane : public CataloguePane {
    Q_OBJECT
 public:
    // What the two panes do not share.
    struct Facts {
        int index;  // of the pane's controls
        const char* table;
        const char* field;
        const char* title;
        const char* accessible;
        const char* search;
        // Its name stands in the rows of the products; and its choice restricts nothing while those of all
        // manufacturers are shown.
        bool isShownWithProducts;
        Words words;
    };
    static const Facts& groups();
    static const Facts& manufacturers();

    ListPane(const Facts& facts, QWidget* window, CatalogueStatus& status);

    const Facts& facts() const { return facts_; }
    QWidget* surface() const { return surface_; }
    platform::ListBox& rows() const { return *list_; }
    TypeAhead& search() const { return *search_; }
    QWidget* list() const override;
    bool hasRows() const override;
    bool hasSelection() const override;
    bool restricts() const;  // the chosen row says which products are shown

    void click();                            // what a person's click on a row does
    void remember();                         // the products of the selected row are the ones that are shown
    void forget();                           // the next click reads the products, whatever it hits
    void sortBy(SortMode mode, bool force);  // `force`: also where the list is in that order already
    void tellOrder();                        // in the list's tip, as the window opens

 signals:
    void productsWanted();  // of the rows that are chosen now
    void productsLeft();    // no row is chosen, no products are shown

 protected:
    QString selection() const override;
    QString statement(const platform::SortTag& sort) const override;
    QString fill() override;
    void select(const QString& key) override;

 private:
    void build(QWidget* window);
    void leave();

    const Facts& facts_;
    const CatalogueSwitch& allManufacturers_;
    QWidget* surface_ = nullptr;
    platform::ListBox* list_ = nullptr;
    TypeAhead* search_ = nullptr;
    // The row whose products were read at the last click; none: the next click reads, whatever it hits.
    std::optional<QString> lastSelection_;
};
