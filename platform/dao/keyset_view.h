#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/dao/database_impl.h"
#include "platform/dao/key_list.h"
#include "platform/dao/names.h"
#include "platform/sql/writer.h"

namespace dao {

// What the parts of a keyset see of it. All of it changes with a Requery, so that nobody keeps a copy.
struct KeysetView {
    const std::shared_ptr<DatabaseImpl>& database;
    const CompiledPtr& compiled;
    const KeyList& keys;
    const std::vector<sql::ResultColumn>& columns;
    const std::vector<char>& isCounter;  // of each column: the engine gives its number

    OpenFile& file() const { return database->file(); }
    const sql::WrittenSelect& select() const { return compiled->select; }
    // The source of which a row stands in one row of the set at most; -1 where there is none.
    int unique() const { return select().uniqueSource; }
    const std::string& table(int source) const {
        return select().sources[static_cast<std::size_t>(source)].table;
    }
    bool isCounterOf(const sql::ResultColumn& column) const {
        const sql::ColumnInfo* const counter = column.source < 0 ? nullptr : counterOf(column.source);
        return counter != nullptr && sameName(counter->name, column.field);
    }
    // nullptr where that table has none.
    const sql::ColumnInfo* counterOf(int source) const {
        const sql::TableInfo* const known = file().table(table(source));
        return known == nullptr ? nullptr : known->counter();
    }
};

}  // namespace dao
