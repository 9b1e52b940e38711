#include "platform/sql/select_texts.h"

#include <algorithm>
#include <utility>

namespace sql::writing {

std::vector<SelectedColumn> SelectTexts::columns() const {
    std::vector<SelectedColumn> result;
    result.reserve(body_.columns.size());
    for (const SelectColumn& column : body_.columns) {
        result.push_back({column.field.sql, ""});
    }
    return result;
}

std::vector<SelectedColumn> SelectTexts::keyColumns() const {
    const std::uint64_t nullable = nullableLeaves(source_.join());
    std::vector<SelectedColumn> result;
    for (std::size_t l = 0; l < body_.from.leaves.size(); ++l) {
        const Leaf& leaf = body_.from.leaves[l];
        for (std::size_t k = 0; k < leaf.keys.size(); ++k) {
            const bool maybeNull = leaf.sources[k].nullable || ((nullable >> l) & 1) != 0;
            result.push_back({{.text = leaf.keys[k], .type = Type::Long, .notNull = !maybeNull}, ""});
        }
    }
    return result;
}

// A SELECT of `columns` and nothing else said about them.
SelectParts SelectTexts::parts(std::vector<SelectedColumn> columns) const {
    SelectParts result;
    result.distinct = source_.statement().distinct;
    result.columns = std::move(columns);
    result.from = body_.from.text;
    result.conditions = body_.conditions;
    result.groups = body_.groups;
    return result;
}

std::string SelectTexts::part(std::vector<SelectedColumn> columns) const {
    return dialect_.selects.select(parts(std::move(columns)));
}

std::string SelectTexts::ordered(std::vector<SelectedColumn> columns) const {
    if (body_.from.linked) {
        return linked(columns);
    }
    SelectParts result = parts(std::move(columns));
    result.order = body_.order;
    // Rows that the statement does not order, or orders alike, always come in the same order: that of their
    // keys. Rows looked up by a set of numbers come in the order of the numbers, which is as good.
    if (source_.hasKeys() && !(dialect_.facts.setsInOrder && isBySet())) {
        for (const SelectedColumn& key : keyColumns()) {
            result.order.push_back({key.sql, false});
        }
    }
    return dialect_.selects.select(result);
}

// Each key and each other column once.
std::string SelectTexts::linked(const std::vector<SelectedColumn>& columns) const {
    SelectParts rows = parts(keyColumns());
    const std::size_t keys = rows.columns.size();
    std::vector<std::size_t> shown;
    for (const SelectedColumn& column : columns) {
        const auto key =
            std::find_if(rows.columns.begin(), rows.columns.begin() + static_cast<std::ptrdiff_t>(keys),
                         [&](const SelectedColumn& each) { return each.sql.text == column.sql.text; });
        shown.push_back(static_cast<std::size_t>(key - rows.columns.begin()));
        if (shown.back() == keys) {
            shown.back() = rows.columns.size();
            rows.columns.push_back(column);
        }
    }
    const Leaf& read = source_.leaves()[static_cast<std::size_t>(source_.unique())];
    return dialect_.selects.rowsByKeys(rows, keys, shown, read.table->name, read.keys.front());
}

// By a set of keys of its only table, and in no other order.
bool SelectTexts::isBySet() const {
    const Leaf& first = body_.from.leaves.front();
    return body_.order.empty() && body_.from.leaves.size() == 1 && first.idSet >= 0 && !first.pinned;
}

// The set by itself stands among the conditions.
IdSetPtr SelectTexts::keySet() const {
    return isBySet() && body_.conditions.size() == 1 ? body_.from.leaves.front().ids : nullptr;
}

std::string SelectTexts::fetch() const {
    SelectParts row = parts(columns());
    int number = numbers_.firstKey();
    for (const SelectedColumn& key : keyColumns()) {
        row.conditions.push_back(dialect_.lookups.isKeyParameter(key.sql.text, number++, !key.sql.notNull));
    }
    return dialect_.selects.select(row);
}

std::string SelectTexts::fetchList() const {
    const std::vector<SelectedColumn> keys = keyColumns();
    const bool all = std::all_of(keys.begin(), keys.end(), [](const auto& key) { return key.sql.notNull; });
    if (!all && !dialect_.facts.listsAbsentRows) {
        return {};
    }
    SelectParts list = parts(columns());
    for (std::size_t source = 0; source < keys.size(); ++source) {
        const Sql& key = keys[source].sql;
        list.conditions.push_back(dialect_.lookups.isListedKey(key.text, source, !key.notNull));
    }
    SelectedColumn place;
    place.sql.text = "k.n";
    place.sql.type = Type::Long;
    list.columns.insert(list.columns.begin(), std::move(place));
    // In front, and not behind an outer join, whose rows a store would go through for each of the list.
    list.from = dialect_.lookups.keyLists(numbers_.firstKey(), keys.size()) + ", " + list.from;
    return dialect_.selects.rowsOfLists(list);
}

std::string SelectTexts::range() const {
    const Leaf& only = source_.leaves().front();
    const std::string& key = only.keys.front();
    const int number = numbers_.firstKey();
    SelectParts range;
    range.columns = columns();
    range.columns.insert(range.columns.begin(), keyColumns().front());
    range.from = only.text;
    range.conditions.push_back(key + " BETWEEN " + dialect_.lookups.keyParameter(number) + " AND " +
                               dialect_.lookups.keyParameter(number + 1));
    range.order.push_back({range.columns.front().sql, false});
    return dialect_.selects.range(range);
}

// The row keys above the first parameter, ascending, no more of them than the second one says.
std::string SelectTexts::firstKeys() const {
    const SelectedColumn key = keyColumns().front();
    const int number = numbers_.firstKey();
    SelectParts first = parts({key});
    first.conditions.push_back(key.sql.text + " > " + dialect_.lookups.keyParameter(number));
    first.order.push_back({key.sql, false});
    return dialect_.selects.select(first) + " LIMIT " + dialect_.lookups.keyParameter(number + 1);
}

// The lowest row key, with the columns of its row. Without a bound, which a store that looks through the
// table would compare with every row.
std::string SelectTexts::firstRow() const {
    const SelectedColumn key = keyColumns().front();
    SelectParts first = parts(columns());
    first.columns.insert(first.columns.begin(), key);
    first.order.push_back({key.sql, false});
    return dialect_.selects.select(first) + " LIMIT 1";
}

}  // namespace sql::writing
