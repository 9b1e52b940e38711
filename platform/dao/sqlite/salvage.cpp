#include "platform/dao/sqlite/salvage.h"

#include <algorithm>
#include <optional>

#include "platform/dao/failure.h"
#include "platform/dao/names.h"
#include "platform/dao/sqlite/btree.h"
#include "platform/dao/sqlite/store.h"

namespace dao::driver {
namespace {

constexpr const char* kSequence = "sqlite_sequence";
constexpr const char* kQueries = "dao_queries";

struct SchemaEntry {
    std::string type, name, table, sql;
    PageNumber root = 0;
};

struct Column {
    std::string name;
    bool isKey = false;
    bool isText = false;
};

// One table on its way from the broken file into the fresh one.
struct Salvaged {
    SchemaEntry entry;
    std::vector<Column> columns;
    std::shared_ptr<sqlite3_stmt> insert;
    TreeReader::Missing missing;
    std::vector<std::int64_t> kept;
};

const std::string* textOf(const StoredCell& cell) {
    return std::get_if<std::string>(&cell);
}

class Salvage {
 public:
    Salvage(PageFile& pages, SqliteStore& fresh) : reader_(pages), fresh_(fresh) {}

    RepairReport run() {
        report_.damaged = true;
        readSchema();
        fresh_.execute("PRAGMA foreign_keys = OFF; PRAGMA cache_spill = ON");
        fresh_.beginWrite();
        try {
            reader_.markFreePages();
            for (SchemaEntry& entry : schema_) {
                if (entry.type == "table" && entry.root != 0) {
                    carryTable(entry);
                }
            }
            carryStray();
            countLosses();
            createIndexes();
            carryCounters();
            countOrphans();
            fresh_.commit();
        } catch (...) {
            fresh_.rollback();
            throw;
        }
        return std::move(report_);
    }

 private:
    void readSchema();
    void carryTable(const SchemaEntry& entry);
    bool keep(Salvaged& table, const StoredRow& row);
    void carryStray();
    Salvaged* ownerOf(const std::vector<StoredRow>& rows);
    bool couldBelong(const Salvaged& table, const StoredRow& row) const;
    void countLosses();
    std::int64_t lossOf(const Salvaged& table);
    std::int64_t lossByIndex(const Salvaged& table, bool& known);
    std::int64_t counterOf(const std::string& table) const;
    void createIndexes();
    void carryCounters();
    void countOrphans();
    void note(const std::string& text) { report_.notes.push_back(text); }

