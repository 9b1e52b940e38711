#include "platform/sql/links.h"

#include <algorithm>

#include "platform/sql/expressions.h"

namespace sql::writing {

namespace {

using Kind = Expression::Kind;

bool isBareTable(const Leaf& leaf) {
    return leaf.table != nullptr && leaf.condition.empty() && leaf.idSet < 0 && leaf.keys.size() == 1;
}

}  // namespace

Links::Links(const JoinNode& join, const std::vector<Leaf>& leaves, int unique)
    : leaves_(leaves), first_(unique), links_(leaves.size()), passed_(leaves.size(), -1) {
    whole_ = unique >= 0 && leaves.size() > 1 && std::ranges::all_of(leaves, isBareTable) && gather(join) &&
             order() && choosePassed();
}

const ScopeField& Links::at(const Scope::Place& place) const {
    return leaves_[static_cast<std::size_t>(place.leaf)].fields[static_cast<std::size_t>(place.field)];
}

bool Links::gather(const JoinNode& node) {
    if (node.kind == JoinNode::Kind::Leaf) {
        return true;
    }
    return node.kind == JoinNode::Kind::Inner && gather(*node.left) && gather(*node.right) &&
           std::ranges::all_of(node.on, [this](const Expression* condition) { return gather(*condition); });
}

bool Links::gather(const Expression& condition) {
    if (condition.kind != Kind::Compare || condition.op != Expression::Op::Equal ||
        condition.children[0]->kind != Kind::Name || condition.children[1]->kind != Kind::Name) {
        return false;
    }
    const Scope scope(leaves_);
    const Scope::Place left = scope.find(*condition.children[0]);
    const Scope::Place right = scope.find(*condition.children[1]);
    return gather(left, right) || gather(right, left);
}

bool Links::gather(const Scope::Place& number, const Scope::Place& field) {
    Link& link = links_[static_cast<std::size_t>(number.leaf)];
    const bool fits = at(number).counter && number.leaf != first_ && number.leaf != field.leaf &&
                      link.from < 0 && at(field).source >= 0 && at(field).sql.type == Type::Long;
    if (fits) {
        link = {field.leaf, field.field};
    }
    return fits;
}

// False where the links go in a circle that the first table has no part in, or one is missing.
bool Links::order() {
    std::vector<bool> reached(leaves_.size(), false);
    reached[static_cast<std::size_t>(first_)] = true;
    for (bool more = true; more;) {
        more = false;
        for (std::size_t leaf = 0; leaf < leaves_.size(); ++leaf) {
            const int from = links_[leaf].from;
            if (!reached[leaf] && from >= 0 && reached[static_cast<std::size_t>(from)]) {
                reached[leaf] = more = true;
                order_.push_back(static_cast<int>(leaf));
            }
        }
    }
    return order_.size() + 1 == leaves_.size();
}

// A linked table passes on its own number and one more field.
bool Links::choosePassed() {
    for (const int leaf : order_) {
        const Link& link = links_[static_cast<std::size_t>(leaf)];
        if (link.from == first_ || at({link.from, link.field}).counter) {
            continue;
        }
        int& passed = passed_[static_cast<std::size_t>(link.from)];
        if (passed >= 0 && passed != link.field) {
            return false;
        }
        passed = link.field;
    }
    return true;
}

bool Links::isNumber(const Scope::Place& place) const {
    return place.leaf == first_ || at(place).counter ||
           passed_[static_cast<std::size_t>(place.leaf)] == place.field;
}

bool Links::serve(const Statement& statement) const {
    const bool narrowed = statement.where != nullptr && statement.orderBy.empty();
    if (!whole_ || !narrowed) {
        return false;
    }
    const Scope scope(leaves_);
    const auto isKnown = [&](const SelectItem& item) {
        bool known = !item.star;
        if (known) {
            eachName(*item.expression,
                     [&](const Expression& name) { known = known && isNumber(scope.find(name)); });
        }
        return known;
    };
    return leavesOf(*statement.where, scope) == std::uint64_t{1} << first_ &&
           std::ranges::all_of(statement.items, isKnown);
}

FromText Links::write(Context& context) const {
    FromText result;
    result.leaves = leaves_;
    result.text = leaves_[static_cast<std::size_t>(first_)].text;
    result.linked = true;
    for (const int number : order_) {
        const auto at = static_cast<std::size_t>(number);
        const Link& link = links_[at];
        const std::string from = result.leaves[static_cast<std::size_t>(link.from)]
                                     .fields[static_cast<std::size_t>(link.field)]
                                     .sql.text;
        Leaf& leaf = result.leaves[at];
        // A row that passes a number on to where there is a row is there itself.
        leaf.keys.front() = passed_[at] < 0 ? context.dialect.lookups.link(*leaf.table, "", from) : from;
        for (ScopeField& field : leaf.fields) {
            field.sql.text = field.counter ? leaf.keys.front()
                                           : context.dialect.lookups.link(*leaf.table, field.field, from);
        }
    }
    return result;
}

}  // namespace sql::writing
