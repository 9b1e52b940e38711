#include "exchange/take_over.h"

#include <QFile>
#include <filesystem>
#include <map>
#include <sstream>

#include "exchange/old_format.h"
#include "exchange/old_rows.h"
#include "platform/dao/dbengine.h"
#include "platform/dao/error.h"
#include "platform/dao/names.h"
#include "platform/system/files.h"

namespace exchange {

const char* const kNotInTheFile =
    "The rate and the firm's data stand in each user's settings and not in the file: set them in the "
    "options.";

namespace {

using dao::FieldDef;
using dao::Value;

constexpr std::size_t kRowsAtOnce = 2000;

std::vector<std::string> ourTables() {
    std::vector<std::string> names;
    for (const dao::TableDef& table : NewShop::tables()) {
        names.push_back(table.Name());
    }
    return names;
}

std::string amountText(std::uint64_t sum) {
    const auto scaled = static_cast<std::int64_t>(sum);
    const std::uint64_t size = scaled < 0 ? 0 - sum : sum;
    std::string digits = std::to_string(size);
    digits.insert(0, digits.size() < 5 ? 5 - digits.size() : 0, '0');
    digits.insert(digits.size() - 4, ".");
    return (scaled < 0 ? "-" : "") + digits;
}

// What the amounts of each field come to, by "Services.Price", in ten-thousandths. Modulo 2^64: nobody knows
// what a damaged file holds.
using Amounts = std::map<std::string, std::uint64_t>;

void fill(NewShop& shop, const MendedTable& table) {
    std::vector<std::string_view> fields;
    std::vector<dao::Type> types;
    for (const FieldDef& field : table.definition.Fields()) {
        fields.push_back(field.Name);
        types.push_back(NewShop::typeOf(field));
    }
    dao::RowBlock block;
    block.reset(types);
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        block.startRow();
        for (const Value& value : table.rows[row]) {
            block.add(value);
        }
        block.endRow();
        if (block.rows() == kRowsAtOnce || row + 1 == table.rows.size()) {
            shop.add(table.definition.Name(), fields, block);
            block.clear();
        }
    }
}

// ----- comparing

// Of the rows that were carried, as the old file has them.
Amounts amountsOf(const OldShop& old, const MendedShop& mended) {
    Amounts amounts;
    Value value;
    for (const MendedTable& table : mended.tables) {
        const OldTable* from = old.table(table.definition.Name());
        for (const FieldDef& field : table.definition.Fields()) {
            const int column = from == nullptr ? -1 : from->indexOf(field.Name);
            if (field.Type != dao::dbCurrency || column < 0 ||
                from->columns[static_cast<std::size_t>(column)].type != dao::Type::Currency) {
                continue;
            }
            std::uint64_t& sum = amounts[table.definition.Name() + "." + field.Name];
            for (const std::int64_t place : table.places) {
                if (place >= 0) {
                    from->rows.get(static_cast<std::size_t>(place), static_cast<std::size_t>(column), value);
                    sum += value.isNull() ? 0 : static_cast<std::uint64_t>(value.asCurrency().scaled());
                }
            }
        }
    }
    return amounts;
}

struct Kept {
    std::int64_t rows = 0;
    std::int64_t highest = 0;
    Amounts amounts;
};

Kept keptOf(NewShop& shop, const dao::TableDef& definition) {
    Kept kept;
    Value value;
    shop.read(definition.Name(), [&](const dao::RowBlock& rows) {
        kept.rows += static_cast<std::int64_t>(rows.rows());
        for (std::size_t field = 0; field < definition.Fields().size(); ++field) {
            const FieldDef& one = definition.Fields()[field];
            for (std::size_t row = 0; row < rows.rows() && (one.counter || one.Type == dao::dbCurrency);
                 ++row) {
                rows.get(row, field, value);
                if (one.counter) {
                    kept.highest = std::max<std::int64_t>(kept.highest, value.asLong());
                } else if (!value.isNull()) {
                    kept.amounts[definition.Name() + "." + one.Name] +=
                        static_cast<std::uint64_t>(value.asCurrency().scaled());
                }
            }
        }
    });
    return kept;
}

[[noreturn]] void failDifferent(const std::string& what) {
    throw OldFileError("The new shop does not hold the same as the old one: " + what +
                       ". Nothing was taken over.");
}

std::int64_t highestOf(const MendedTable& table) {
    std::int64_t highest = 0;
    for (std::size_t field = 0; field < table.definition.Fields().size(); ++field) {
        for (std::size_t row = 0; table.definition.Fields()[field].counter && row < table.rows.size();
             ++row) {
            highest = std::max<std::int64_t>(highest, table.rows[row][field].asLong());
        }
    }
    return highest;
}

// NewShop has compared value by value what it was given with what it kept. This holds the other end: what was
// found in the old file is what it was given, or was told to be left out.
TakenTable compareTable(NewShop& shop, const MendedTable& table, const Amounts& amounts) {
    TakenTable taken{table.definition.Name(), table.found, 0, 0, table.left};
    for (const std::int64_t place : table.places) {
        ++(place < 0 ? taken.made : taken.carried);
    }
    const Kept kept = keptOf(shop, table.definition);
    if (taken.carried + taken.left != taken.found || kept.rows != taken.carried + taken.made) {
        failDifferent("the rows of the table " + taken.name);
    }
    if (kept.highest != highestOf(table)) {
        failDifferent("the highest number of the table " + taken.name);
    }
    for (const auto& [field, sum] : kept.amounts) {
        if (const auto old = amounts.find(field); old != amounts.end() && old->second != sum) {
            failDifferent("what the amounts of " + field + " come to");
        }
    }
    return taken;
}

// ----- the list

void writeLines(std::ostream& out, const std::string& head, const std::vector<std::string>& lines) {
    if (lines.empty()) {
        return;
    }
    out << '\n' << head << '\n';
    for (const std::string& line : lines) {
        out << "  " << line << '\n';
    }
}

void writeList(std::ostream& out, const std::string& old, const TakenOver& taken, const MendedShop& mended) {
    out << "Taken over from " << old << '\n';
    out << "\nTable: rows found, carried, made for rows that belonged to none, left out\n";
    for (const TakenTable& table : taken.tables) {
        out << "  " << table.name << ": " << table.found << ", " << table.carried << ", " << table.made
            << ", " << table.left << '\n';
    }
    writeLines(out, "Amounts", taken.amounts);
    writeLines(out, "Not as it was, or left out", mended.remarks);
    writeLines(out, "As it was, and worth a look", mended.alike);
    writeLines(out, "In the old file and in no shop; left out", mended.notOurs);
    writeLines(out, "Not in the old file", mended.notThere);
    if (mended.remarks.empty()) {
        out << "\nEvery row is as it was.\n";
    }
    out << '\n' << kNotInTheFile << '\n';
}

// take-over.txt, there from the moment at which the new shop appears, and gone again where it never does.
class List {
 public:
    explicit List(const std::string& target)
        : path_(std::filesystem::absolute(target).parent_path() / "take-over.txt") {}
    ~List() {
        if (written_ && !stays_) {
            std::error_code error;
            std::filesystem::remove(path_, error);
        }
    }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    std::string path() const { return path_.string(); }
    void write(const std::string& old, const TakenOver& taken, const MendedShop& mended) {
        keepFormer();
        written_ = true;
        std::ostringstream text;
        writeList(text, old, taken, mended);
        QFile out(QString::fromStdString(path_.string()));
        // It names clients: from its first byte on it is for its user alone.
        if (!out.open(QIODevice::WriteOnly | QIODevice::NewOnly, platform::kForUserAlone) ||
            out.write(QByteArray::fromStdString(text.str())) < 0 || !out.flush()) {
            throw OldFileError("'" + path_.string() + "' cannot be written. Nothing was taken over.");
        }
    }
    void stay() { stays_ = true; }