    TreeReader reader_;
    SqliteStore& fresh_;
    RepairReport report_;
    std::vector<SchemaEntry> schema_;
    std::vector<Salvaged> tables_;
    std::vector<std::pair<std::string, std::int64_t>> counters_;
};

void Salvage::readSchema() {
    const auto missing = reader_.readTable(1, [this](StoredRow row) {
        if (row.cells.size() < 5) {
            return;
        }
        SchemaEntry entry;
        const auto take = [&](std::size_t i, std::string& to) {
            if (const std::string* text = textOf(row.cells[i])) {
                to = *text;
            }
        };
        take(0, entry.type);
        take(1, entry.name);
        take(2, entry.table);
        take(4, entry.sql);
        if (const std::int64_t* root = std::get_if<std::int64_t>(&row.cells[3])) {
            entry.root = static_cast<PageNumber>(*root);
        }
        schema_.push_back(std::move(entry));
    });
    if (schema_.empty()) {
        fail(errCannotOpen);
    }
    if (!missing.empty()) {
        note("Part of the list of tables can't be read; tables may be missing.");
    }
}

void Salvage::carryTable(const SchemaEntry& entry) {
    if (entry.name == kSequence) {
        reader_.readTable(entry.root, [this](const StoredRow& row) {
            const std::string* name = row.cells.size() == 2 ? textOf(row.cells[0]) : nullptr;
            const std::int64_t* number = name != nullptr ? std::get_if<std::int64_t>(&row.cells[1]) : nullptr;
            if (number != nullptr) {
                counters_.emplace_back(*name, *number);
            }
        });
        return;
    }
    if (entry.name != kQueries) {
        fresh_.execute(entry.sql);
    }

    Salvaged table;
    table.entry = entry;
    RowBlock block;
    block.reset({Type::Long, Type::Text, Type::Text, Type::Long, Type::Null, Type::Long});
    fresh_.prepare("PRAGMA table_info(" + quotedName(entry.name) + ")")->readRows(block);
    Value name;
    Value type;
    Value key;
    for (std::size_t row = 0; row < block.rows(); ++row) {
        block.get(row, 1, name);
        block.get(row, 2, type);
        block.get(row, 5, key);
        table.columns.push_back({name.textRef(), key.asLong() != 0 && sameName(type.textRef(), "INTEGER"),
                                 type.textRef().find("TEXT") != std::string::npos});
    }
    std::string text = "INSERT OR IGNORE INTO " + quotedName(entry.name) + " VALUES(";
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        text += i == 0 ? "?" : ",?";
    }
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v2(fresh_.handle(), (text + ')').c_str(), -1, &raw, nullptr);
    if (code != SQLITE_OK) {
        fresh_.failWith(code);
    }
    table.insert.reset(raw, &sqlite3_finalize);
    table.missing = reader_.readTable(entry.root, [&](const StoredRow& row) { keep(table, row); });
    tables_.push_back(std::move(table));
}

bool Salvage::keep(Salvaged& table, const StoredRow& row) {
    sqlite3_stmt* insert = table.insert.get();
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const int index = static_cast<int>(i) + 1;
        if (table.columns[i].isKey) {
            sqlite3_bind_int64(insert, index, row.rowid);
        } else if (i >= row.cells.size() || std::holds_alternative<std::monostate>(row.cells[i])) {
            sqlite3_bind_null(insert, index);
        } else if (const std::int64_t* integer = std::get_if<std::int64_t>(&row.cells[i])) {
            sqlite3_bind_int64(insert, index, *integer);
        } else if (const double* real = std::get_if<double>(&row.cells[i])) {
            sqlite3_bind_double(insert, index, *real);
        } else if (const std::string* text = textOf(row.cells[i])) {
            sqlite3_bind_text64(insert, index, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
        }
    }
    const int code = sqlite3_step(insert);
    sqlite3_reset(insert);
    if (code != SQLITE_DONE) {
        fresh_.failWith(code);
    }
    if (sqlite3_changes(fresh_.handle()) == 0) {
        return false;
    }
    table.kept.push_back(row.rowid);
    if (!isSystemTable(table.entry.name)) {
        ++report_.rowsKept;
    }
    return true;
}

bool Salvage::couldBelong(const Salvaged& table, const StoredRow& row) const {
    const bool inGap = std::any_of(table.missing.gaps.begin(), table.missing.gaps.end(),
                                   [&](const Gap& gap) { return gap.holds(row.rowid); });
    if (!inGap || row.cells.size() != table.columns.size()) {
        return false;
    }
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        const StoredCell& cell = row.cells[i];
        const bool isNull = std::holds_alternative<std::monostate>(cell);
        if (table.columns[i].isKey != isNull && table.columns[i].isKey) {
            return false;
        }
        if (!isNull && table.columns[i].isText != (textOf(cell) != nullptr)) {
            return false;
        }
    }
    return true;
}

Salvaged* Salvage::ownerOf(const std::vector<StoredRow>& rows) {
    Salvaged* owner = nullptr;
    for (Salvaged& table : tables_) {
        if (rows.empty() || !std::all_of(rows.begin(), rows.end(),
                                         [&](const StoredRow& row) { return couldBelong(table, row); })) {
            continue;
        }
        if (owner != nullptr) {
            return nullptr;  // rather lose a page than put one shop's rows into another's table
        }
        owner = &table;
    }
    return owner;
}

// Where a page that only points at others is broken, those others still lie in the file, with nothing that
// leads to them: one bad page at the top of a table must not cost all its rows.
void Salvage::carryStray() {
    for (const PageNumber page : reader_.strayLeaves()) {
        std::vector<StoredRow> rows;
        TreeReader::Missing missing;
        reader_.readLeaf(
            page, [&](StoredRow row) { rows.push_back(std::move(row)); }, missing);
        Salvaged* owner = ownerOf(rows);
        if (owner == nullptr) {
            continue;
        }
        for (const StoredRow& row : rows) {
            keep(*owner, row);
        }
    }
    for (Salvaged& table : tables_) {
        std::sort(table.kept.begin(), table.kept.end());
    }
}

std::int64_t Salvage::counterOf(const std::string& table) const {
    for (const auto& [name, number] : counters_) {
        if (name == table) {
            return number;
        }
    }
    return 0;
}

