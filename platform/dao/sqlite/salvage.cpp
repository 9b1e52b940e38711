#include "platform/dao/sqlite/salvage.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/names.h"
#include "platform/dao/open_file.h"
#include "platform/dao/read_scope.h"
#include "platform/dao/sqlite/btree.h"
#include "platform/dao/sqlite/layout.h"
#include "platform/dao/sqlite/long_statements.h"
#include "platform/dao/sqlite/store.h"
#include "platform/dao/sqlite/store_pages.h"
#include "platform/dao/sqlite/table_columns.h"

namespace dao::driver {
namespace {

constexpr const char* kSequence = "sqlite_sequence";
constexpr const char* kQueries = "dao_queries";
constexpr std::size_t kFormField = 60;

struct Column {
    std::string name;
    bool isKey = false;
    bool isText = false;
    bool isWhole = false;  // its numbers
    bool mayBeNull = true;
};

// What a whole index tells of its table's rows: a field's value and the row's key.
struct IndexFacts {
    std::optional<std::size_t> column;  // nothing: there is no such index
    std::set<std::pair<StoredCell, std::int64_t>> entries;
};

// One table on its way from the broken file into the fresh one.
struct Salvaged {
    LayoutEntry entry;
    std::vector<Column> columns;
    std::shared_ptr<sqlite3_stmt> insert;
    TreeReader::Missing missing;
    std::vector<std::int64_t> kept;
    std::optional<IndexFacts> facts;  // looked up when they are needed
};

// The highest number that each table has ever given.
struct Counters {
    std::vector<std::pair<std::string, std::int64_t>> known;
    bool areAll = false;  // a table that is not among them has never given one

    std::optional<std::int64_t> of(const std::string& table) const {
        for (const auto& [name, number] : known) {
            if (name == table) {
                return number;
            }
        }
        return areAll ? std::optional<std::int64_t>(0) : std::nullopt;
    }
};

const std::string* textOf(const StoredCell& cell) {
    return std::get_if<std::string>(&cell);
}

PageNumber rootOf(const LayoutEntry& entry) {
    return static_cast<PageNumber>(entry.number);
}

// Whether a row decodes to the table's fields. A field that was added later is not in the older rows.
bool fits(const std::vector<Column>& columns, const StoredRow& row) {
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        const StoredCell& cell = row.cells[i];
        const bool isNull = std::holds_alternative<std::monostate>(cell);
        if (i >= columns.size() || (columns[i].isKey && !isNull) ||
            (!isNull && columns[i].isText != (textOf(cell) != nullptr))) {
            return false;
        }
    }
    return true;
}

bool isIndexOf(const Salvaged& table, const LayoutEntry& entry) {
    return entry.type == LayoutEntry::kIndex && entry.table == table.entry.name && entry.number != 0;
}

// The one field that an index of the shop's is on.
std::optional<std::size_t> indexedColumn(const std::vector<Column>& columns, const std::string& sql) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string field = '(' + quotedName(columns[i].name) + ')';
        if (sql.size() > field.size() && sql.compare(sql.size() - field.size(), field.size(), field) == 0) {
            return columns[i].isKey ? std::nullopt : std::optional(i);
        }
    }
    return std::nullopt;
}

class Salvage {
 public:
    // `salt`: of the broken file's key, hexadecimal.
    Salvage(PageFile& pages, std::string salt, SqliteStore& fresh)
        : pages_(pages), salt_(std::move(salt)), reader_(pages), fresh_(fresh) {}

    RepairReport run() {
        report_.damaged = true;
        readSchema();
        fresh_.connection().execute("PRAGMA foreign_keys = OFF; PRAGMA cache_spill = ON");
        fresh_.transaction().beginWrite();
        try {
            const LongStatements longOnes(fresh_.connection().handle());
            reader_.markFreePages();
            for (LayoutEntry& entry : schema_) {
                if (entry.type == LayoutEntry::kTable && entry.number != 0) {
                    carryTable(entry);
                }
            }
            carryStray();
            countLosses();
            createIndexes();
            carryCounters();
            countOrphans();
            fresh_.definitions().setForm(static_cast<int>(form_));
            fresh_.transaction().commit();
        } catch (...) {
            fresh_.transaction().rollback();
            throw;
        }
        return std::move(report_);
    }

