#pragma once

struct CatalogueParts;
namespace platform {
class Trap;
}

// What the catalogue remembers from one day to the next, besides its place and the bars between its panes:
// which products are shown, how each pane is sorted, and the columns of the products.
class CatalogueChoices {
 public:
    explicit CatalogueChoices(CatalogueParts& parts) : parts_(parts) {}
    void loadSwitches();
    void loadOrders();
    void loadColumns(platform::Trap& step);
    void save(platform::Trap& step) const;

 private:
    CatalogueParts& parts_;
};
