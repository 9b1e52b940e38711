#include "exchange/mending.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "data/schema.h"
#include "exchange/new_shop.h"
#include "exchange/old_format.h"
#include "platform/dao/error.h"
#include "platform/dao/names.h"
#include "platform/text/order.h"
#include "platform/text/utf8.h"

namespace exchange {
namespace {

using dao::FieldDef;
using dao::TableDef;
using dao::Value;

constexpr double kEmptyDate = 1.0;
// The first day of the year 100 and the last one of the year 9999: no date lies outside.
constexpr double kFirstDay = -657434.0;
constexpr double kBehindLastDay = 2958466.0;

bool isText(const FieldDef& field) {
    return field.Type == dao::dbText || field.Type == dao::dbMemo;
}

// What a field holds that the old file has not: what the program writes where nothing is typed.
Value defaultOf(const FieldDef& field) {
    switch (field.Type) {
        case dao::dbBoolean:
            return Value(false);
        case dao::dbLong:
            return Value(std::int32_t{0});
        case dao::dbSingle:
            return Value(0.0F);
        case dao::dbCurrency:
            return Value(dao::Currency());
        case dao::dbDate:
            return Value(dao::Date{kEmptyDate});
        case dao::dbText:
        case dao::dbMemo:
            break;
    }
    return Value("");
}

bool isPossible(const Value& value) {
    if (const auto* single = std::get_if<float>(&value.store())) {
        return std::isfinite(*single);
    }
    if (const auto* real = std::get_if<double>(&value.store())) {
        return std::isfinite(*real);
    }
    if (const auto* date = std::get_if<dao::Date>(&value.store())) {
        return date->days >= kFirstDay && date->days < kBehindLastDay;
    }
    return true;
}

// A record that is made for rows that belong to none.
struct Adopter {
    const char* table;
    const char* name;  // told in the remarks
    std::vector<std::pair<const char*, Value>> fields;
    const char* numbered;  // the field that gets the number where there is one, behind its text
};

const std::vector<Adopter>& adopters() {
    static const std::vector<Adopter> all{
        {"Customers",
         "Preuzeto bez klijenta",
         {{"Surname", "Preuzeto bez klijenta"},
          {"GivenName", "-"},
          {"Street", "-"},
          {"City", "-"},
          {"ZIP", "-"},
          {"Country", "-"}},
         "Surname"},
        {"Computers", "Preuzeto bez kompjutera", {{"MachineName", "Preuzeto bez kompjutera"}}, "MachineName"},
        {"Services",
         "Preuzeto bez usluge",
         {{"ServiceTypes", "1"}, {"Comments", "Preuzeto bez usluge"}},
         "Comments"},
        {"Grupe", "Preuzeto bez grupe", {{"Grupa", "Preuzeto bez grupe"}}, "Grupa"},
        {"Proizvodjaci",
         "Preuzeto bez proizvodjaca",
         {{"Proizvodjac", "Preuzeto bez proizvodjaca"}},
         "Proizvodjac"},
    };
    return all;
}

// Names that the program lets nobody give twice.
constexpr std::pair<const char*, const char*> kUniqueNames[]{
    {"Grupe", "Grupa"}, {"Proizvodjaci", "Proizvodjac"}, {"JM", "Naziv"}};

const FieldDef* counterOf(const TableDef& table) {
    for (const FieldDef& field : table.Fields()) {
        if (field.counter) {
            return &field;
        }
    }
    return nullptr;
}

void remark(MendedShop& shop, const std::string& table, const std::string& number, const std::string& what) {
    shop.remarks.push_back(table + (number.empty() ? "" : " ") + number + ": " + what);
}

// A table on its way from the old shop, and the numbers that its rows have.
struct Work {
    MendedTable table;
    int key = -1;  // which field the table's numbers stand in
    std::unordered_set<std::int32_t> numbers;
    std::unordered_set<std::int32_t> adopters;  // those of them that were made here
    std::int32_t highest = 0;
    std::int32_t forZero = 0;     // the number that the row with the number 0 got
    std::int32_t collective = 0;  // the record for rows that name none
};

using Works = std::vector<Work>;

// nullptr: no shop has such.
Work* workOf(Works& works, std::string_view table) {
    for (Work& one : works) {
        if (dao::sameName(one.table.definition.Name(), table)) {
            return &one;
        }
    }
    return nullptr;
}

const Value& keyOf(const Work& work, std::size_t row) {
    return work.table.rows[row][static_cast<std::size_t>(work.key)];
}

std::string nameOf(const Work& work, std::size_t row) {
    return work.key >= 0 ? keyOf(work, row).asText()
                         : "(row " + std::to_string(work.table.places[row] + 1) + ")";
}

std::string wordsOf(const MendedTable& table, std::size_t row) {
    std::string words;
    for (std::size_t i = 0; i < table.rows[row].size(); ++i) {
        words += (i == 0 ? "" : ", ") + table.definition.Fields()[i].Name + " " +
                 (table.rows[row][i].isNull() ? "-" : table.rows[row][i].asText());
    }
    return words;
}

// The rows of one table, cell by cell.
class RowTaking {
 public:
    RowTaking(const OldTable& from, Work& work, MendedShop& shop) : from_(from), work_(work), shop_(shop) {
        findColumns();
    }

