#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "exchange/price_list.h"

namespace dao {
class Database;
}

namespace exchange {

// What a line of a supplier's list does to the shop's products.
struct ProductChange {
    const PriceLine* line = nullptr;
    std::int32_t id = 0;  // of a product that the shop has; 0: a new one
    float oldPrice = 0, oldStock = 0;
    std::string oldDescription;
    bool price = false, description = false;  // what changes; all of a new one is new
    std::optional<float> stock;               // what it becomes; nothing: it stays, and a new one has none
    bool isNew() const { return id == 0; }
    bool changesAnything() const { return isNew() || price || description || stock.has_value(); }
};

// What a whole list does; nothing is written yet. The lines outlive it.
struct ProductPlan {
    std::vector<ProductChange> changes;  // in the order of the lines, those that change nothing as well
    std::vector<BadLine> bad;            // a name that another product has, and the like
    std::vector<std::string> groups, manufacturers, units;  // that are to be made
};

// A product is known by its group, manufacturer and name. A known one takes the price, the description where
// the list has one, and, `withStock`, the stock. A new one takes all of it, but without `withStock` none is
// in stock: what the supplier has is not in our store. Texts are compared as the store compares them.
ProductPlan planProducts(dao::Database& database, const std::vector<PriceLine>& lines, bool withStock);

struct ProductCounts {
    std::int64_t added = 0;
    std::int64_t changed = 0;
    std::int64_t requisitioned =
        0;  // rows of requisitions that took over a description, as after a change by hand
};
using ProductWatch = std::function<void(std::int64_t done, std::int64_t all)>;

// All of the plan. Within a transaction of the caller's. Throws dao::Error.
ProductCounts writeProducts(dao::Database& database, const ProductPlan& plan, const ProductWatch& watch);

}  // namespace exchange
