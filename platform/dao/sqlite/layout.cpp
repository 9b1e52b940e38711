#include "platform/dao/sqlite/layout.h"

#include <algorithm>
#include <array>

#include "platform/dao/sqlite/btree.h"
#include "platform/dao/sqlite/connection.h"

namespace dao::driver {
namespace {

constexpr std::array<const char*, 2> kCopies{"dao_layout_1", "dao_layout_2"};
constexpr std::string_view kLayoutPrefix = "dao_layout_";
constexpr const char* kSchema = "schema";
constexpr std::size_t kSchemaCells = 5;

std::string markOf(const std::string& salt) {
    return "what this file holds, form 1, " + salt;
}

const std::string* textOf(const StoredCell& cell) {
    return std::get_if<std::string>(&cell);
}

// The cells from `first` on: type, name, table, number, statement. An index of the library's own has none.
bool readEntry(const StoredRow& row, std::size_t first, LayoutEntry& entry) {
    const std::string* const type = textOf(row.cells[first]);
    const std::string* const name = textOf(row.cells[first + 1]);
    const std::string* const table = textOf(row.cells[first + 2]);
    const auto* const number = std::get_if<std::int64_t>(&row.cells[first + 3]);
    const std::string* const sql = textOf(row.cells[first + 4]);
    if (type == nullptr || name == nullptr || table == nullptr || number == nullptr) {
        return false;
    }
    entry = {*type, *name, *table, sql == nullptr ? std::string() : *sql, *number};
    return true;
}

bool isKnown(const std::vector<LayoutEntry>& entries, const LayoutEntry& entry) {
    return std::any_of(entries.begin(), entries.end(), [&](const LayoutEntry& other) {
        return other.type == entry.type && other.name == entry.name;
    });
}

bool isOwnEntry(const LayoutEntry& entry) {
    return (entry.type == LayoutEntry::kTable || entry.type == LayoutEntry::kIndex) &&
           entry.sql.compare(0, 7, "CREATE ") == 0;
}

// In the table `copy`: what is no more goes, what is new comes, the rest stays as it is.
void writeCopy(SqliteConnection& file, const std::string& copy, const Value& mark) {
    const auto run = [&](const std::string& text) {
        const auto statement = file.prepare(text);
        statement->bind(1, mark);
        statement->run();
    };
    run("DELETE FROM " + copy +
        " WHERE mark<>?1 OR NOT EXISTS(SELECT 1 FROM sqlite_master AS m WHERE m.type=" + copy +
        ".type AND m.name=" + copy + ".name AND m.tbl_name=" + copy + ".tbl AND m.rootpage=" + copy +
        ".number AND m.sql IS " + copy + ".sql)");
    run("INSERT INTO " + copy +
        "(mark,type,name,tbl,number,sql) SELECT ?1,type,name,tbl_name,rootpage,sql FROM sqlite_master AS m "
        "WHERE name NOT LIKE 'dao!_layout!_%' ESCAPE '!' AND NOT EXISTS(SELECT 1 FROM " +
        copy + " AS l WHERE l.type=m.type AND l.name=m.name)");
}

void writeNumber(SqliteConnection& file, const std::string& copy, const Value& mark, const char* type,
                 std::int64_t number) {
    const auto statement =
        file.prepare("INSERT INTO " + copy + "(mark,type,name,tbl,number) VALUES(?1,?2,'','',?3)");
    statement->bind(1, mark);
    statement->bind(2, Value(std::string(type)));
    statement->bindInteger(3, number);
    statement->run();
}

// Every row of a leaf of some table, wherever it stands in the file.
void forEachRow(PageFile& pages, const TreeReader::OnRow& onRow) {
    for (PageNumber number = 2; number <= pages.size(); ++number) {
        TreeReader reader(pages);
        TreeReader::Missing missing;
        reader.readStrayLeaf(number, onRow, missing);
    }
}

}  // namespace

bool isLayoutTable(std::string_view name) {
    return name.substr(0, kLayoutPrefix.size()) == kLayoutPrefix;
}

bool hasFreshLayout(SqliteConnection& file, Definitions& definitions, const std::string& salt) {
    const std::int64_t version = definitions.schemaVersion();
    std::vector<std::int64_t> tables;
    file.prepare("SELECT 1 FROM sqlite_master WHERE type='table' AND name IN('dao_layout_1','dao_layout_2')")
        ->readKeys(tables, 1);
    if (tables.size() != kCopies.size()) {
        return false;
    }
    return std::all_of(kCopies.begin(), kCopies.end(), [&](const std::string& copy) {
        const auto read = file.prepare("SELECT number FROM " + copy + " WHERE mark=?1 AND type=?2");
        read->bind(1, Value(markOf(salt)));
        read->bind(2, Value(std::string(kSchema)));
        std::vector<std::int64_t> versions;
        read->readKeys(versions, 1);
        return versions.size() == 1 && versions.front() == version;
    });
}

void writeLayout(SqliteConnection& file, Definitions& definitions, const std::string& salt,
                 std::int64_t order) {
    const Value mark(markOf(salt));
    for (const std::string copy : kCopies) {
        file.prepare("CREATE TABLE IF NOT EXISTS " + copy +
                     "(id INTEGER PRIMARY KEY, mark TEXT, type TEXT, name TEXT, tbl TEXT, number INTEGER, "
                     "sql TEXT)")
            ->run();
    }
    for (const std::string copy : kCopies) {
        writeCopy(file, copy, mark);
        writeNumber(file, copy, mark, LayoutEntry::kForm, definitions.form());
        writeNumber(file, copy, mark, LayoutEntry::kOrder, order);
        writeNumber(file, copy, mark, kSchema, definitions.schemaVersion());
    }
}

bool readSchemaRow(const StoredRow& row, LayoutEntry& entry) {
    return row.cells.size() == kSchemaCells && readEntry(row, 0, entry);
}

std::vector<LayoutEntry> findLayout(PageFile& pages, const std::string& salt) {
    const std::string mark = markOf(salt);
    std::vector<LayoutEntry> marked;
    std::vector<LayoutEntry> listed;
    forEachRow(pages, [&](const StoredRow& row) {
        LayoutEntry entry;
        if (row.cells.size() == kSchemaCells + 2) {
            const std::string* const text = textOf(row.cells[1]);
            if (text != nullptr && *text == mark && readEntry(row, 2, entry) && !isKnown(marked, entry)) {
                marked.push_back(std::move(entry));
            }
        } else if (readSchemaRow(row, entry) && isOwnEntry(entry) && !isKnown(listed, entry)) {
            listed.push_back(std::move(entry));
        }
    });
    return marked.empty() ? listed : marked;
}

}  // namespace dao::driver
