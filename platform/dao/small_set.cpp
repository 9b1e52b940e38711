#include "platform/dao/small_set.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/key_order.h"
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

// What cannot be read is told by whoever comes to that row: the others can be shown.
std::shared_ptr<const SmallSet> SmallSet::read(const KeysetView& set) {
    const sql::Statement& tree = *set.compiled->tree;
    if (set.file().store().isFar() || tree.where == nullptr || !asksForOneNumber(*tree.where)) {
        return nullptr;
    }
    const std::optional<std::size_t> key = keyColumn(set);
    if (!key) {
        return nullptr;
    }
    const auto opened = std::make_shared<SmallSet>();
    const QuietErrors quiet;
    try {
        opened->note(set);
        const std::shared_ptr<const SmallSet> before = set.file().smallSet();
        if (before == nullptr || !opened->turnRound(*before, orderOf(set))) {
            opened->readFrom(set, *key);
        }
    } catch (const Error&) {
        return nullptr;
    }
    if (!opened->isWhole()) {
        return nullptr;
    }
    set.file().noteSmallSet(opened);
    return opened;
}

// A text that has more than one order in it is cut in the last of them: what is alike up to there is alike up
// to the first.
void SmallSet::note(const KeysetView& set) {
    const sql::WrittenSelect& select = set.select();
    generation_ = set.file().generation();
    version_ = set.file().store().rows().dataVersion();
    if (select.idSets.empty() && select.parameters.empty() && !select.asksTheTime) {
        which_ = select.rows.substr(0, select.rows.rfind(" ORDER BY "));
    }
}

void SmallSet::readFrom(const KeysetView& set, std::size_t key) {
    rows_.reset(typesOf(set.select().columns));
    const auto statement = set.file().store().cached(set.select().rows);
    driver::bindParameters(*statement, set.select().parameters);
    statement->readRows(rows_, 0, nullptr, kMost + 1);
    for (std::size_t row = 0; row < rows_.rows() && rows_.isInteger(row, key); ++row) {
        keys_.push_back(rows_.integer(row, key));
    }
}

// Nothing where the order is by anything but columns of the set.
std::vector<SmallSet::Term> SmallSet::orderOf(const KeysetView& set) {
    const std::vector<sql::ResultColumn>& columns = set.select().columns;
    std::vector<Term> order;
    for (const sql::OrderItem& item : set.compiled->tree->orderBy) {
        const sql::Expression& term = *item.expression;
        const auto column = std::find_if(columns.begin(), columns.end(), [&](const auto& each) {
            return term.kind == Kind::Name && term.qualifier.empty() && sameName(each.name, term.text);
        });
        if (column == columns.end()) {
            return {};
        }
        order.push_back({static_cast<std::size_t>(column - columns.begin()), item.descending});
    }
    return order;
}

// False where these are not the same rows, or have changed since, or cannot be ordered here. Rows that the
// order does not tell apart stand by their keys.
bool SmallSet::turnRound(const SmallSet& other, const std::vector<Term>& order) {
    if (order.empty() || which_.empty() || which_ != other.which_ || !other.stand(generation_, version_)) {
        return false;
    }
    KeyOrder rows(order.size() + 1);
    for (std::size_t i = 0; i < order.size(); ++i) {
        std::optional<std::vector<std::int64_t>> numbers = other.rows_.orderOf(order[i].column);
        if (!numbers) {
            return false;
        }
        if (order[i].descending) {
            std::transform(numbers->begin(), numbers->end(), numbers->begin(), std::bit_not<>());
        }
        rows.setColumn(i, *numbers);
    }
    rows.setColumn(order.size(), other.keys_);
    const std::vector<std::uint32_t> places = rows.order();
    rows_ = other.rows_;
    rows_.reorder(0, places);
    for (const std::uint32_t place : places) {
        keys_.push_back(other.keys_[place]);
    }
    return true;
}

KeyList SmallSet::keys() const {
    return KeyList(keys_);
}

}  // namespace dao
