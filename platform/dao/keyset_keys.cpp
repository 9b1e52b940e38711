#include "platform/dao/keyset_keys.h"

#include "platform/sql/ast.h"
#include "platform/sql/parser.h"

namespace dao {
namespace {

std::vector<std::int64_t> readKeys(const KeysetView& set) {
    const auto statement = set.file().store().cached(set.select().keys);
    driver::bindParameters(*statement, set.select().parameters);
    std::vector<std::int64_t> keys;
    statement->readKeys(keys, static_cast<int>(set.select().sources.size()));
    return keys;
}

// The table that the statement gives every row of, as they stand; nullptr where it does anything more.
const sql::TableInfo* wholeTable(const FileCatalog& catalog, const sql::Statement& tree, int depth = 0) {
    const bool plain = !tree.distinct && tree.where == nullptr && tree.orderBy.empty() &&
                       tree.groupBy.empty() && tree.having == nullptr && tree.from != nullptr &&
                       tree.from->kind == sql::FromNode::Kind::Table && depth <= sql::kMaxQueryDepth;
    if (!plain) {
        return nullptr;
    }
    if (const sql::TableInfo* table = catalog.findTable(tree.from->name)) {
        return table;
    }
    const sql::StatementPtr query = catalog.findQuery(tree.from->name);
    return query == nullptr ? nullptr : wholeTable(catalog, *query, depth + 1);
}

}  // namespace

KeyList statementKeys(const KeysetView& set) {
    const sql::WrittenSelect& select = set.select();
    const bool single = select.sources.size() == 1;
    driver::Rows& rows = set.file().store().rows();
    if (single) {
        if (const sql::TableInfo* whole = wholeTable(set.file().catalog(), *set.compiled->tree)) {
            return rows.readAllKeys(whole->name);
        }
    }
    if (select.keySet != nullptr) {
        if (auto keys = rows.readKeysAmong(select.sources.front().table, *select.keySet)) {
            return std::move(*keys);
        }
    }
    return KeyList(readKeys(set), static_cast<int>(select.sources.size()), single ? 0 : set.unique());
}

std::vector<std::int64_t> joinedKeys(const KeysetView& set, std::int64_t key) {
    const std::vector<std::int64_t> keys = readKeys(set);
    const auto stride = static_cast<std::ptrdiff_t>(set.keys.stride());
    for (auto row = keys.cbegin(); keys.cend() - row >= stride; row += stride) {
        if (row[set.unique()] == key) {
            return {row, row + stride};
        }
    }
    return {};
}

}  // namespace dao