 private:
    void keepFormer() const {
        std::filesystem::path former = path_;
        for (int count = 2; std::filesystem::exists(former); ++count) {
            former = path_.parent_path() / ("take-over-" + std::to_string(count) + ".txt");
        }
        if (former != path_) {
            std::filesystem::rename(path_, former);
        }
    }

    std::filesystem::path path_;
    bool written_ = false;
    bool stays_ = false;
};

// ----- taking over

dao::RowWatch makingWatch(const TakingWatch& watch) {
    return [&watch](const dao::RowState& state) {
        if (watch) {
            watch(state.comparing ? "comparing" : "writing", state.table, state.done, state.all);
        }
    };
}

TakenOver taken(const std::string& old, const std::string& target, const TakingWatch& watch,
                const std::function<void(NewShop&)>& appear) {
    needOldFile(old);
    const OldShop shop =
        readOldShop(old, ourTables(), [&](const std::string& table, std::int64_t done, std::int64_t all) {
            if (watch) {
                watch("reading", table, done, all);
            }
        });
    const MendedShop mended = mend(shop);
    NewShop made(target);
    std::int64_t rows = 0;
    for (const MendedTable& table : mended.tables) {
        rows += static_cast<std::int64_t>(table.rows.size());
    }
    made.watch(rows, makingWatch(watch));
    for (const MendedTable& table : mended.tables) {
        fill(made, table);
    }
    made.keep();

    TakenOver result;
    const Amounts amounts = amountsOf(shop, mended);
    for (const MendedTable& table : mended.tables) {
        result.tables.push_back(compareTable(made, table, amounts));
    }
    for (const auto& [field, sum] : amounts) {
        result.amounts.push_back(field + ": " + amountText(sum));
    }
    result.remarks = mended.remarks.size();
    result.notOurs = mended.notOurs.size();
    List list(target);
    result.list = list.path();
    list.write(old, result, mended);
    needOldFile(old);
    appear(made);
    list.stay();
    return result;
}

void needNothingAt(const std::string& path) {
    if (std::filesystem::symlink_status(path).type() != std::filesystem::file_type::not_found) {
        throw OldFileError("'" + path + "' is there already, and is not replaced.");
    }
}

}  // namespace

TakenOver takeOver(const std::string& old, const std::string& target, const TakingWatch& watch) {
    needOldFile(old);
    if (!dao::DBEngine::IsOnServer(target)) {
        needNothingAt(target);
    }
    return taken(old, target, watch, [](NewShop& shop) { shop.appear(); });
}

TakenOver takeOverInPlace(const std::string& path, const std::string& kept, const TakingWatch& watch) {
    needOldFile(path);
    needNothingAt(kept);
    return taken(path, path, watch, [&](NewShop& shop) { shop.replace(kept); });
}

}  // namespace exchange
