#include "platform/sql/select_source.h"

#include <algorithm>
#include <utility>

#include "platform/sql/expressions.h"

namespace sql::writing {
namespace {

using Kind = Expression::Kind;

// The leaves of a FROM in their order, and the tree of their joins.
class FromBinder {
 public:
    FromBinder(Context& context, SelectSource::BindLeaf bindLeaf) : context_(context), bindLeaf_(bindLeaf) {}

    JoinNodePtr bind(const FromNode& from);
    std::vector<Leaf> takeLeaves() { return std::move(leaves_); }

 private:
    JoinNodePtr bindJoin(const FromNode& from);
    void bindConditions(const FromNode& from, JoinNode& node) const;
    void addLeaf(const FromNode& from);
    void checkTables(std::size_t position) const;

    Context& context_;
    SelectSource::BindLeaf bindLeaf_;
    std::vector<Leaf> leaves_;
};

JoinNodePtr FromBinder::bind(const FromNode& from) {
    if (from.left != nullptr) {
        return bindJoin(from);
    }
    addLeaf(from);
    auto node = std::make_unique<JoinNode>();
    node->leaf = static_cast<int>(leaves_.size()) - 1;
    node->mask = std::uint64_t{1} << node->leaf;
    return node;
}

JoinNodePtr FromBinder::bindJoin(const FromNode& from) {
    auto node = std::make_unique<JoinNode>();
    node->left = bind(*from.left);
    node->right = bind(*from.right);
    node->mask = node->left->mask | node->right->mask;
    const bool outer = from.kind == FromNode::Kind::Left || from.kind == FromNode::Kind::Right;
    node->kind = outer ? JoinNode::Kind::Left : JoinNode::Kind::Inner;
    if (from.kind == FromNode::Kind::Right) {
        std::swap(node->left, node->right);
    }
    bindConditions(from, *node);
    return node;
}

void FromBinder::bindConditions(const FromNode& from, JoinNode& node) const {
    node.on = conjuncts(from.on);
    const Scope scope(leaves_);
    for (const Expression* condition : node.on) {
        if ((leavesOf(*condition, scope) & ~node.mask) != 0) {
            throw SyntaxError("A join's condition names a table that is not part of the join.",
                              condition->position);
        }
    }
}

void FromBinder::addLeaf(const FromNode& from) {
    context_.countSource(from.position);
    const std::string& name = from.alias.empty() ? from.name : from.alias;
    for (const Leaf& leaf : leaves_) {
        if (!name.empty() && sameName(leaf.name, name)) {
            throw SyntaxError("The name '" + name + "' stands twice behind FROM; give one of them another.",
                              from.position);
        }
    }
    leaves_.push_back(bindLeaf_(from, name, context_));
    checkTables(from.position);
}

void FromBinder::checkTables(std::size_t position) const {
    constexpr std::size_t kMaxKeys = 60;  // the store joins 64 tables at most, however deep they stand
    std::size_t tables = 0;
    for (const Leaf& leaf : leaves_) {
        tables += std::max<std::size_t>(leaf.sources.size(), 1);
    }
    if (tables > kMaxKeys) {
        throw SyntaxError("The statement joins too many tables.", position);
    }
}

bool asksForGroups(const Statement& statement) {
    const auto counts = [](const SelectItem& item) {
        return item.expression != nullptr && ExpressionWriter::hasAggregate(*item.expression);
    };
    return !statement.groupBy.empty() || statement.having != nullptr ||
           std::any_of(statement.items.begin(), statement.items.end(), counts);
}

}  // namespace

SelectSource::SelectSource(const Statement& statement, Context& context, BindLeaf bindLeaf)
    : statement_(statement), grouped_(asksForGroups(statement)) {
    FromBinder from(context, bindLeaf);
    join_ = from.bind(*statement.from);
    leaves_ = from.takeLeaves();
    const auto isKeyless = [](const Leaf& leaf) { return leaf.keys.empty(); };
    hasKeys_ = !grouped_ && !statement.distinct && std::none_of(leaves_.begin(), leaves_.end(), isKeyless);
    unique_ = hasKeys_ ? uniqueSource(*join_, leaves_) : -1;
    const Scope scope(leaves_);
    shortenJoins(scope);
    if (leaves_.size() == 1) {
        findIdSet(scope, context);
        Leaf& only = leaves_.front();
        only.pinned = only.pinned || isPinned(scope);
    }
}

void SelectSource::shortenJoins(const Scope& scope) {
    std::uint64_t needed = 0;
    for (const Expression* condition : conjuncts(statement_.where)) {
        needed |= neededLeaves(*condition, scope);
    }
    reduceOuterJoins(*join_, needed, scope);
    straighten(join_, scope);
}

// A large set of numbers of the only table's key: its rows are looked up by them instead of being searched
// through.
void SelectSource::findIdSet(const Scope& scope, Context& context) {
    Leaf& only = leaves_.front();
    if (only.table == nullptr || only.idSet >= 0 || !hasKeys_) {
        return;
    }
    for (const Expression* condition : conjuncts(statement_.where)) {
        if (condition->kind != Kind::InSet || condition->ids->size() <= kInlineIds) {
            continue;
        }
        const ScopeField& field = scope.resolve(*condition->children[0]);
        if (field.counter) {
            driver_ = condition;
            only.idSet = context.dialect.lookups.addSet(context.numbers, condition->ids);
            only.ids = condition->ids;
            only.idField = field.sql;
            return;
        }
    }
}

// The computers of one client: they are few, whatever set they are also asked to be in.
bool SelectSource::isPinned(const Scope& scope) const {
    const auto conditions = conjuncts(statement_.where);
    return std::any_of(conditions.begin(), conditions.end(), [&](const Expression* condition) {
        const bool equal = condition->kind == Kind::Compare && condition->op == Expression::Op::Equal;
        const auto isField = [](const Expression& e) { return e.kind == Kind::Name; };
        const auto isOneValue = [&](const Expression& e) { return leavesOf(e, scope) == 0; };
        return equal && ((isField(*condition->children[0]) && isOneValue(*condition->children[1])) ||
                         (isField(*condition->children[1]) && isOneValue(*condition->children[0])));
    });
}

bool SelectSource::isOneTable() const {
    return leaves_.size() == 1 && hasKeys_ && leaves_.front().table != nullptr;
}

std::vector<const Expression*> SelectSource::conditions() const {
    std::vector<const Expression*> all = conjuncts(statement_.where);
    std::erase(all, driver_);
    return all;
}

std::vector<ResultSource> SelectSource::sources() const {
    const std::uint64_t nullable = nullableLeaves(*join_);
    std::vector<ResultSource> result;
    for (std::size_t l = 0; hasKeys_ && l < leaves_.size(); ++l) {
        for (ResultSource source : leaves_[l].sources) {
            source.nullable = source.nullable || ((nullable >> l) & 1) != 0;
            result.push_back(std::move(source));
        }
    }
    return result;
}

}  // namespace sql::writing
