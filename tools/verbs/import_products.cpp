#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>

#include "common/modMain.h"
#include "common/settings.h"
#include "data/session.h"
#include "exchange/product_import.h"
#include "platform/dao/dao.h"
#include "tools/verbs/table_lines.h"
#include "tools/verbs/verbs.h"

namespace {

using exchange::BadLine;
using exchange::PriceField;
using exchange::ProductChange;

// Of the person who calls the command: what the windows' options have.
float rateOfSettings() {
    return LocaleSingle(settings::text(settings::KursKupovni));
}

std::string shown(float number) {
    return dao::Value(number).asText();
}

// A transaction that ends undone unless it is kept.
class Transaction {
 public:
    Transaction() { dao::DBEngine::BeginTrans(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
        if (isOpen_) {
            dao::DBEngine::Rollback();
        }
    }
    void keep() {
        dao::DBEngine::CommitTrans();
        isOpen_ = false;
    }

 private:
    bool isOpen_ = true;
};

struct Words {
    std::string database, file, currency, decimal;
    std::vector<std::string> maps;
    bool stock = false, tries = false, skipsBad = false;
    float rate = 0;

    exchange::PriceListChoices choices() const {
        exchange::PriceListChoices chosen;
        if (!currency.empty()) {
            chosen.money = currency == "din" ? exchange::Money::Dinars : exchange::Money::Euro;
        }
        chosen.rate = rate > 0 ? rate : rateOfSettings();
        if (!decimal.empty()) {
            chosen.decimal = decimal == "comma" ? exchange::DecimalMark::Comma : exchange::DecimalMark::Point;
        }
        return chosen;
    }
};

// ----- what is told

void tellBad(std::vector<BadLine> bad) {
    constexpr std::size_t kMostTold = 100;
    std::stable_sort(bad.begin(), bad.end(),
                     [](const BadLine& a, const BadLine& b) { return a.line < b.line; });
    for (std::size_t i = 0; i < std::min(bad.size(), kMostTold); ++i) {
        std::cerr << "line " << bad[i].line << ", column " << bad[i].column << ": " << bad[i].why << ".\n";
    }
    if (bad.size() > kMostTold) {
        std::cerr << "and " << counted(static_cast<long long>(bad.size() - kMostTold), "bad line")
                  << " more.\n";
    }
}

std::string change(bool isNew, bool changes, const std::string& before, const std::string& after) {
    if (isNew) {
        return after;
    }
    return changes ? before + " -> " + after : std::string();
}

std::vector<std::string> rowOf(const ProductChange& one) {
    const exchange::PriceLine& line = *one.line;
    return {std::to_string(line.line),
            one.isNew() ? "new" : "changed",
            line.group,
            line.manufacturer,
            line.name,
            change(one.isNew(), one.price, shown(one.oldPrice), shown(line.price)),
            change(one.isNew(), one.stock.has_value(), shown(one.oldStock), shown(one.stock.value_or(0))),
            change(one.isNew(), one.description, '"' + one.oldDescription + '"',
                   one.isNew() ? line.description : '"' + line.description + '"')};
}

void tellPlan(const exchange::ProductPlan& plan, Talk& talk) {
    std::vector<std::vector<std::string>> rows{
        {"Line", "What", "Group", "Manufacturer", "Name", "Price", "Stock", "Description"}};
    for (const ProductChange& one : plan.changes) {
        if (one.changesAnything()) {
            rows.push_back(rowOf(one));
        }
    }
    if (rows.size() > 1) {
        for (const std::string& line : tableLines(rows)) {
            talk.say(line);
        }
    }
}

void tellNames(const char* what, const std::vector<std::string>& names, Talk& talk) {
    if (names.empty()) {
        return;
    }
    std::string line = counted(static_cast<long long>(names.size()), std::string("new ") + what) + ": ";
    constexpr std::size_t kMostNamed = 10;
    for (std::size_t i = 0; i < std::min(names.size(), kMostNamed); ++i) {
        line += (i > 0 ? ", " : "") + names[i];
    }
    talk.say(line + (names.size() > kMostNamed ? ", ..." : "."));
}

void tellCounts(const exchange::ProductPlan& plan, std::size_t bad, bool tries, Talk& talk) {
    tellNames("group", plan.groups, talk);
    tellNames("manufacturer", plan.manufacturers, talk);
    tellNames("unit", plan.units, talk);
    const auto countIf = [&](auto&& test) {
        return counted(std::count_if(plan.changes.begin(), plan.changes.end(), test), "product");
    };
    const std::string would = tries ? " would be " : " ";
    talk.say(countIf([](const ProductChange& one) { return one.isNew(); }) + would + "added, " +
             countIf([](const ProductChange& one) { return !one.isNew() && one.changesAnything(); }) + would +
             "changed, " + countIf([](const ProductChange& one) { return !one.changesAnything(); }) +
             " as before, " + counted(static_cast<long long>(bad), "bad line") + '.');
}

// ----- what is done

[[noreturn]] void failForBad(std::size_t bad) {
    throw std::runtime_error(counted(static_cast<long long>(bad), "bad line") +
                             "; nothing was written. --skip-bad takes the others.");
}

void importProducts(const Words& words, Talk& talk) {
    MakeProperCase = settings::boolean(settings::MakeProperCase);
    const std::vector<exchange::SheetRow> rows = exchange::readSheet(words.file);
    const exchange::PriceColumns columns(rows, words.maps);
    const exchange::PriceList list = exchange::readPriceList(rows, columns, words.choices());
    dao::Database database =
        dao::DBEngine::OpenDatabase(words.database, false, words.tries, connectText().toStdString());
    std::optional<Transaction> writing;
    if (!words.tries) {
        writing.emplace();
    }
    exchange::ProductPlan plan = exchange::planProducts(database, list.lines, words.stock);
    std::vector<BadLine> bad = list.bad;
    for (BadLine& line : plan.bad) {
        line.column = columns.heading(PriceField::Name);
        bad.push_back(line);
    }
    if (words.tries) {
        tellPlan(plan, talk);
    }
    talk.settle();
    tellBad(bad);
    if (!bad.empty() && !words.skipsBad) {
        tellCounts(plan, bad.size(), true, talk);
        failForBad(bad.size());
    }
    if (writing) {
        const exchange::ProductCounts counts = exchange::writeProducts(
            database, plan,
            [&](std::int64_t done, std::int64_t all) { talk.progress("writing", "products", done, all); });
        writing->keep();
        if (counts.requisitioned > 0) {
            talk.say(counted(counts.requisitioned, "requisitioned row") + " took over a description.");
        }
    }
    tellCounts(plan, bad.size(), words.tries, talk);
    database.Close();
}

}  // namespace

void addImportProducts(CLI::App& app, Talk& talk) {
    const auto words = std::make_shared<Words>();
    CLI::App* verb =
        app.add_subcommand("import-products", "Reads a supplier's price list into the shop's products.");
    verb->add_option("DATABASE", words->database,
                     "The shop's file, or the signpost that leads to its server.")
        ->required();
    verb->add_option("FILE", words->file, "The list: CSV, .xlsx or .ods (its first sheet).")->required();
    verb->add_option(
            "--map", words->maps,
            "FIELD=COLUMN, by heading or number: group, manufacturer, name, price, description, stock, "
            "unit, note. What is not told is guessed from the heading.")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    verb->add_flag("--stock", words->stock, "Takes over the stock, too.");
    verb->add_flag("--try", words->tries, "Shows as a table what would change, and changes nothing.");
    verb->add_flag("--skip-bad", words->skipsBad, "Writes the good lines where there are bad ones.");
    verb->add_option("--currency", words->currency,
                     "Of the prices: eur or din; else what their heading says, or euro.")
        ->check(CLI::IsMember({"eur", "din"}));
    verb->add_option("--rate", words->rate, "Dinars for one euro; else that of your options in the program.")
        ->check(CLI::PositiveNumber);
    verb->add_option("--decimal", words->decimal,
                     "What decimals begin with: comma or point; else told by the list.")
        ->check(CLI::IsMember({"comma", "point"}));
    verb->footer(
        "Groups, manufacturers and units that are new are made. A known product (group, manufacturer, name) "
        "takes "
        "price and description; a new one must have a name that no other has. All is written or nothing.");
    verb->callback([words, &talk] { importProducts(*words, talk); });
}
