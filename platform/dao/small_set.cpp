#include "platform/dao/small_set.h"

#include <algorithm>
#include <optional>

#include "platform/dao/failure.h"
#include "platform/sql/ast.h"

namespace dao {
namespace {

using Kind = sql::Expression::Kind;

bool asksForOneNumber(const sql::Expression& condition) {
    if (condition.kind == Kind::And) {
        return std::any_of(condition.children.begin(), condition.children.end(),
                           [](const sql::ExpressionPtr& each) { return asksForOneNumber(*each); });
    }
    return condition.kind == Kind::Compare && condition.op == sql::Expression::Op::Equal &&
           condition.children[0]->kind == Kind::Name && condition.children[1]->kind == Kind::Integer;
}

// The counter of the only table, which is the key of its rows.
std::optional<std::size_t> keyColumn(const KeysetView& set) {
    const std::vector<sql::ResultColumn>& columns = set.select().columns;
    if (set.select().sources.size() != 1) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (set.isCounterOf(columns[i])) {
            return i;
        }
    }
    return std::nullopt;
}

}  // namespace

std::shared_ptr<const SmallSet> SmallSet::read(const KeysetView& set) {
    const sql::Statement& tree = *set.compiled->tree;
    if (set.file().store().isFar() || tree.where == nullptr || !asksForOneNumber(*tree.where)) {
        return nullptr;
    }
    const std::optional<std::size_t> key = keyColumn(set);
    const auto opened = std::make_shared<SmallSet>();
    return key && opened->readFrom(set, *key) ? opened : nullptr;
}

// What cannot be read is told by whoever comes to that row: the others can be shown.
bool SmallSet::readFrom(const KeysetView& set, std::size_t key) {
    const QuietErrors quiet;
    try {
        driver::Store& store = set.file().store();
        generation_ = set.file().generation();
        version_ = store.rows().dataVersion();
        rows_.reset(typesOf(set.select().columns));
        const auto statement = store.cached(set.select().rows);
        driver::bindParameters(*statement, set.select().parameters);
        statement->readRows(rows_, 0, nullptr, kMost + 1);
    } catch (const Error&) {
        return false;
    }
    for (std::size_t row = 0; row < rows_.rows() && rows_.isInteger(row, key); ++row) {
        keys_.push_back(rows_.integer(row, key));
    }
    return rows_.rows() <= kMost && keys_.size() == rows_.rows();
}

KeyList SmallSet::keys() const {
    return KeyList(keys_);
}

}  // namespace dao