    void take() {
        MendedTable& table = work_.table;
        table.found = static_cast<std::int64_t>(from_.rows.rows());
        if (from_.toldRows != table.found) {
            remark(shop_, table.definition.Name(), {},
                   "the old table tells of " + std::to_string(from_.toldRows) + " rows, and " +
                       std::to_string(table.found) + " were found");
        }
        for (std::size_t row = 0; row < from_.rows.rows(); ++row) {
            if (const auto bad = from_.badRows.find(row); bad != from_.badRows.end()) {
                leaveBadRow(row, bad->second);
                continue;
            }
            std::vector<Value> values;
            const std::string number = numberOf(row);
            for (std::size_t field = 0; field < columns_.size(); ++field) {
                values.push_back(cell(field, row, number));
            }
            table.rows.push_back(std::move(values));
            table.places.push_back(static_cast<std::int64_t>(row));
        }
    }

 private:
    // Which column of the old table each field stands in; -1: none.
    void findColumns() {
        const TableDef& definition = work_.table.definition;
        std::set<int> taken;
        for (const FieldDef& field : definition.Fields()) {
            int column = from_.indexOf(field.Name);
            if (column >= 0 && from_.columns[static_cast<std::size_t>(column)].type == dao::Type::Null) {
                column = -1;
            }
            if (column < 0) {
                shop_.notThere.push_back("the field " + definition.Name() + "." + field.Name +
                                         "; it gets what an empty entry gives");
            }
            taken.insert(column);
            columns_.push_back(column);
        }
        for (std::size_t i = 0; i < from_.columns.size(); ++i) {
            if (taken.count(static_cast<int>(i)) == 0) {
                shop_.notOurs.push_back("the field " + from_.name + "." + from_.columns[i].name);
            }
        }
    }

    // How a remark calls a row: by its number, or by its place where it has none.
    std::string numberOf(std::size_t row) const {
        const int column = work_.key < 0 ? -1 : columns_[static_cast<std::size_t>(work_.key)];
        if (column >= 0 && !from_.rows.isUnread(row, static_cast<std::size_t>(column))) {
            Value value;
            from_.rows.get(row, static_cast<std::size_t>(column), value);
            if (!value.isNull()) {
                return value.asText();
            }
        }
        return "(row " + std::to_string(row + 1) + ")";
    }

    // Services count the kinds of work by their places: none may move up.
    void leaveBadRow(std::size_t row, const std::string& place) {
        const std::string& name = work_.table.definition.Name();
        const std::string number = "(row " + std::to_string(row + 1) + ")";
        if (name != "ServiceTypes") {
            remark(shop_, name, number, "cannot be read (" + place + "); left out");
            ++work_.table.left;
            return;
        }
        remark(shop_, name, number,
               "cannot be read (" + place + "); 'Preuzeto: necitljivo' stands in its place");
        work_.table.rows.push_back({Value("Preuzeto: necitljivo")});
        work_.table.places.push_back(-1);
        ++work_.table.left;
    }