 private:
    void readSchema();
    void carryTable(const LayoutEntry& entry);
    bool keep(Salvaged& table, const StoredRow& row);
    void carryStray();
    Salvaged* ownerOf(const std::vector<StoredRow>& rows);
    const IndexFacts& factsOf(Salvaged& table);
    bool isDisowned(Salvaged& table, const std::vector<StoredRow>& rows);
    bool couldBelong(const Salvaged& table, const StoredRow& row) const;
    void countLosses();
    std::int64_t lossOf(const Salvaged& table);
    std::int64_t lossByIndex(const Salvaged& table, bool& known);
    void createIndexes();
    void carryCounters();
    void countOrphans();
    void note(const std::string& text) { report_.notes.push_back(text); }

    PageFile& pages_;
    std::string salt_;
    TreeReader reader_;
    SqliteStore& fresh_;
    std::int64_t form_ = 0;
    RepairReport report_;
    std::vector<LayoutEntry> schema_;
    std::vector<Salvaged> tables_;
    Counters counters_;
};

// The first page's own list, completed by what the file tells of itself elsewhere where part of it is lost.
void Salvage::readSchema() {
    const auto missing = reader_.readTable(1, [this](const StoredRow& row) {
        LayoutEntry entry;
        if (readSchemaRow(row, entry) && !isLayoutTable(entry.table)) {
            schema_.push_back(std::move(entry));
        }
    });
    if (missing.empty() && !pages_.page(1).empty()) {
        form_ = static_cast<std::int64_t>(bigEndian(pages_.page(1), kFormField, 4));
        return;
    }
    for (LayoutEntry& entry : findLayout(pages_, salt_)) {
        if (entry.type == LayoutEntry::kForm) {
            form_ = entry.number;
        } else if (std::none_of(schema_.begin(), schema_.end(),
                                [&](const LayoutEntry& known) { return known.name == entry.name; })) {
            schema_.push_back(std::move(entry));
        }
    }
    if (schema_.empty()) {
        fail(errCannotOpen);
    }
    note("Part of the list of tables couldn't be read where it stands.");
}

void Salvage::carryTable(const LayoutEntry& entry) {
    if (entry.name == kSequence) {
        const auto missing = reader_.readTable(rootOf(entry), [this](const StoredRow& row) {
            const std::string* name = row.cells.size() == 2 ? textOf(row.cells[0]) : nullptr;
            const std::int64_t* number = name != nullptr ? std::get_if<std::int64_t>(&row.cells[1]) : nullptr;
            if (number != nullptr) {
                counters_.known.emplace_back(*name, *number);
            }
        });
        counters_.areAll = missing.empty();
        return;
    }
    if (entry.name != kQueries) {
        fresh_.connection().execute(entry.sql);
    }

    Salvaged table;
    table.entry = entry;
    for (const DeclaredColumn& column : columnsOf(fresh_.connection(), entry.name)) {
        const bool isText = column.type.find("TEXT") != std::string::npos;
        table.columns.push_back({column.name, column.isKey && sameName(column.type, "INTEGER"), isText,
                                 !isText && column.type.find("REAL") == std::string::npos, !column.needed});
    }
    std::string text = "INSERT OR IGNORE INTO " + quotedName(entry.name) + " VALUES(";
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        text += i == 0 ? "?" : ",?";
    }
    sqlite3_stmt* raw = nullptr;
    const int code =
        sqlite3_prepare_v2(fresh_.connection().handle(), (text + ')').c_str(), -1, &raw, nullptr);
    if (code != SQLITE_OK) {
        fresh_.connection().failWith(code);
    }
    table.insert.reset(raw, &sqlite3_finalize);
    std::vector<std::int64_t> strange;
    table.missing = reader_.readTable(rootOf(entry), [&](const StoredRow& row) {
        if (fits(table.columns, row)) {
            keep(table, row);
        } else {
            strange.push_back(row.rowid);
        }
    });
    table.missing.rows.insert(table.missing.rows.end(), strange.begin(), strange.end());
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
        fresh_.connection().failWith(code);
    }
    if (sqlite3_changes(fresh_.connection().handle()) == 0) {
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
    return inGap && row.cells.size() == table.columns.size() && fits(table.columns, row) &&
           std::equal(row.cells.begin(), row.cells.end(), table.columns.begin(),
                      [](const StoredCell& cell, const Column& column) {
                          const bool isNull = std::holds_alternative<std::monostate>(cell);
                          return isNull ? column.mayBeNull
                                        : !column.isWhole || std::holds_alternative<std::int64_t>(cell);
                      });
}

