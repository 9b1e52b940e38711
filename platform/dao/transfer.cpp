#include "platform/dao/transfer.h"

#include <algorithm>

#include "platform/dao/failure.h"
#include "platform/dao/file_catalog.h"
#include "platform/dao/names.h"
#include "platform/dao/open_file.h"
#include "platform/dao/read_scope.h"
#include "platform/dao/row_block.h"
#include "platform/dao/table_definition.h"
#include "platform/dao/table_reader.h"
#include "platform/text/utf8.h"

namespace dao {
namespace {

std::int64_t rowsIn(driver::Store& store, const std::vector<sql::TableInfo>& tables) {
    std::int64_t rows = 0;
    for (const sql::TableInfo& table : tables) {
        rows += static_cast<std::int64_t>(store.rows().readAllKeys(table.name).size());
    }
    return rows;
}

// A table stands behind those that its rows belong to.
std::vector<sql::TableInfo> inOrder(std::vector<sql::TableInfo> tables,
                                    const std::vector<Relation>& relations) {
    std::vector<sql::TableInfo> ordered;
    const auto isDone = [&](const std::string& name) {
        return std::any_of(ordered.begin(), ordered.end(),
                           [&](const sql::TableInfo& table) { return sameName(table.name, name); });
    };
    const auto isReady = [&](const sql::TableInfo& table) {
        return std::all_of(relations.begin(), relations.end(), [&](const Relation& relation) {
            return !sameName(relation.foreignTable, table.name) || sameName(relation.table, table.name) ||
                   isDone(relation.table);
        });
    };
    while (!tables.empty()) {
        const auto next = std::find_if(tables.begin(), tables.end(), isReady);
        if (next == tables.end()) {
            fail(errInvalidOperation, "The tables of this database refer to each other in a circle.");
        }
        ordered.push_back(std::move(*next));
        tables.erase(next);
    }
    return ordered;
}

void copyRows(driver::Store& from, driver::Store& to, const FileCatalog& catalog, const sql::TableInfo& table,
              RowState& state, const RowWatch& watch) {
    state.table = table.name;
    std::vector<std::string_view> fields;
    fields.reserve(table.columns.size());
    for (const sql::ColumnInfo& column : table.columns) {
        fields.push_back(column.name);
    }
    TableReader reader(from, catalog, table);
    while (reader.next()) {
        to.rows().insertRows(table.name, fields, reader.block());
        state.done += static_cast<std::int64_t>(reader.block().rows());
        if (watch) {
            watch(state);
        }
    }
    if (const std::int64_t highest = from.counters().highestNumber(table.name); highest > 0) {
        to.counters().setHighestNumber(table.name, highest);
    }
}

bool areSame(const RowBlock& one, const RowBlock& other) {
    if (one.rows() != other.rows() || one.columns() != other.columns()) {
        return false;
    }
    Value a;
    Value b;
    for (std::size_t row = 0; row < one.rows(); ++row) {
        for (std::size_t column = 0; column < one.columns(); ++column) {
            one.get(row, column, a);
            other.get(row, column, b);
            if (!(a == b)) {
                return false;
            }
        }
    }
    return true;
}

// The texts that are not sound, as a person can find them: as many as fit into a message.
class UnsoundTexts {
 public:
    void add(const std::string& place) {
        if (++count_ <= kMostNamed) {
            named_ += '\n' + place;
        }
    }
    void needNone() const {
        if (count_ == 0) {
            return;
        }
        const std::size_t more = count_ - std::min(count_, kMostNamed);
        fail(
            errTextNotSound,
            "The shop holds texts that a server does not keep; they are not valid UTF-8, or they hold a zero "
            "character. Type them anew first:" +
                named_ + (more > 0 ? "\nand " + std::to_string(more) + " more" : ""));
    }