    Value cell(std::size_t index, std::size_t row, const std::string& number) {
        const TableDef& definition = work_.table.definition;
        const FieldDef& field = definition.Fields()[index];
        const int column = columns_[index];
        if (column < 0) {
            return defaultOf(field);
        }
        const auto at = static_cast<std::size_t>(column);
        const auto tell = [&](const std::string& what) {
            remark(shop_, definition.Name(), number, "the field " + field.Name + " " + what);
        };
        if (from_.rows.isUnread(row, at)) {
            tell("cannot be read; left empty");
            return {};
        }
        if (from_.unsoundTexts.count({row, at}) != 0) {
            tell("holds letters that are none; a mark stands in their place");
        }
        Value old;
        from_.rows.get(row, at, old);
        if (old.isNull()) {
            return {};
        }
        return fitting(field, old, tell);
    }

    template <typename Tell>
    static Value fitting(const FieldDef& field, const Value& old, const Tell& tell) {
        Value value;
        try {
            value = old.as(NewShop::typeOf(field));
        } catch (const dao::Error&) {
            tell("holds what it cannot: " + old.asText() + "; left empty");
            return {};
        }
        if (!isPossible(old) || !isPossible(value)) {
            tell("holds no " + std::string(field.Type == dao::dbDate ? "date" : "number") + "; left empty");
            return {};
        }
        if (isText(field) && field.Size > 0) {
            const std::string& text = value.textRef();
            const std::size_t fits = alphabet::bytesOfLetters(text, static_cast<std::size_t>(field.Size));
            if (fits < text.size()) {
                tell("is too long and was cut to " + std::to_string(field.Size) +
                     " characters; the whole of it: " + text);
                return Value(text.substr(0, fits));
            }
        }
        return value;
    }

    const OldTable& from_;
    Work& work_;
    MendedShop& shop_;
    std::vector<int> columns_;
};

// ----- numbers

std::int32_t freshNumber(Work& work) {
    if (work.highest == INT32_MAX) {
        throw OldFileError("The old database has given all numbers of the table " +
                           work.table.definition.Name() + ". Nothing was taken over.");
    }
    work.numbers.insert(++work.highest);
    return work.highest;
}

void giveNumbers(Work& work, MendedShop& shop) {
    if (work.key < 0) {
        return;
    }
    for (std::size_t row = 0; row < work.table.rows.size(); ++row) {
        const Value& key = keyOf(work, row);
        work.highest = std::max(work.highest, key.isNull() ? 0 : key.asLong());
    }
    for (std::size_t row = 0; row < work.table.rows.size(); ++row) {
        const Value key = keyOf(work, row);
        const std::int32_t number = key.isNull() ? 0 : key.asLong();
        if (number != 0 && work.numbers.insert(number).second) {
            continue;
        }
        const std::int32_t fresh = freshNumber(work);
        work.table.rows[row][static_cast<std::size_t>(work.key)] = Value(fresh);
        const bool first = number == 0 && !key.isNull() && work.forZero == 0;
        work.forZero = first ? fresh : work.forZero;
        const char* what = key.isNull()  ? "has no number"
                           : number == 0 ? "no number of a record"
                                         : "stands twice";
        remark(shop, work.table.definition.Name(),
               key.isNull() ? "(row " + std::to_string(work.table.places[row] + 1) + ")"
                            : std::to_string(number),
               std::string(what) + "; this one got the number " + std::to_string(fresh));
    }
}

void keepOneRow(Work& work, MendedShop& shop) {
    MendedTable& table = work.table;
    for (std::size_t row = 1; row < table.rows.size(); ++row) {
        remark(shop, table.definition.Name(), "(row " + std::to_string(row + 1) + ")",
               "one row tells the last numbers; left out: " + wordsOf(table, row));
        ++table.left;
    }
    if (table.rows.size() > 1) {
        table.rows.resize(1);
        table.places.resize(1);
    }
    for (auto& row : table.rows) {
        for (Value& value : row) {
            value = value.isNull() ? Value(std::int32_t{0}) : value;
        }
    }
}

// ----- rows that belong to none

const Adopter& adopterOf(const std::string& table) {
    return *std::find_if(adopters().begin(), adopters().end(),
                         [&](const Adopter& one) { return table == one.table; });
}

std::string nameFor(const std::string& table, std::int32_t number) {
    const std::string name = adopterOf(table).name;
    return number == 0 ? name : name + " " + std::to_string(number);
}

std::string adoptionWords(const dao::Relation& relation, std::int32_t number, std::int32_t adopter) {
    const std::string missing =
        number == 0 ? "belongs to no record of " + relation.table
                    : "its record " + std::to_string(number) + " of " + relation.table + " is gone";
    return missing + "; put under '" + nameFor(relation.table, number) + "', " + relation.table + " " +
           std::to_string(adopter);
}

// Puts rows whose owner is gone under one that is made for them.
class Adoption {
 public:
    Adoption(Works& works, MendedShop& shop) : works_(works), shop_(shop) {}

