#include "exchange/product_import.h"

#include <unordered_map>

#include "platform/dao/dao.h"
#include "platform/text/order.h"

namespace exchange {
namespace {

constexpr char kFirstUnit[] = "Kom.";  // what the window of a product begins with
constexpr std::int64_t kRowsBetweenNews = 2000;

// Names as the store compares them.
template <typename What>
using ByName = std::unordered_map<std::string, What>;

std::string key(const std::string& text) {
    return alphabet::orderKey(text);
}

// ----- what the shop has

struct KnownProduct {
    std::int32_t id = 0;
    std::int32_t group = 0, manufacturer = 0;
    float price = 0, stock = 0;
    std::string description;
};

class Catalogue {
 public:
    explicit Catalogue(dao::Database& database) {
        readNames(database, "SELECT ID, Grupa FROM Grupe", groups);
        readNames(database, "SELECT ID, Proizvodjac FROM Proizvodjaci", manufacturers);
        dao::Recordset rows = database.OpenRecordset("SELECT * FROM Oprema", dao::dbOpenSnapshot);
        for (; !rows.EOF(); rows.MoveNext()) {
            products[key(rows["Naziv"].asText())].push_back(productIn(rows));
        }
        rows.Close();
        readUnits(database);
    }

    ByName<std::int32_t> groups, manufacturers;
    ByName<std::vector<KnownProduct>> products;  // by name; by hand two may come to have one
    ByName<std::string> units;                   // as they are written
    std::string firstUnit = kFirstUnit;

 private:
    static float singleOf(const dao::Value& value) { return value.isNull() ? 0 : value.asSingle(); }
    static std::int32_t longOf(const dao::Value& value) { return value.isNull() ? 0 : value.asLong(); }

    static KnownProduct productIn(const dao::Recordset& rows) {
        return {rows["ID"].asLong(),    longOf(rows["IDGrupe"]),  longOf(rows["IDProizvodjaca"]),
                singleOf(rows["Cena"]), singleOf(rows["Stanje"]), rows["Opis"].asText()};
    }

    static void readNames(dao::Database& database, const char* source, ByName<std::int32_t>& names) {
        dao::Recordset rows = database.OpenRecordset(source, dao::dbOpenSnapshot);
        for (; !rows.EOF(); rows.MoveNext()) {
            names.try_emplace(key(rows.Fields(1).Value().asText()), rows["ID"].asLong());
        }
        rows.Close();
    }

    void readUnits(dao::Database& database) {
        dao::Recordset rows = database.OpenRecordset("SELECT * FROM JM", dao::dbOpenSnapshot);
        for (bool isFirst = true; !rows.EOF(); rows.MoveNext(), isFirst = false) {
            const std::string name = rows["Naziv"].asText();
            units.try_emplace(key(name), name);
            if (isFirst) {
                firstUnit = name;
            }
        }
        if (const auto usual = units.find(key(kFirstUnit)); usual != units.end()) {
            firstUnit = usual->second;
        }
        rows.Close();
    }
};

// ----- the plan

class Planner {
 public:
    Planner(dao::Database& database, bool withStock) : shop_(database), withStock_(withStock) {}

    void add(const PriceLine& line) {
        const std::string name = key(line.name);
        const auto [earlier, isFirst] = lines_.try_emplace(name, line.line);
        if (!isFirst) {
            fail(line, PriceField::Name,
                 '"' + line.name + "\" stands in line " + std::to_string(earlier->second) + ", too");
            return;
        }
        const auto same = shop_.products.find(name);
        if (same == shop_.products.end()) {
            addNew(line);
        } else {
            addKnown(line, same->second);
        }
    }

    ProductPlan plan;

 private:
    void fail(const PriceLine& line, PriceField field, const std::string& why) {
        plan.bad.push_back({line.line, nameOf(field), why});
    }

    void addKnown(const PriceLine& line, const std::vector<KnownProduct>& same) {
        const auto group = shop_.groups.find(key(line.group));
        const auto manufacturer = shop_.manufacturers.find(key(line.manufacturer));
        const KnownProduct* found = nullptr;
        for (const KnownProduct& product : same) {
            if (group == shop_.groups.end() || manufacturer == shop_.manufacturers.end() ||
                product.group != group->second || product.manufacturer != manufacturer->second) {
                continue;
            }
            if (found != nullptr) {
                fail(line, PriceField::Name,
                     "the shop has two products of that group, manufacturer and name");
                return;
            }
            found = &product;
        }
        if (found == nullptr) {
            fail(line, PriceField::Name,
                 '"' + line.name +
                     "\" is the name of another product, in another group or of another manufacturer");
            return;
        }
        change(line, *found);
    }

    void change(const PriceLine& line, const KnownProduct& product) {
        ProductChange change;
        change.line = &line;
        change.id = product.id;
        change.oldPrice = product.price;
        change.oldStock = product.stock;
        change.oldDescription = product.description;
        change.price = line.price != product.price;
        change.description = !line.description.empty() && line.description != product.description;
        change.stock = stockFrom(line);
        if (change.stock == product.stock) {
            change.stock.reset();
        }
        plan.changes.push_back(std::move(change));
    }

    void addNew(const PriceLine& line) {
        makeSure(shop_.groups, line.group, plan.groups);
        makeSure(shop_.manufacturers, line.manufacturer, plan.manufacturers);
        if (const std::string& unit = line.unit.empty() ? shop_.firstUnit : line.unit;
            shop_.units.try_emplace(key(unit), unit).second) {
            plan.units.push_back(unit);
        }
        ProductChange change;
        change.line = &line;
        change.price = change.description = true;
        change.stock = stockFrom(line);
        plan.changes.push_back(std::move(change));
    }

