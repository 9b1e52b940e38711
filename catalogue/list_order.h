#pragma once

#include "catalogue/sort_state.h"

class CataloguePane;
namespace platform {
class ListBox;
}

// How the rows of a list above the products are ordered: by their names, up or down, or as the table has
// them. The list's tip tells it.
class ListOrder {
 public:
    // `field`: by which it is sorted. All of them outlive this.
    ListOrder(CataloguePane& pane, platform::ListBox& list, const char* field)
        : pane_(pane), list_(list), field_(field) {}

    void sortBy(SortMode mode, bool force);  // `force`: also where the list is in that order already
    void tell() const;                       // as the window opens

 private:
    // False: it is in that order already, and the person has been told so.
    bool turn(platform::SortTag& sort, bool isUp, bool force);

    CataloguePane& pane_;
    platform::ListBox& list_;
    const char* field_;
};
