#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "data/schema.h"

namespace data {

struct CatalogueProduct {
    int group = 0;         // index into Catalogue::groups
    int manufacturer = 0;  // index into Catalogue::manufacturers
    std::string name, description, note, unit;
    float stock = 0;
    float price = 0;  // euro
};

// What the delivered database offers before the shop has entered anything of its own. Texts are UTF-8.
struct Catalogue {
    std::vector<std::string> units;
    std::vector<std::string> serviceTypes;  // the first is the catch-all kind
    std::vector<std::string> manufacturers;
    std::vector<std::string> groups;
    std::vector<CatalogueProduct> products;
};

// One name a line, at most `limit` characters; comments and empty lines are passed over. Throws TextError for
// a name twice, one too long, and for a text without any name.
std::vector<std::string> readNames(std::istream& text, const std::string& file, int limit);

// Reads the form that data/catalogue.txt tells at its head. `units` are the units that products may name.
// Throws TextError, also for a group or manufacturer without a product, a product's name twice, a price that
// is no positive number and a stock that is negative.
Catalogue readCatalogue(std::istream& text, const std::string& file, std::vector<std::string> units,
                        std::vector<std::string> serviceTypes);

// Writes all of it into a database that has the tables and nothing in them. One transaction; throws
// dao::Error.
void storeCatalogue(dao::Database& database, const Catalogue& catalogue);

}  // namespace data