    void adopt(const dao::Relation& relation) {
        Work& parents = *workOf(works_, relation.table);
        Work& children = *workOf(works_, relation.foreignTable);
        const auto field = static_cast<std::size_t>(children.table.indexOf(relation.foreignField));
        for (std::size_t row = 0; row < children.table.rows.size(); ++row) {
            Value& link = children.table.rows[row][field];
            const std::int32_t number = link.isNull() ? 0 : link.asLong();
            if (number == 0 && !link.isNull() && parents.forZero != 0) {
                link = Value(parents.forZero);
            } else if (number == 0 || parents.numbers.count(number) == 0 ||
                       parents.adopters.count(number) != 0) {
                const std::int32_t adopter = adopterFor(parents, number);
                remark(shop_, relation.foreignTable, nameOf(children, row),
                       adoptionWords(relation, number, adopter));
                link = Value(adopter);
            }
        }
    }

 private:
    // Made under the number that the rows name, so that those of one owner stay together; one for all that
    // name none.
    std::int32_t adopterFor(Work& parents, std::int32_t number) {
        if (number == 0 && parents.collective != 0) {
            return parents.collective;
        }
        if (parents.adopters.count(number) != 0) {
            return number;
        }
        const std::int32_t made = number == 0 ? freshNumber(parents) : number;
        parents.numbers.insert(made);
        parents.adopters.insert(made);
        parents.highest = std::max(parents.highest, made);
        parents.collective = number == 0 ? made : parents.collective;
        makeAdopter(parents, made, nameFor(parents.table.definition.Name(), number));
        return made;
    }

    void makeAdopter(Work& parents, std::int32_t number, const std::string& name) {
        MendedTable& table = parents.table;
        const Adopter& adopter = adopterOf(table.definition.Name());
        std::vector<Value> row;
        for (const FieldDef& field : table.definition.Fields()) {
            row.push_back(isText(field) ? Value() : defaultOf(field));
        }
        for (const auto& [field, value] : adopter.fields) {
            row[static_cast<std::size_t>(table.indexOf(field))] = value;
        }
        row[static_cast<std::size_t>(table.indexOf(adopter.numbered))] = Value(name);
        row[static_cast<std::size_t>(parents.key)] = Value(number);
        for (const dao::Relation& relation : data::shopSchema().relations) {
            if (dao::sameName(relation.foreignTable, table.definition.Name())) {
                row[static_cast<std::size_t>(table.indexOf(relation.foreignField))] =
                    Value(adopterFor(*workOf(works_, relation.table), 0));
            }
        }
        table.rows.push_back(std::move(row));
        table.places.push_back(-1);
    }

