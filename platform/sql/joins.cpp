#include "platform/sql/joins.h"

#include <utility>

#include "platform/sql/expressions.h"

namespace sql::writing {

namespace {

using Kind = Expression::Kind;

std::uint64_t bit(int leaf) {
    return std::uint64_t{1} << leaf;
}

// The leaves without a row of which a value is Null.
std::uint64_t nullMakers(const Expression& e, const Scope& scope) {
    switch (e.kind) {
        case Kind::Name: {
            const Scope::Place place = scope.find(e);
            return scope.resolve(e).source >= 0 ? bit(place.leaf) : 0;
        }
        case Kind::Negate:
        case Kind::Arithmetic: {
            std::uint64_t result = 0;
            for (const ExpressionPtr& child : e.children) {
                result |= nullMakers(*child, scope);
            }
            return result;
        }
        default:
            return 0;
    }
}

std::uint64_t neededByAll(const std::vector<const Expression*>& conditions, const Scope& scope) {
    std::uint64_t result = 0;
    for (const Expression* condition : conditions) {
        result |= neededLeaves(*condition, scope);
    }
    return result;
}

std::uint64_t leavesOfAll(const std::vector<const Expression*>& conditions, const Scope& scope) {
    std::uint64_t result = 0;
    for (const Expression* condition : conditions) {
        result |= leavesOf(*condition, scope);
    }
    return result;
}

JoinNodePtr joined(JoinNode::Kind kind, JoinNodePtr left, JoinNodePtr right,
                   std::vector<const Expression*> on) {
    auto result = std::make_unique<JoinNode>();
    result->kind = kind;
    result->mask = left->mask | right->mask;
    result->left = std::move(left);
    result->right = std::move(right);
    result->on = std::move(on);
    return result;
}

// L join (B join C) as (L join B) join C, with the conditions told.
JoinNodePtr rotated(JoinNodePtr node, JoinNode::Kind inner, std::vector<const Expression*> innerOn,
                    JoinNode::Kind outer, std::vector<const Expression*> outerOn) {
    JoinNodePtr right = std::move(node->right);
    JoinNodePtr first = joined(inner, std::move(node->left), std::move(right->left), std::move(innerOn));
    return joined(outer, std::move(first), std::move(right->right), std::move(outerOn));
}

// One step; false where nothing more can be done.
bool straightenStep(JoinNodePtr& node, const Scope& scope) {
    using NodeKind = JoinNode::Kind;
    JoinNode& right = *node->right;
    if (right.kind == NodeKind::Leaf) {
        return false;
    }
    const std::vector<const Expression*> on = node->on;
    std::vector<const Expression*> rightOn = right.on;
    const bool clearOfC = (leavesOfAll(on, scope) & right.right->mask) == 0;
    if (node->kind == NodeKind::Inner && right.kind == NodeKind::Inner) {
        rightOn.insert(rightOn.end(), on.begin(), on.end());
        node = rotated(std::move(node), NodeKind::Inner, {}, NodeKind::Inner, rightOn);
        return true;
    }
    if (node->kind == NodeKind::Inner && clearOfC) {
        node = rotated(std::move(node), NodeKind::Inner, on, NodeKind::Left, rightOn);
        return true;
    }
    if (node->kind == NodeKind::Inner && node->left->kind == NodeKind::Leaf) {
        std::swap(node->left, node->right);
        return true;
    }
    const bool asksForB = (neededByAll(rightOn, scope) & right.left->mask) != 0;
    if (node->kind == NodeKind::Left && right.kind == NodeKind::Left && clearOfC && asksForB) {
        node = rotated(std::move(node), NodeKind::Left, on, NodeKind::Left, rightOn);
        return true;
    }
    return false;
}

bool isKeyOf(const ScopeField& field, const Leaf& leaf, int first, int unique) {
    return field.counter && field.source >= 0 && leaf.unique >= 0 && first + field.source == unique;
}

class FromWriter {
 public:
    FromWriter(std::vector<Leaf>& leaves, Context& context, bool fetch)
        : leaves_(leaves), context_(context), dialect_(context.dialect), fetch_(fetch) {}