std::int64_t Salvage::lossByIndex(const Salvaged& table, bool& known) {
    known = false;
    for (const SchemaEntry& entry : schema_) {
        std::vector<std::int64_t> listed;
        if (entry.type != "index" || entry.table != table.entry.name || entry.root == 0 ||
            !reader_.readIndex(entry.root, listed)) {
            continue;
        }
        known = true;
        return std::count_if(listed.begin(), listed.end(), [&](std::int64_t rowid) {
            return !std::binary_search(table.kept.begin(), table.kept.end(), rowid);
        });
    }
    return 0;
}

std::int64_t Salvage::lossOf(const Salvaged& table) {
    bool known = false;
    const std::int64_t byIndex = lossByIndex(table, known);
    if (known) {
        return byIndex;
    }
    auto lost = static_cast<std::int64_t>(table.missing.rows.size());
    const std::int64_t highest =
        std::max(counterOf(table.entry.name), table.kept.empty() ? 0 : table.kept.back());
    for (const Gap& gap : table.missing.gaps) {
        const std::int64_t after = std::max<std::int64_t>(gap.after, 0);
        const std::int64_t upTo = std::min(gap.upTo, highest);
        if (upTo <= after) {
            continue;
        }
        const auto first = std::upper_bound(table.kept.begin(), table.kept.end(), after);
        const auto last = std::upper_bound(first, table.kept.end(), upTo);
        lost += upTo - after - (last - first);
    }
    return lost;
}

void Salvage::countLosses() {
    for (const Salvaged& table : tables_) {
        const std::int64_t lost = table.missing.empty() ? 0 : lossOf(table);
        if (lost == 0) {
            continue;
        }
        if (isSystemTable(table.entry.name)) {
            note("Stored queries may have been lost.");
            continue;
        }
        report_.rowsLost += lost;
        note("Table '" + table.entry.name + "': " + std::to_string(lost) + " records lost.");
    }
}

void Salvage::createIndexes() {
    for (const SchemaEntry& entry : schema_) {
        if (entry.type != "index" || entry.sql.empty()) {
            continue;
        }
        try {
            fresh_.execute(entry.sql);
        } catch (const Error& error) {
            if (error.Number() != errDuplicateKey) {
                throw;
            }
            note("Index '" + entry.name + "' was left out: it would hold a value twice.");
        }
    }
}

void Salvage::carryCounters() {
    for (const auto& [table, number] : counters_) {
        const bool exists =
            std::any_of(tables_.begin(), tables_.end(),
                        [&, &name = table](const Salvaged& each) { return each.entry.name == name; });
        if (!exists) {
            continue;
        }
        const auto add = fresh_.cached(
            "INSERT INTO sqlite_sequence(name,seq) SELECT ?1,0 "
            "WHERE NOT EXISTS(SELECT 1 FROM sqlite_sequence WHERE name=?1)");
        add->bind(1, Value(table));
        add->run();
        const auto raise = fresh_.cached("UPDATE sqlite_sequence SET seq=max(seq,?2) WHERE name=?1");
        raise->bind(1, Value(table));
        raise->bindInteger(2, number);
        raise->run();
    }
}

// A computer whose client's page is lost stays: it is worth more to the shop than the rule, and the number
// tells that somebody has to look.
void Salvage::countOrphans() {
    RowBlock block;
    block.reset({Type::Text});
    const std::size_t orphans = fresh_.prepare("PRAGMA foreign_key_check")->readRows(block);
    if (orphans > 0) {
        note(std::to_string(orphans) + " records belong to records that were lost.");
    }
}

}  // namespace

bool isWhole(const OpenRequest& file) {
    {
        PageFile pages(file.path, file.key);
        if (pages.state(1) != PageFile::State::Whole) {
            fail(errCannotOpen);
        }
        for (PageNumber page = 2; page <= pages.expected(); ++page) {
            const PageFile::State state = pages.state(page);
            if (state == PageFile::State::Broken || state == PageFile::State::Missing) {
                return false;
            }
        }
    }
    try {
        SqliteStore store(file);
        const std::optional<Value> verdict = store.prepare("PRAGMA integrity_check(1)")->scalar(Type::Text);
        return verdict && verdict->textRef() == "ok" && store.queryVersion("") == 0;
    } catch (const Error& error) {
        switch (error.Number()) {
            case errCannotOpen:
            case errSyntax:
            case errInvalidOperation:
                return false;
            default:
                throw;
        }
    }
}

RepairReport salvage(const OpenRequest& broken, const OpenRequest& fresh) {
    PageFile pages(broken.path, broken.key);
    if (pages.page(1).empty()) {
        fail(errCannotOpen);
    }
    SqliteStore store(fresh);
    return Salvage(pages, store).run();
}

}  // namespace dao::driver