    Works& works_;
    MendedShop& shop_;
};

// ----- what stands twice

struct Sooner {
    bool operator()(const std::string& a, const std::string& b) const { return alphabet::compare(a, b) < 0; }
};

void renameTwins(Work& work, std::size_t field, MendedShop& shop) {
    std::set<std::string, Sooner> names;
    for (const auto& row : work.table.rows) {
        names.insert(row[field].asText());
    }
    std::set<std::string, Sooner> seen;
    for (std::size_t row = 0; row < work.table.rows.size(); ++row) {
        const std::string name = work.table.rows[row][field].asText();
        if (seen.insert(name).second) {
            continue;
        }
        std::string other;
        for (int count = 2; other.empty() || !names.insert(other).second; ++count) {
            const std::string ending = " (" + std::to_string(count) + ")";
            const std::size_t room =
                static_cast<std::size_t>(work.table.definition.Fields()[field].Size) - ending.size();
            other = name.substr(0, alphabet::bytesOfLetters(name, room)) + ending;
        }
        work.table.rows[row][field] = Value(other);
        std::string told = "the name '";
        told.append(name).append("' stands twice; this one is now '").append(other).append("'");
        remark(shop, work.table.definition.Name(), nameOf(work, row), told);
    }
}

// Two products of one name are nothing that the program forbids: it asks, and does it. Both stay as they are,
// and so do the requisitions that name them.
void tellAlikeProducts(const Work& products, MendedShop& shop) {
    const auto field = static_cast<std::size_t>(products.table.indexOf("Naziv"));
    std::map<std::string, std::size_t, Sooner> seen;
    for (std::size_t row = 0; row < products.table.rows.size(); ++row) {
        const std::string name = products.table.rows[row][field].asText();
        const auto [first, isNew] = seen.emplace(name, row);
        if (!isNew && !name.empty()) {
            shop.alike.push_back(products.table.definition.Name() + " " + nameOf(products, row) +
                                 ": the name '" + name + "' is that of " + nameOf(products, first->second) +
                                 ", too");
        }
    }
}

// A requisition shows a product once for a service.
void dropProductsTwice(Work& drawn, MendedShop& shop) {
    const auto service = static_cast<std::size_t>(drawn.table.indexOf("ServiceID"));
    const auto product = static_cast<std::size_t>(drawn.table.indexOf("OpremaID"));
    std::set<std::pair<std::int32_t, std::string>> seen;
    MendedTable kept;
    for (std::size_t row = 0; row < drawn.table.rows.size(); ++row) {
        auto& values = drawn.table.rows[row];
        if (!seen.emplace(values[service].asLong(), values[product].asText()).second) {
            remark(shop, "InvoiceData", nameOf(drawn, row),
                   "stands twice for one service and product; left out: " + wordsOf(drawn.table, row));
            ++drawn.table.left;
            continue;
        }
        kept.rows.push_back(std::move(values));
        kept.places.push_back(drawn.table.places[row]);
    }
    drawn.table.rows = std::move(kept.rows);
    drawn.table.places = std::move(kept.places);
}

class Mending {
 public:
    explicit Mending(const OldShop& old) : old_(old) {}

    MendedShop mend() {
        needShop();
        shop_.notOurs = old_.others;
        works_.reserve(NewShop::tables().size());  // a table of many rows is not moved about
        for (const TableDef& definition : NewShop::tables()) {
            take(definition);
        }
        Adoption adoption(works_, shop_);
        for (const dao::Relation& relation : data::shopSchema().relations) {
            adoption.adopt(relation);
        }
        for (const auto& [name, field] : kUniqueNames) {
            Work& named = *workOf(works_, name);
            renameTwins(named, static_cast<std::size_t>(named.table.indexOf(field)), shop_);
        }
        tellAlikeProducts(*workOf(works_, "Oprema"), shop_);
        dropProductsTwice(*workOf(works_, "InvoiceData"), shop_);
        for (Work& work : works_) {
            shop_.tables.push_back(std::move(work.table));
        }
        return std::move(shop_);
    }

 private:
    void needShop() const {
        for (const char* name : {"Customers", "Computers", "Services"}) {
            if (old_.table(name) == nullptr) {
                throw OldFileError(std::string("The old database has no table ") + name +
                                   ": it is no shop's, or damaged. Nothing was taken over.");
            }
        }
    }

    void take(const TableDef& definition) {
        const OldTable* from = old_.table(definition.Name());
        const bool isNumbers = dao::sameName(definition.Name(), data::documentNumbers().Name());
        if (from == nullptr && isNumbers) {
            return;  // it comes with the first document
        }
        Work work;
        work.table.definition = definition;
        if (const FieldDef* counter = counterOf(definition)) {
            work.key = work.table.indexOf(counter->Name);
        }
        if (from == nullptr) {
            shop_.notThere.push_back("the table " + definition.Name() + "; it stays empty");
        } else {
            RowTaking(*from, work, shop_).take();
            giveNumbers(work, shop_);
        }
        if (isNumbers) {
            keepOneRow(work, shop_);
        }
        works_.push_back(std::move(work));
    }

    const OldShop& old_;
    MendedShop shop_;
    Works works_;
};

}  // namespace

int MendedTable::indexOf(std::string_view field) const {
    const auto& fields = definition.Fields();
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (dao::sameName(fields[i].Name, field)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

MendedShop mend(const OldShop& old) {
    return Mending(old).mend();
}

}  // namespace exchange