    std::string write(const JoinNode& node, std::vector<std::string>& conditions) {
        if (node.kind == JoinNode::Kind::Leaf) {
            return leaf(node, conditions);
        }
        std::string result = write(*node.left, conditions);
        std::vector<std::string> on;
        const bool outer = node.kind == JoinNode::Kind::Left;
        result += outer ? " LEFT JOIN " : " INNER JOIN ";
        if (node.right->kind == JoinNode::Kind::Leaf) {
            const Leaf& right = at(node.right->leaf);
            result += right.text;
            if (outer || !fetch_) {
                addConditions(right, on);
            }
        } else {
            // An absent row is absent because nothing met these conditions: fetching it has to ask for them
            // too.
            const bool fetching = std::exchange(fetch_, fetch_ && !outer);
            result += nested(*node.right);
            fetch_ = fetching;
        }
        const Scope scope(leaves_);
        ExpressionWriter writer(scope, context_);
        for (const Expression* condition : node.on) {
            int nesting = 0;
            on.push_back(
                dialect_.values.wrapped(writer.condition(*condition), kNot, nesting, condition->position));
        }
        if (on.empty()) {
            return dialect_.facts.joinNeedsCondition ? result + " ON TRUE" : result;
        }
        return result + " ON " + chain(on, " AND ", dialect_.facts.chainLength);
    }

 private:
    Leaf& at(int leaf) { return leaves_[static_cast<std::size_t>(leaf)]; }

    void addConditions(const Leaf& leaf, std::vector<std::string>& conditions) const {
        if (!leaf.condition.empty()) {
            conditions.push_back(leaf.condition);
        }
        if (leaf.idSet >= 0) {
            const std::string& text = leaf.idField.text;
            conditions.push_back(leaf.pinned ? dialect_.lookups.isInSet(leaf.idField, text, leaf.idSet)
                                             : dialect_.lookups.inSet(leaf.idField, text, leaf.idSet));
        }
    }

    std::string leaf(const JoinNode& node, std::vector<std::string>& conditions) {
        const Leaf& only = at(node.leaf);
        if (fetch_) {
            return only.text;
        }
        if (only.idSet < 0 || only.pinned || leaves_.size() > 1) {
            addConditions(only, conditions);
            return only.text;
        }
        // From the numbers to the rows, in the order of the numbers: the store would else gather the numbers
        // in a table of its own first.
        conditions.push_back(only.idField.text + " = s" + std::to_string(only.idSet) + ".value");
        if (!only.condition.empty()) {
            conditions.push_back(only.condition);
        }
        return dialect_.lookups.setSource(only.idSet) + " CROSS JOIN " + only.text;
    }

    // A join that has to be made before the one around it.
    std::string nested(const JoinNode& node) {
        std::vector<std::string> conditions;
        const std::string from = write(node, conditions);
        const std::string alias = context_.newAlias();
        SelectParts parts;
        parts.from = from;
        parts.conditions = conditions;
        const auto moveOut = [&](const Sql& sql) {
            parts.columns.push_back({sql, "c" + std::to_string(columnCount_++)});
            return alias + "." + parts.columns.back().name;
        };
        for (std::size_t l = 0; l < leaves_.size(); ++l) {
            if ((node.mask & bit(static_cast<int>(l))) == 0) {
                continue;
            }
            for (std::string& key : leaves_[l].keys) {
                key = moveOut({.text = key, .type = Type::Long});
            }
            for (ScopeField& field : leaves_[l].fields) {
                field.sql = dialect_.values.value(std::move(field.sql));
                field.sql.text = moveOut(field.sql);
                field.sql.precedence = kAtom;
                field.sql.nesting = 0;
            }
        }
        return "(" + dialect_.selects.select(parts) + ") AS " + alias;
    }

