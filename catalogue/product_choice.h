#pragma once

#include <QString>

class CatalogueStatus;
class ListPane;
namespace platform {
struct SortTag;
}

// Which products are shown: those of the chosen group and manufacturer, as far as the switches of the status
// bar restrict them.
class ProductChoice {
 public:
    ProductChoice(const ListPane& groups, const ListPane& manufacturers, const CatalogueStatus& status);

    bool hasGroupAndManufacturer() const;  // a row is chosen in both lists
    QString statement(const platform::SortTag& sort) const;

 private:
    const ListPane& groups_;
    const ListPane& manufacturers_;
    const CatalogueStatus& status_;
};