 private:
    static constexpr std::size_t kMostNamed = 20;
    std::size_t count_ = 0;
    std::string named_;
};

void findUnsound(driver::Store& store, const FileCatalog& catalog, const sql::TableInfo& table,
                 UnsoundTexts& found) {
    TableReader reader(store, catalog, table);
    Value value;
    const auto look = [&](std::size_t row, std::size_t column) {
        reader.block().get(row, column, value);
        if (!alphabet::isSound(value.textRef())) {
            found.add("table " + table.name + ", key " + std::to_string(reader.key(row)) + ", field " +
                      table.columns[column].name);
        }
    };
    while (reader.next()) {
        for (std::size_t row = 0; row < reader.block().rows(); ++row) {
            for (std::size_t column = 0; column < table.columns.size(); ++column) {
                look(row, column);
            }
        }
    }
}

[[noreturn]] void failDifferent(const std::string& what) {
    fail(errDiskIo, "The copy does not hold the same as what it was made from: " + what + ".");
}

}  // namespace

void transfer(driver::Store& from, driver::Store& to, const RowWatch& watch) {
    FileCatalog catalog(from);
    catalog.refresh();
    const std::vector<Relation> relations = from.definitions().relations();
    const std::vector<sql::TableInfo> tables = inOrder(catalog.tables(), relations);
    for (const sql::TableInfo& table : tables) {
        to.definitions().createTable(definitionOf(table));
    }
    for (const Relation& relation : relations) {
        to.definitions().createRelation(relation);
    }
    RowState state;
    state.all = watch ? rowsIn(from, tables) : 0;
    for (const sql::TableInfo& table : tables) {
        copyRows(from, to, catalog, table, state, watch);
    }
    for (const driver::IndexRow& index : from.definitions().indexes()) {
        to.definitions().createIndex(index.table, index.field, index.unique);
    }
    for (const driver::StoredQueryRow& query : from.storedQueries().queries()) {
        to.storedQueries().writeQuery(query.name,
                                      from.storedQueries().queryText(query.name).value_or(std::string()));
    }
    to.definitions().setForm(from.definitions().form());
}

void needSoundTexts(driver::Store& store) {
    const ReadScope reading(store);
    FileCatalog catalog(store);
    catalog.refresh();
    UnsoundTexts found;
    for (const sql::TableInfo& table : catalog.tables()) {
        findUnsound(store, catalog, table, found);
    }
    for (const driver::StoredQueryRow& query : store.storedQueries().queries()) {
        if (!alphabet::isSound(store.storedQueries().queryText(query.name).value_or(std::string()))) {
            found.add("stored query " + query.name);
        }
    }
    found.needNone();
}

void needSameRows(driver::Store& one, driver::Store& other, const RowWatch& watch) {
    FileCatalog ours(one);
    FileCatalog theirs(other);
    ours.refresh();
    theirs.refresh();
    RowState state;
    state.comparing = true;
    state.all = watch ? rowsIn(one, ours.tables()) : 0;
    for (const sql::TableInfo& table : ours.tables()) {
        const sql::TableInfo* twin = theirs.findTable(table.name);
        if (twin == nullptr) {
            failDifferent("the table '" + table.name + "' is missing");
        }
        TableReader a(one, ours, table);
        TableReader b(other, theirs, *twin);
        if (a.size() != b.size() ||
            one.counters().highestNumber(table.name) != other.counters().highestNumber(table.name)) {
            failDifferent("the table '" + table.name + "' has " + std::to_string(b.size()) + " rows, not " +
                          std::to_string(a.size()));
        }
        while (a.next() && b.next()) {
            if (!areSame(a.block(), b.block())) {
                failDifferent("a row of the table '" + table.name + "'");
            }
            state.table = table.name;
            state.done += static_cast<std::int64_t>(a.block().rows());
            if (watch) {
                watch(state);
            }
        }
    }
    for (const driver::StoredQueryRow& query : one.storedQueries().queries()) {
        if (one.storedQueries().queryText(query.name) != other.storedQueries().queryText(query.name)) {
            failDifferent("the stored query '" + query.name + "'");
        }
    }
}

}  // namespace dao