    std::vector<Leaf>& leaves_;
    Context& context_;
    const Dialect& dialect_;
    bool fetch_;
    int columnCount_ = 0;
};

}  // namespace

std::uint64_t leavesOf(const Expression& e, const Scope& scope) {
    if (e.kind == Kind::Name) {
        return bit(scope.find(e).leaf);
    }
    std::uint64_t result = 0;
    for (const ExpressionPtr& child : e.children) {
        result |= leavesOf(*child, scope);
    }
    return result;
}

std::uint64_t neededLeaves(const Expression& condition, const Scope& scope) {
    std::uint64_t result = 0;
    switch (condition.kind) {
        case Kind::Compare:
            return nullMakers(*condition.children[0], scope) | nullMakers(*condition.children[1], scope);
        case Kind::Between:
        case Kind::In:
        case Kind::InSet:
            return nullMakers(*condition.children[0], scope);
        case Kind::IsNull:
            return condition.negated ? nullMakers(*condition.children[0], scope) : 0;
        case Kind::And:
            for (const ExpressionPtr& child : condition.children) {
                result |= neededLeaves(*child, scope);
            }
            return result;
        case Kind::Or:
            result = ~std::uint64_t{0};
            for (const ExpressionPtr& child : condition.children) {
                result &= neededLeaves(*child, scope);
            }
            return result;
        case Kind::Not:
            // Only what turns Null into Null: NOT of a condition with AND in it can hold with a part of it
            // unknown.
            return condition.children[0]->kind == Kind::Compare ? neededLeaves(*condition.children[0], scope)
                                                                : 0;
        default:
            return 0;
    }
}

void reduceOuterJoins(JoinNode& node, std::uint64_t needed, const Scope& scope) {
    if (node.kind == JoinNode::Kind::Leaf) {
        return;
    }
    if (node.kind == JoinNode::Kind::Left && (node.right->mask & needed) != 0) {
        node.kind = JoinNode::Kind::Inner;
    }
    const std::uint64_t neededHere = neededByAll(node.on, scope);
    const bool inner = node.kind == JoinNode::Kind::Inner;
    reduceOuterJoins(*node.left, inner ? needed | neededHere : needed, scope);
    reduceOuterJoins(*node.right, needed | neededHere, scope);
}

void straighten(JoinNodePtr& node, const Scope& scope) {
    if (node->kind == JoinNode::Kind::Leaf) {
        return;
    }
    straighten(node->left, scope);
    straighten(node->right, scope);
    if (straightenStep(node, scope)) {
        straighten(node, scope);
    }
}

std::uint64_t nullableLeaves(const JoinNode& node) {
    if (node.kind == JoinNode::Kind::Leaf) {
        return 0;
    }
    const std::uint64_t right =
        node.kind == JoinNode::Kind::Left ? node.right->mask : nullableLeaves(*node.right);
    return nullableLeaves(*node.left) | right;
}

int firstSource(const std::vector<Leaf>& leaves, int leaf) {
    std::size_t result = 0;
    for (int l = 0; l < leaf; ++l) {
        result += leaves[static_cast<std::size_t>(l)].sources.size();
    }
    return static_cast<int>(result);
}

int uniqueSource(const JoinNode& node, const std::vector<Leaf>& leaves) {
    if (node.kind == JoinNode::Kind::Leaf) {
        const Leaf& leaf = leaves[static_cast<std::size_t>(node.leaf)];
        return leaf.unique < 0 ? -1 : firstSource(leaves, node.leaf) + leaf.unique;
    }
    const int left = uniqueSource(*node.left, leaves);
    const int right = uniqueSource(*node.right, leaves);
    const Scope scope(leaves);
    bool leftIsKey = false;
    bool rightIsKey = false;
    for (const Expression* condition : node.on) {
        if (condition->kind != Kind::Compare || condition->op != Expression::Op::Equal ||
            condition->children[0]->kind != Kind::Name || condition->children[1]->kind != Kind::Name) {
            continue;
        }
        for (const ExpressionPtr& side : condition->children) {
            const Expression& other =
                side == condition->children[0] ? *condition->children[1] : *condition->children[0];
            const Scope::Place place = scope.find(*side);
            const Leaf& leaf = leaves[static_cast<std::size_t>(place.leaf)];
            const bool onLeft = (node.left->mask & bit(place.leaf)) != 0;
            const std::uint64_t otherSide = onLeft ? node.right->mask : node.left->mask;
            if ((leavesOf(other, scope) & otherSide) == 0) {
                continue;
            }
            const int first = firstSource(leaves, place.leaf);
            bool& isKey = onLeft ? leftIsKey : rightIsKey;
            isKey = isKey || isKeyOf(scope.resolve(*side), leaf, first, onLeft ? left : right);
        }
    }
    return rightIsKey ? left : leftIsKey ? right : -1;
}

FromText writeFrom(const JoinNode& node, std::vector<Leaf> leaves, Context& context, bool fetch) {
    FromText result;
    result.leaves = std::move(leaves);
    result.text = FromWriter(result.leaves, context, fetch).write(node, result.conditions);
    return result;
}

}  // namespace sql::writing
