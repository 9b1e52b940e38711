#include "data/catalogue.h"

#include <algorithm>
#include <charconv>
#include <istream>
#include <optional>
#include <set>

#include "platform/dao/dbengine.h"
#include "platform/dao/recordset.h"
#include "platform/text/utf8.h"

namespace data {
namespace {

constexpr std::size_t kTextLimit = 255;  // characters that the tables hold of a product's texts

std::string trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(first, text.find_last_not_of(" \t\r") - first + 1));
}

std::vector<std::string> splitCells(const std::string& line) {
    std::vector<std::string> cells;
    std::size_t start = 0;
    while (true) {
        const auto bar = line.find('|', start);
        cells.push_back(trimmed(std::string_view(line).substr(start, bar - start)));
        if (bar == std::string::npos) {
            return cells;
        }
        start = bar + 1;
    }
}

std::optional<float> number(const std::string& text) {
    float value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

int indexOf(const std::vector<std::string>& names, const std::string& name) {
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

class CatalogueReader {
 public:
    CatalogueReader(std::istream& text, std::string file, Catalogue start)
        : text_(text), file_(std::move(file)), catalogue_(std::move(start)) {}

    Catalogue read() {
        for (std::string raw; std::getline(text_, raw);) {
            ++line_;
            const std::string line = trimmed(raw);
            if (line.empty() || line[0] == '#') {
                continue;
            }
            if (raw[0] == ' ' || raw[0] == '\t') {
                readProduct(splitCells(line));
            } else if (line.rfind("group ", 0) == 0) {
                closeGroup();
                addName(catalogue_.groups, trimmed(line.substr(6)));
            } else if (line.rfind("manufacturer ", 0) == 0) {
                addName(catalogue_.manufacturers, trimmed(line.substr(13)));
            } else {
                fail("expected \"group NAME\", \"manufacturer NAME\" or a product's indented line");
            }
        }
        closeGroup();
        closeManufacturers();
        return std::move(catalogue_);
    }

 private:
    [[noreturn]] void fail(const std::string& message) const { throw TextError(file_, line_, message); }

    void addName(std::vector<std::string>& names, const std::string& name) {
        if (indexOf(names, name) >= 0) {
            fail(name + " stands here twice");
        }
        names.push_back(name);
    }

    void closeGroup() const {
        const auto last = static_cast<int>(catalogue_.groups.size()) - 1;
        if (last >= 0 && (catalogue_.products.empty() || catalogue_.products.back().group != last)) {
            fail("group " + catalogue_.groups.back() + " has no product");
        }
    }

    void closeManufacturers() const {
        for (std::size_t i = 0; i < catalogue_.manufacturers.size(); ++i) {
            if (std::none_of(
                    catalogue_.products.begin(), catalogue_.products.end(),
                    [&](const CatalogueProduct& p) { return p.manufacturer == static_cast<int>(i); })) {
                fail("manufacturer " + catalogue_.manufacturers[i] + " has no product");
            }
        }
    }

    void readProduct(const std::vector<std::string>& cells) {
        if (catalogue_.groups.empty()) {
            fail("a product before the first group");
        }
        if (cells.size() != 6 && cells.size() != 7) {
            fail("expected MANUFACTURER | NAME | DESCRIPTION | UNIT | STOCK | PRICE | NOTE");
        }
        CatalogueProduct product;
        product.group = static_cast<int>(catalogue_.groups.size()) - 1;
        product.manufacturer = indexOf(catalogue_.manufacturers, cells[0]);
        product.name = cells[1];
        product.description = cells[2];
        product.unit = cells[3];
        product.note = cells.size() == 7 ? cells[6] : std::string();
        const auto stock = number(cells[4]);
        const auto price = number(cells[5]);
        if (product.manufacturer < 0) {
            fail("no manufacturer " + cells[0] + " stands at the head");
        }
        if (product.name.empty() || !productNames_.insert(product.name).second) {
            fail("the product's name is missing or stands here twice");
        }
        if (indexOf(catalogue_.units, product.unit) < 0) {
            fail("there is no unit " + product.unit);
        }
        if (!stock || *stock < 0 || !price || *price <= 0) {
            fail("the stock or the price is no good number");
        }
        for (const std::string* text : {&product.name, &product.description, &product.note}) {
            if (alphabet::lettersIn(*text) > kTextLimit) {
                fail("a text is longer than 255 characters");
            }
        }
        product.stock = *stock;
        product.price = *price;
        catalogue_.products.push_back(std::move(product));
    }

    std::istream& text_;
    std::string file_;
    Catalogue catalogue_;
    int line_ = 0;
    std::set<std::string> productNames_;
};

// The numbers that the engine gave, in the order of the names; none for a table without a key.
std::vector<int> storeNames(dao::Database& database, const std::string& table, const std::string& field,
                            const std::string& key, const std::vector<std::string>& names) {
    std::vector<int> numbers;
    dao::Recordset rows = database.OpenRecordset(table);
    for (const std::string& name : names) {
        rows.AddNew();
        rows.Fields(field) = name;
        if (!key.empty()) {
            numbers.push_back(rows.Fields(key).Value().asLong());
        }
        rows.Update();
    }
    rows.Close();
    return numbers;
}

void storeAll(dao::Database& database, const Catalogue& catalogue) {
    storeNames(database, "JM", "Naziv", "AID", catalogue.units);
    storeNames(database, "ServiceTypes", "Service", "", catalogue.serviceTypes);
    const auto groups = storeNames(database, "Grupe", "Grupa", "ID", catalogue.groups);
    const auto manufacturers =
        storeNames(database, "Proizvodjaci", "Proizvodjac", "ID", catalogue.manufacturers);
    dao::Recordset rows = database.OpenRecordset("Oprema");
    for (const CatalogueProduct& product : catalogue.products) {
        rows.AddNew();
        rows.Fields("IDGrupe") = groups[static_cast<std::size_t>(product.group)];
        rows.Fields("IDProizvodjaca") = manufacturers[static_cast<std::size_t>(product.manufacturer)];
        rows.Fields("Naziv") = product.name;
        rows.Fields("Opis") = product.description;
        rows.Fields("Napomena") = product.note;
        rows.Fields("JM") = product.unit;
        rows.Fields("Stanje") = product.stock;
        rows.Fields("Cena") = product.price;
        rows.Update();
    }
    rows.Close();
}

}  // namespace

std::vector<std::string> readNames(std::istream& text, const std::string& file, int limit) {
    std::vector<std::string> names;
    int line = 0;
    for (std::string raw; std::getline(text, raw);) {
        ++line;
        const std::string name = trimmed(raw);
        if (name.empty() || name[0] == '#') {
            continue;
        }
        if (indexOf(names, name) >= 0) {
            throw TextError(file, line, name + " stands here twice");
        }
        if (alphabet::lettersIn(name) > static_cast<std::size_t>(limit)) {
            throw TextError(file, line, "a name is longer than " + std::to_string(limit) + " characters");
        }
        names.push_back(name);
    }
    if (names.empty()) {
        throw TextError(file, line, "there is no name in this file");
    }
    return names;
}

Catalogue readCatalogue(std::istream& text, const std::string& file, std::vector<std::string> units,
                        std::vector<std::string> serviceTypes) {
    Catalogue start;
    start.units = std::move(units);
    start.serviceTypes = std::move(serviceTypes);
    return CatalogueReader(text, file, std::move(start)).read();
}

void storeCatalogue(dao::Database& database, const Catalogue& catalogue) {
    dao::DBEngine::BeginTrans();
    try {
        storeAll(database, catalogue);
        dao::DBEngine::CommitTrans();
    } catch (...) {
        dao::DBEngine::Rollback();
        throw;
    }
}

}  // namespace data
