#pragma once

#include <string>
#include <vector>

namespace dao {
class Database;
}

// The stored queries of a shop. Each running copy of the program has three of its own, under its number; one
// that crashed leaves them behind, and every copy that comes later is given a higher number because of them.
namespace data {

struct StoredQuery {
    enum class Whose {
        Shop,     // delivered with the shop, or somebody's own: of no copy
        Running,  // of a copy that runs
        Nobody    // of one that is gone
    };
    std::string name;
    std::string text;
    Whose whose = Whose::Shop;
};

// In order of name. Throws dao::Error.
std::vector<StoredQuery> storedQueries(dao::Database& database);

// Takes away those that are Nobody's, and says which. Their numbers are held meanwhile: no copy that starts
// just then takes one of them and loses its queries. Throws dao::Error.
std::vector<std::string> sweepLeftQueries(dao::Database& database);

}  // namespace data