    std::optional<float> stockFrom(const PriceLine& line) const {
        return withStock_ ? line.stock : std::nullopt;
    }

    static void makeSure(ByName<std::int32_t>& known, const std::string& name,
                         std::vector<std::string>& made) {
        if (known.try_emplace(key(name), 0).second) {
            made.push_back(name);
        }
    }

    Catalogue shop_;
    bool withStock_;
    ByName<int> lines_;
};

// ----- the writing

// Adds the names; from there on they have numbers.
void addNames(dao::Database& database, const char* table, const char* field,
              const std::vector<std::string>& names) {
    if (names.empty()) {
        return;
    }
    dao::Recordset rows = database.OpenRecordset(table);
    for (const std::string& name : names) {
        rows.AddNew();
        rows.Fields(field) = name;
        rows.Update();
    }
    rows.Close();
}

class Writer {
 public:
    Writer(dao::Database& database, const ProductPlan& plan, const ProductWatch& watch)
        : database_(database), plan_(plan), watch_(watch) {}

    ProductCounts write() {
        addNames(database_, "Grupe", "Grupa", plan_.groups);
        addNames(database_, "Proizvodjaci", "Proizvodjac", plan_.manufacturers);
        addNames(database_, "JM", "Naziv", plan_.units);
        changeKnown();
        addNew();
        carryDescriptions();
        return counts_;
    }

 private:
    void tell() {
        if (++done_ % kRowsBetweenNews == 0 && watch_) {
            watch_(done_, static_cast<std::int64_t>(plan_.changes.size()));
        }
    }

    void changeKnown() {
        std::unordered_map<std::int32_t, const ProductChange*> byId;
        for (const ProductChange& change : plan_.changes) {
            if (!change.isNew() && change.changesAnything()) {
                byId.emplace(change.id, &change);
            }
        }
        if (byId.empty()) {
            return;
        }
        dao::Recordset rows = database_.OpenRecordset("SELECT ID, Opis, Stanje, Cena FROM Oprema");
        for (; !rows.EOF(); rows.MoveNext()) {
            if (const auto found = byId.find(rows["ID"].asLong()); found != byId.end()) {
                change(rows, *found->second);
                tell();
            }
        }
        rows.Close();
    }

    void change(dao::Recordset& rows, const ProductChange& change) {
        rows.Edit();
        if (change.price) {
            rows.Fields("Cena") = change.line->price;
        }
        if (change.description) {
            rows.Fields("Opis") = change.line->description;
        }
        if (change.stock.has_value()) {
            rows.Fields("Stanje") = *change.stock;
        }
        rows.Update();
        ++counts_.changed;
    }

    void addNew() {
        const Catalogue shop(database_);  // with the numbers of what was just made
        dao::Recordset rows = database_.OpenRecordset("SELECT * FROM Oprema");
        for (const ProductChange& change : plan_.changes) {
            if (!change.isNew()) {
                continue;
            }
            const PriceLine& line = *change.line;
            rows.AddNew();
            rows.Fields("IDGrupe") = shop.groups.at(key(line.group));
            rows.Fields("IDProizvodjaca") = shop.manufacturers.at(key(line.manufacturer));
            rows.Fields("Naziv") = line.name;
            rows.Fields("Opis") = line.description;
            rows.Fields("Napomena") = line.note;
            rows.Fields("JM") = line.unit.empty() ? shop.firstUnit : shop.units.at(key(line.unit));
            rows.Fields("Stanje") = change.stock.value_or(0);
            rows.Fields("Cena") = line.price;
            rows.Update();
            ++counts_.added;
            tell();
        }
        rows.Close();
    }

    // Requisitions keep name and description as copies, found by the old ones, as after a change by hand.
    void carryDescriptions() {
        ByName<const ProductChange*> changed;
        for (const ProductChange& change : plan_.changes) {
            if (!change.isNew() && change.description) {
                changed.emplace(copyKey(change.line->name, change.oldDescription), &change);
            }
        }
        if (changed.empty()) {
            return;
        }
        dao::Recordset rows = database_.OpenRecordset("SELECT Naziv, Opis FROM InvoiceData");
        for (; !rows.EOF(); rows.MoveNext()) {
            if (rows["Naziv"].isNull() || rows["Opis"].isNull()) {
                continue;
            }
            const auto found = changed.find(copyKey(rows["Naziv"].asText(), rows["Opis"].asText()));
            if (found != changed.end()) {
                rows.Edit();
                rows.Fields("Opis") = found->second->line->description;
                rows.Update();
                ++counts_.requisitioned;
            }
        }
        rows.Close();
    }

    static std::string copyKey(const std::string& name, const std::string& description) {
        const std::string first = key(name);
        return std::to_string(first.size()) + ' ' + first + key(description);
    }

    dao::Database& database_;
    const ProductPlan& plan_;
    const ProductWatch& watch_;
    ProductCounts counts_;
    std::int64_t done_ = 0;
};

}  // namespace

ProductPlan planProducts(dao::Database& database, const std::vector<PriceLine>& lines, bool withStock) {
    Planner planner(database, withStock);
    for (const PriceLine& line : lines) {
        planner.add(line);
    }
    return std::move(planner.plan);
}

ProductCounts writeProducts(dao::Database& database, const ProductPlan& plan, const ProductWatch& watch) {
    return Writer(database, plan, watch).write();
}

}  // namespace exchange