// Whether the table has never given such a number, or a whole index of it does not know the rows.
bool Salvage::isDisowned(Salvaged& table, const std::vector<StoredRow>& rows) {
    const std::optional<std::int64_t> highest = counters_.of(table.entry.name);
    if (highest &&
        std::any_of(rows.begin(), rows.end(), [&](const StoredRow& row) { return row.rowid > *highest; })) {
        return true;
    }
    const IndexFacts& facts = factsOf(table);
    return facts.column && std::any_of(rows.begin(), rows.end(), [&](const StoredRow& row) {
               return !facts.entries.contains({row.cells[*facts.column], row.rowid});
           });
}

const IndexFacts& Salvage::factsOf(Salvaged& table) {
    for (auto entry = schema_.begin(); !table.facts && entry != schema_.end(); ++entry) {
        const std::optional<std::size_t> column =
            isIndexOf(table, *entry) ? indexedColumn(table.columns, entry->sql) : std::nullopt;
        IndexFacts facts{column, {}};
        TreeReader reader(pages_);
        if (column && reader.readIndex(rootOf(*entry), [&](const auto& cells) {
                facts.entries.emplace(cells.front(), std::get<std::int64_t>(cells.back()));
            })) {
            table.facts = std::move(facts);
        }
    }
    if (!table.facts) {
        table.facts.emplace();
    }
    return *table.facts;
}

// Nothing where it could be more than one: rather lose a page than put one table's rows into another.
Salvaged* Salvage::ownerOf(const std::vector<StoredRow>& rows) {
    std::vector<Salvaged*> owners;
    for (Salvaged& table : tables_) {
        if (!rows.empty() && std::all_of(rows.begin(), rows.end(),
                                         [&](const StoredRow& row) { return couldBelong(table, row); })) {
            owners.push_back(&table);
        }
    }
    if (owners.size() > 1) {
        std::erase_if(owners, [&](Salvaged* table) { return isDisowned(*table, rows); });
    }
    return owners.size() == 1 ? owners.front() : nullptr;
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

std::int64_t Salvage::lossByIndex(const Salvaged& table, bool& known) {
    known = false;
    for (const LayoutEntry& entry : schema_) {
        std::vector<std::int64_t> listed;
        if (!isIndexOf(table, entry) || !reader_.readIndex(rootOf(entry), [&](const auto& cells) {
                listed.push_back(std::get<std::int64_t>(cells.back()));
            })) {
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
        std::max(counters_.of(table.entry.name).value_or(0), table.kept.empty() ? 0 : table.kept.back());
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
        if (!isSystemTable(table.entry.name)) {
            report_.tables.push_back({table.entry.name, static_cast<std::int64_t>(table.kept.size()), lost});
        }
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
    for (const LayoutEntry& entry : schema_) {
        if (entry.type != LayoutEntry::kIndex || entry.sql.empty()) {
            continue;
        }
        try {
            fresh_.connection().execute(entry.sql);
        } catch (const Error& error) {
            if (error.Number() != errDuplicateKey) {
                throw;
            }
            note("Index '" + entry.name + "' was left out: it would hold a value twice.");
        }
    }
}

void Salvage::carryCounters() {
    for (const auto& [table, number] : counters_.known) {
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

bool areTreesInOrder(SqliteStore& store) {
    const LongStatements longOnes(store.connection().handle());
    try {
        const std::optional<Value> verdict = store.prepare("PRAGMA integrity_check(1)")->scalar(Type::Text);
        return verdict && verdict->textRef() == "ok" && store.storedQueries().queryVersion("") == 0;
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

}  // namespace

bool isWhole(SqliteStore& store, const std::string& key) {
    const ReadScope scope(store);
    store.definitions().schemaVersion();  // from here on writers wait
    return PageFile(pagesOf(store), key).isAllWhole() && areTreesInOrder(store);
}

bool isWhole(const OpenRequest& file) {
    if (!PageFile(pagesOfClosed(file.path), file.key).isAllWhole()) {
        return false;
    }
    SqliteStore store(file);
    return areTreesInOrder(store);
}

bool isKeyOf(const std::string& path, const std::string& key) {
    PageFile pages(pagesOfClosed(path), key);
    for (PageNumber number = 1; number <= pages.size(); ++number) {
        if (pages.isWhole(number)) {
            return true;
        }
    }
    return false;
}

RepairReport salvage(const OpenRequest& broken, const OpenRequest& fresh) {
    PageFile pages(pagesOfClosed(broken.path), broken.key);
    SqliteStore store(fresh);
    return Salvage(pages, saltText(broken.key), store).run();
}

}  // namespace dao::driver
