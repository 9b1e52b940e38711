#include "platform/sql/select.h"

#include <algorithm>
#include <utility>

#include "platform/sql/links.h"

namespace sql::writing {

namespace {

using Kind = Expression::Kind;

Leaf tableLeaf(const TableInfo& table, std::string name, Context& context) {
    Leaf leaf;
    leaf.name = std::move(name);
    leaf.table = &table;
    const std::string alias = context.plainAliases ? quotedName(table.name) : context.newAlias();
    leaf.text = context.dialect.table(table);
    if (!context.plainAliases) {
        leaf.text += " AS " + alias;
    }
    leaf.sources.push_back({table.name, false});
    leaf.keys.push_back(context.dialect.rowKey(table, alias));
    leaf.unique = 0;
    for (const ColumnInfo& column : table.columns) {
        ScopeField field;
        field.name = column.name;
        field.sql.text = alias + "." + quotedName(column.name);
        field.sql.type = column.type;
        field.sql.real =
            column.type == Type::Single || column.type == Type::Double || column.type == Type::Date;
        field.size = column.size;
        field.counter = column.counter;
        field.source = 0;
        field.field = column.name;
        leaf.fields.push_back(std::move(field));
    }
    return leaf;
}

}  // namespace

Leaf bindName(const std::string& name, const std::string& visibleName, std::size_t position,
              Context& context) {
    if (const TableInfo* table = context.catalog.findTable(name)) {
        return tableLeaf(*table, visibleName, context);
    }
    const StatementPtr query = context.catalog.findQuery(name);
    if (query == nullptr) {
        throw NameError(NameError::Kind::Table, name);
    }
    if (query->kind != Statement::Kind::Select) {
        throw SyntaxError("The stored query '" + name + "' changes rows; it has none to select from.",
                          position);
    }
    const bool circle = std::any_of(context.openQueries.begin(), context.openQueries.end(),
                                    [&](const std::string& open) { return sameName(open, name); });
    if (circle || context.openQueries.size() >= kMaxQueryDepth) {
        throw SyntaxError("The stored query '" + name + "' " +
                              (circle ? "refers to itself." : "stands too deep inside other stored queries."),
                          position);
    }
    context.openQueries.push_back(name);
    Leaf leaf = SelectWriter(*query, context).asLeaf(visibleName);
    context.openQueries.pop_back();
    return leaf;
}

SelectWriter::SelectWriter(const Statement& statement, Context& context)
    : statement_(statement), context_(context) {
    join_ = bindFrom(*statement.from);
    grouped_ = !statement.groupBy.empty() || statement.having != nullptr;
    for (const SelectItem& item : statement.items) {
        grouped_ =
            grouped_ || (item.expression != nullptr && ExpressionWriter::hasAggregate(*item.expression));
    }
    hasKeys_ =
        !grouped_ && !statement.distinct &&
        std::none_of(leaves_.begin(), leaves_.end(), [](const Leaf& leaf) { return leaf.keys.empty(); });
    const Scope scope(leaves_);
    unique_ = hasKeys_ ? uniqueSource(*join_, leaves_) : -1;
    std::uint64_t needed = 0;
    for (const Expression* condition : conjuncts(statement.where)) {
        needed |= neededLeaves(*condition, scope);
    }
    reduceOuterJoins(*join_, needed, scope);
    straighten(join_, scope);
    findIdSet(scope);
    if (leaves_.size() == 1) {
        Leaf& only = leaves_.front();
        only.pinned = only.pinned || isPinned(scope);
    }
}

// The computers of one client: they are few, whatever set they are also asked to be in.
bool SelectWriter::isPinned(const Scope& scope) const {
    const auto conditions = conjuncts(statement_.where);
    return std::any_of(conditions.begin(), conditions.end(), [&](const Expression* condition) {
        const bool equal = condition->kind == Kind::Compare && condition->op == Expression::Op::Equal;
        const auto isField = [](const Expression& e) { return e.kind == Kind::Name; };
        const auto isOneValue = [&](const Expression& e) { return leavesOf(e, scope) == 0; };
        return equal && ((isField(*condition->children[0]) && isOneValue(*condition->children[1])) ||
                         (isField(*condition->children[1]) && isOneValue(*condition->children[0])));
    });
}

// A large set of numbers of the only table's key: its rows are looked up by them instead of being searched
// through.
void SelectWriter::findIdSet(const Scope& scope) {
    Leaf& only = leaves_.front();
    if (leaves_.size() > 1 || only.table == nullptr || only.idSet >= 0 || !hasKeys_) {
        return;
    }
    for (const Expression* condition : conjuncts(statement_.where)) {
        if (condition->kind != Kind::InSet || condition->ids->size() <= kInlineIds) {
            continue;
        }
        const ScopeField& field = scope.resolve(*condition->children[0]);
        if (field.counter) {
            driver_ = condition;
            only.idSet = context_.dialect.addSet(context_.numbers, condition->ids);
            only.ids = condition->ids;
            only.idField = field.sql;
            return;
        }
    }
}

JoinNodePtr SelectWriter::bindFrom(const FromNode& from) {
    auto node = std::make_unique<JoinNode>();
    if (from.left == nullptr) {
        bindSource(from);
        node->leaf = static_cast<int>(leaves_.size()) - 1;
        node->mask = std::uint64_t{1} << node->leaf;
        return node;
    }
    node->left = bindFrom(*from.left);
    node->right = bindFrom(*from.right);
    node->mask = node->left->mask | node->right->mask;
    const bool outer = from.kind == FromNode::Kind::Left || from.kind == FromNode::Kind::Right;
    node->kind = outer ? JoinNode::Kind::Left : JoinNode::Kind::Inner;
    if (from.kind == FromNode::Kind::Right) {
        std::swap(node->left, node->right);
    }
    node->on = conjuncts(from.on);
    const Scope scope(leaves_);
    for (const Expression* condition : node->on) {
        if ((leavesOf(*condition, scope) & ~node->mask) != 0) {
            throw SyntaxError("A join's condition names a table that is not part of the join.",
                              condition->position);
        }
    }
    return node;
}

void SelectWriter::bindSource(const FromNode& from) {
    context_.countSource(from.position);
    const std::string& name = from.alias.empty() ? from.name : from.alias;
    for (const Leaf& leaf : leaves_) {
        if (!name.empty() && sameName(leaf.name, name)) {
            throw SyntaxError("The name '" + name + "' stands twice behind FROM; give one of them another.",
                              from.position);
        }
    }
    if (from.kind == FromNode::Kind::Select) {
        leaves_.push_back(SelectWriter(*from.select, context_).asLeaf(name));
    } else {
        leaves_.push_back(bindName(from.name, name, from.position, context_));
    }
    constexpr std::size_t kMaxKeys = 60;  // the store joins 64 tables at most, however deep they stand
    std::size_t tables = 0;
    for (const Leaf& leaf : leaves_) {
        tables += std::max<std::size_t>(leaf.sources.size(), 1);
    }
    if (tables > kMaxKeys) {
        throw SyntaxError("The statement joins too many tables.", from.position);
    }
}

void SelectWriter::addStar(const SelectItem& item, const std::vector<Leaf>& leaves,
                           std::vector<Column>& result) const {
    if (grouped_) {
        throw SyntaxError("Every field (*) cannot be selected where rows are grouped.", item.position);
    }
    bool found = false;
    for (std::size_t l = 0; l < leaves.size(); ++l) {
        if (!item.qualifier.empty() && !sameName(item.qualifier, leaves[l].name)) {
            continue;
        }
        found = true;
        const int first = firstSource(leaves, static_cast<int>(l));
        for (const ScopeField& field : leaves[l].fields) {
            Column column{field, leaves[l].name, field.name};
            column.field.source = field.source < 0 ? -1 : first + field.source;
            result.push_back(std::move(column));
        }
    }
    if (!found) {
        throw NameError(NameError::Kind::Table, item.qualifier);
    }
}

SelectWriter::Column SelectWriter::computed(const SelectItem& item, const std::vector<Leaf>& rows,
                                            const std::vector<Leaf>& leaves) {
    const Scope scope(leaves);
    if (item.expression->kind == Kind::Name) {
        const Scope::Place place = scope.find(*item.expression);
        const Leaf& leaf = leaves[static_cast<std::size_t>(place.leaf)];
        const ScopeField& field = leaf.fields[static_cast<std::size_t>(place.field)];
        Column column{field, leaf.name, field.name};
        column.field.source = field.source < 0 ? -1 : firstSource(leaves, place.leaf) + field.source;
        return column;
    }
    Column column;
    ExpressionWriter writer(scope, context_);
    const Scope rowScope(rows);
    if (grouped_) {
        writer.allowAggregates(rowScope);
    }
    column.field.sql = writer.value(*item.expression);
    return column;
}

// Names of the result: the alias, the field's own, or Expr1000 and on for what has none. A field whose name
// another column has too is called by its table's name and its own.
void SelectWriter::nameColumns(std::vector<Column>& columns) const {
    const auto count = [&columns](const std::string& name) {
        return std::count_if(columns.begin(), columns.end(),
                             [&](const Column& c) { return sameName(c.field.name, name); });
    };
    std::vector<std::size_t> doubled;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const Column& column = columns[i];
        const bool ownName = !column.leafName.empty() && sameName(column.field.name, column.leafField);
        if (ownName && leaves_.size() > 1 && count(column.field.name) > 1) {
            doubled.push_back(i);
        }
    }
    for (const std::size_t i : doubled) {
        columns[i].field.name = columns[i].leafName + "." + columns[i].leafField;
    }
}

// The fields as they stand outside of counting functions where rows are grouped.
std::vector<Leaf> SelectWriter::ofGroups(std::vector<Leaf> leaves) const {
    for (Leaf& leaf : leaves) {
        for (ScopeField& field : leaf.fields) {
            const bool own = std::any_of(
                statement_.groupBy.begin(), statement_.groupBy.end(),
                [&](const ExpressionPtr& group) { return isNameOf(*group, leaf.name, field.name); });
            field.sql = context_.dialect.ofGroup(std::move(field.sql), own);
        }
    }
    return leaves;
}

std::vector<SelectWriter::Column> SelectWriter::columns(const std::vector<Leaf>& rows,
                                                        const std::vector<Leaf>& leaves) {
    std::vector<Column> result;
    constexpr int kFirstExpression = 1000;
    int expressions = kFirstExpression;
    std::vector<std::string> aliases;
    for (const SelectItem& item : statement_.items) {
        if (item.star) {
            addStar(item, leaves, result);
            continue;
        }
        Column column = computed(item, rows, leaves);
        if (!item.alias.empty()) {
            const bool taken = std::any_of(aliases.begin(), aliases.end(),
                                           [&](const std::string& a) { return sameName(a, item.alias); });
            if (taken) {
                throw SyntaxError("The name '" + item.alias + "' is given to two columns.", item.position);
            }
            aliases.push_back(item.alias);
            column.field.name = item.alias;
        } else if (column.leafName.empty()) {
            column.field.name = "Expr" + std::to_string(expressions++);
        }
        result.push_back(std::move(column));
    }
    nameColumns(result);
    return result;
}

// A name behind ORDER BY: first a column of the result, then a field of the tables.
class SelectWriter::OrderNames : public NameResolver {
 public:
    OrderNames(const std::vector<Column>& columns, const Scope& scope) : columns_(columns), scope_(scope) {}
    const ScopeField& resolve(const Expression& name) const override {
        if (name.qualifier.empty()) {
            for (const Column& column : columns_) {
                if (sameName(column.field.name, name.text)) {
                    return column.field;
                }
            }
        }
        return scope_.resolve(name);
    }

 private:
    const std::vector<Column>& columns_;
    const Scope& scope_;
};

// A name in a criterion: a column of the result, by its own name or by its table's and field's.
class SelectWriter::CriterionNames : public NameResolver {
 public:
    explicit CriterionNames(const std::vector<Column>& columns) : columns_(columns) {}
    const ScopeField& resolve(const Expression& name) const override {
        const std::string full = (name.qualifier.empty() ? "" : name.qualifier + ".") + name.text;
        for (const Column& column : columns_) {
            if (sameName(column.field.name, full) ||
                (!column.leafName.empty() && sameName(column.leafName + "." + column.leafField, full))) {
                return column.field;
            }
        }
        throw NameError(NameError::Kind::Field, full);
    }

 private:
    const std::vector<Column>& columns_;
};

// Where rows are grouped, a field outside of a counting function has to be one the groups are made by.
void SelectWriter::checkGrouped(const Expression& e, const Scope& scope) const {
    eachName(e, [&](const Expression& name) {
        const Scope::Place place = scope.find(name);
        bool known = false;
        for (const ExpressionPtr& group : statement_.groupBy) {
            eachName(*group, [&](const Expression& grouped) {
                const Scope::Place by = scope.find(grouped);
                known = known || (by.leaf == place.leaf && by.field == place.field);
            });
        }
        if (!known) {
            throw SyntaxError("The field '" + name.text + "' is neither grouped by nor counted.",
                              name.position);
        }
    });
}

// The keys of all tables may join the columns, and the terms of an order.
void SelectWriter::checkSize(const Body& body) const {
    if (std::max({body.columns.size(), statement_.orderBy.size(), statement_.groupBy.size()}) >
        context_.dialect.facts().maxColumns) {
        throw SizeError("The statement has too many columns.");
    }
}

// Rows that are found by their keys are few: nothing is gained by following their numbers in memory.
FromText SelectWriter::from(Purpose purpose) const {
    const std::size_t columns = statement_.items.size() + leaves_.size();
    if (purpose == Purpose::All && hasKeys_ && columns <= context_.dialect.facts().linkedColumns) {
        const Links links(*join_, leaves_, unique_);
        if (links.serve(statement_)) {
            return links.write(context_);
        }
    }
    return writeFrom(*join_, leaves_, context_, purpose == Purpose::Fetch);
}

SelectWriter::Body SelectWriter::body(Purpose purpose) {
    Body body;
    body.from = from(purpose);
    body.groupLeaves = grouped_ ? ofGroups(body.from.leaves) : body.from.leaves;
    body.columns = columns(body.from.leaves, body.groupLeaves);
    checkSize(body);
    body.conditions = body.from.conditions;
    if (purpose != Purpose::Fetch) {
        addWhere(body);
        addGroups(body);
        addOrder(body);
    }
    return body;
}

void SelectWriter::addWhere(Body& body) {
    const Scope scope(body.from.leaves);
    ExpressionWriter writer(scope, context_);
    for (const Expression* condition : conjuncts(statement_.where)) {
        if (condition == driver_) {
            continue;
        }
        int nesting = 0;
        body.conditions.push_back(
            context_.dialect.wrapped(writer.condition(*condition), kNot, nesting, condition->position));
    }
}

void SelectWriter::addGroups(Body& body) {
    if (!grouped_) {
        return;
    }
    const Dialect& dialect = context_.dialect;
    const Scope rows(body.from.leaves);
    for (const SelectItem& item : statement_.items) {
        checkGrouped(*item.expression, rows);
    }
    ExpressionWriter groups(rows, context_);
    for (const ExpressionPtr& group : statement_.groupBy) {
        body.groups += (body.groups.empty() ? " GROUP BY " : ", ") + dialect.sortKey(groups.write(*group));
    }
    if (statement_.having != nullptr) {
        if (statement_.groupBy.empty()) {
            body.groups += " GROUP BY " + std::string(dialect.facts().oneGroup);
        }
        checkGrouped(*statement_.having, rows);
        const Scope scope(body.groupLeaves);
        ExpressionWriter writer(scope, context_);
        writer.allowAggregates(rows);
        body.groups += " HAVING " + writer.condition(*statement_.having).text;
    }
}

bool SelectWriter::isColumn(const Expression& name, const std::vector<Column>& columns) const {
    return name.kind == Kind::Name && name.qualifier.empty() &&
           std::any_of(columns.begin(), columns.end(),
                       [&](const Column& column) { return sameName(column.field.name, name.text); });
}

void SelectWriter::addOrder(Body& body) {
    const Scope rows(body.from.leaves);
    const Scope scope(body.groupLeaves);
    const OrderNames names(body.columns, scope);
    const OrderNames rowNames(body.columns, rows);
    ExpressionWriter writer(names, context_);
    if (grouped_) {
        writer.allowAggregates(rowNames);
    }
    for (const OrderItem& item : statement_.orderBy) {
        const Expression& e = *item.expression;
        if (e.kind != Kind::Integer) {
            if (grouped_ && !isColumn(e, body.columns)) {
                checkGrouped(e, scope);
            }
            body.order.push_back({writer.write(e), item.descending});
            continue;
        }
        if (e.integer < 1 || e.integer > static_cast<std::int64_t>(body.columns.size())) {
            throw SyntaxError("There is no column " + std::to_string(e.integer) + " to order by.",
                              e.position);
        }
        const Column& column = body.columns[static_cast<std::size_t>(e.integer - 1)];
        body.order.push_back({column.field.sql, item.descending});
    }
    if (body.order.empty() && leaves_.size() == 1 && !grouped_) {
        body.order = body.from.leaves.front().order;
    }
}

// A SELECT of `columns` and nothing else said about them.
SelectParts SelectWriter::parts(const Body& body, std::vector<SelectedColumn> columns) const {
    SelectParts result;
    result.distinct = statement_.distinct;
    result.columns = std::move(columns);
    result.from = body.from.text;
    result.conditions = body.conditions;
    result.groups = body.groups;
    return result;
}

std::string SelectWriter::ordered(const Body& body, std::vector<SelectedColumn> columns) const {
    if (body.from.linked) {
        return linked(body, columns);
    }
    SelectParts result = parts(body, std::move(columns));
    result.order = body.order;
    // Rows that the statement does not order, or orders alike, always come in the same order: that of their
    // keys. Rows looked up by a set of numbers come in the order of the numbers, which is as good.
    if (hasKeys_ && !(context_.dialect.facts().setsInOrder && isBySet(body))) {
        for (const SelectedColumn& key : keysOf(body)) {
            result.order.push_back({key.sql, false});
        }
    }
    return context_.dialect.select(result);
}

bool SelectWriter::isBySet(const Body& body) {
    const Leaf& first = body.from.leaves.front();
    return body.order.empty() && body.from.leaves.size() == 1 && first.idSet >= 0 && !first.pinned;
}

// The set by itself stands among the conditions.
IdSetPtr SelectWriter::keySetOf(const Body& body) {
    return isBySet(body) && body.conditions.size() == 1 ? body.from.leaves.front().ids : nullptr;
}

// Each key and each other column once.
std::string SelectWriter::linked(const Body& body, const std::vector<SelectedColumn>& columns) const {
    SelectParts rows = parts(body, keysOf(body));
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
    const Leaf& read = leaves_[static_cast<std::size_t>(unique_)];
    return context_.dialect.rowsByKeys(rows, keys, shown, read.table->name, read.keys.front());
}

std::vector<SelectedColumn> SelectWriter::listOf(const Body& body) {
    std::vector<SelectedColumn> result;
    result.reserve(body.columns.size());
    for (const Column& column : body.columns) {
        result.push_back({column.field.sql, ""});
    }
    return result;
}

std::vector<SelectedColumn> SelectWriter::keysOf(const Body& body) const {
    const std::uint64_t nullable = nullableLeaves(*join_);
    std::vector<SelectedColumn> result;
    for (std::size_t l = 0; l < body.from.leaves.size(); ++l) {
        const Leaf& leaf = body.from.leaves[l];
        for (std::size_t k = 0; k < leaf.keys.size(); ++k) {
            const bool maybeNull = leaf.sources[k].nullable || ((nullable >> l) & 1) != 0;
            result.push_back({{.text = leaf.keys[k], .type = Type::Long, .notNull = !maybeNull}, ""});
        }
    }
    return result;
}

void SelectWriter::fillSources(WrittenSelect& result) const {
    const std::uint64_t nullable = nullableLeaves(*join_);
    for (std::size_t l = 0; hasKeys_ && l < leaves_.size(); ++l) {
        for (ResultSource source : leaves_[l].sources) {
            source.nullable = source.nullable || ((nullable >> l) & 1) != 0;
            result.sources.push_back(std::move(source));
        }
    }
    result.uniqueSource = unique_;
}

std::string SelectWriter::fetchText() {
    Body fetched = body(Purpose::Fetch);
    int number = context_.numbers.firstKey();
    for (const SelectedColumn& key : keysOf(fetched)) {
        fetched.conditions.push_back(
            context_.dialect.isKeyParameter(key.sql.text, number++, !key.sql.notNull));
    }
    return context_.dialect.select(parts(fetched, listOf(fetched)));
}

std::string SelectWriter::fetchListText() {
    Body fetched = body(Purpose::Fetch);
    const std::vector<SelectedColumn> keys = keysOf(fetched);
    const bool all = std::all_of(keys.begin(), keys.end(), [](const auto& key) { return key.sql.notNull; });
    if (!all && !context_.dialect.facts().listsAbsentRows) {
        return {};
    }
    for (std::size_t source = 0; source < keys.size(); ++source) {
        const Sql& key = keys[source].sql;
        fetched.conditions.push_back(context_.dialect.isListedKey(key.text, source, !key.notNull));
    }
    SelectParts list = parts(fetched, listOf(fetched));
    SelectedColumn place;
    place.sql.text = "k.n";
    place.sql.type = Type::Long;
    list.columns.insert(list.columns.begin(), std::move(place));
    // In front, and not behind an outer join, whose rows a store would go through for each of the list.
    list.from = context_.dialect.keyLists(context_.numbers.firstKey(), keys.size()) + ", " + list.from;
    return context_.dialect.rowsOfLists(list);
}

std::string SelectWriter::fetchRangeText(const Body& whole) const {
    const Leaf& only = leaves_.front();
    const std::string& key = only.keys.front();
    const Dialect& dialect = context_.dialect;
    const int number = context_.numbers.firstKey();
    SelectParts range;
    range.columns = listOf(whole);
    range.columns.insert(range.columns.begin(), keysOf(whole).front());
    range.from = only.text;
    range.conditions.push_back(key + " BETWEEN " + dialect.keyParameter(number) + " AND " +
                               dialect.keyParameter(number + 1));
    range.order.push_back({range.columns.front().sql, false});
    return dialect.range(range);
}

// The row keys above the first parameter, ascending, no more of them than the second one says.
std::string SelectWriter::firstKeysText(const Body& whole) const {
    const SelectedColumn key = keysOf(whole).front();
    const Dialect& dialect = context_.dialect;
    const int number = context_.numbers.firstKey();
    SelectParts first = parts(whole, {key});
    first.conditions.push_back(key.sql.text + " > " + dialect.keyParameter(number));
    first.order.push_back({key.sql, false});
    return dialect.select(first) + " LIMIT " + dialect.keyParameter(number + 1);
}

// The lowest row key, with the columns of its row. Without a bound, which a store that looks through the
// table would compare with every row.
std::string SelectWriter::firstRowText(const Body& whole) const {
    const SelectedColumn key = keysOf(whole).front();
    std::vector<SelectedColumn> columns = listOf(whole);
    columns.insert(columns.begin(), key);
    SelectParts first = parts(whole, std::move(columns));
    first.order.push_back({key.sql, false});
    return context_.dialect.select(first) + " LIMIT 1";
}

WrittenSelect SelectWriter::write() {
    WrittenSelect result;
    const Body whole = body(Purpose::All);
    result.rows = ordered(whole, listOf(whole));
    fillSources(result);
    for (const Column& column : whole.columns) {
        const ScopeField& field = column.field;
        const int source = hasKeys_ ? field.source : -1;
        result.columns.push_back(
            {field.name, field.sql.type, field.size, source, source < 0 ? "" : field.field});
    }
    if (hasKeys_) {
        result.keys = ordered(whole, keysOf(whole));
        result.keySet = keySetOf(whole);
        result.fetch = fetchText();
        result.fetchList = fetchListText();
    }
    if (hasKeys_ && leaves_.size() == 1 && leaves_.front().table != nullptr) {
        result.fetchRange = fetchRangeText(whole);
    }
    result.idSets = context_.numbers.idSets();
    result.parameters = context_.numbers.parameters();
    return result;
}

WrittenSelect SelectWriter::find(const Expression& criterion) {
    if (!hasKeys_) {
        throw SyntaxError("A selection of groups or of distinct rows cannot be searched.",
                          criterion.position);
    }
    WrittenSelect result;
    Body whole = body(Purpose::All);
    const CriterionNames names(whole.columns);
    ExpressionWriter writer(names, context_);
    int nesting = 0;
    whole.conditions.push_back(
        context_.dialect.wrapped(writer.condition(criterion), kNot, nesting, criterion.position));
    result.keys = ordered(whole, keysOf(whole));
    if (leaves_.size() == 1 && leaves_.front().table != nullptr) {
        result.firstKeys = firstKeysText(whole);
        result.firstRow = firstRowText(whole);
    }
    fillSources(result);
    result.idSets = context_.numbers.idSets();
    result.parameters = context_.numbers.parameters();
    return result;
}

Leaf SelectWriter::asLeaf(std::string name) {
    const bool plain = leaves_.size() == 1 && hasKeys_ && leaves_.front().table != nullptr;
    return plain ? merged(std::move(name)) : nested(std::move(name));
}

// A selection from one table is that table with a condition: its rows keep their keys, and the store its
// indexes.
Leaf SelectWriter::merged(std::string name) {
    Leaf leaf = leaves_.front();
    Body own;
    own.from.leaves = leaves_;
    own.groupLeaves = leaves_;
    own.columns = columns(leaves_, leaves_);
    checkSize(own);
    addOrder(own);
    const Scope scope(leaves_);
    ExpressionWriter writer(scope, context_);
    std::vector<std::string> conditions;
    if (!leaf.condition.empty()) {
        conditions.push_back(leaf.condition);
    }
    for (const Expression* condition : conjuncts(statement_.where)) {
        if (condition == driver_) {
            continue;
        }
        int nesting = 0;
        conditions.push_back(
            context_.dialect.wrapped(writer.condition(*condition), kNot, nesting, condition->position));
    }
    leaf.condition = chain(conditions, " AND ", context_.dialect.facts().chainLength);
    leaf.order = own.order;
    leaf.name = std::move(name);
    leaf.fields.clear();
    for (Column& column : own.columns) {
        leaf.fields.push_back(std::move(column.field));
    }
    return leaf;
}

// Any other selection stands in the store's FROM as it is, with the keys of its tables under names of their
// own.
Leaf SelectWriter::nested(std::string name) {
    Leaf leaf;
    leaf.name = std::move(name);
    const std::string alias = context_.newAlias();
    const Body inner = body(Purpose::Part);
    std::vector<SelectedColumn> selected;
    // Selects `sql` under a name of its own and calls it by that from then on.
    const auto carryOut = [&](Sql& sql, char kind, std::size_t number) {
        sql = context_.dialect.value(std::move(sql));
        selected.push_back({sql, kind + std::to_string(number)});
        sql.text = alias + "." + selected.back().name;
        sql.precedence = kAtom;
        sql.nesting = 0;
        sql.notNull = false;
    };
    for (const Column& column : inner.columns) {
        leaf.fields.push_back(column.field);
        leaf.fields.back().counter = hasKeys_ && column.field.counter;
        carryOut(leaf.fields.back().sql, 'f', leaf.fields.size() - 1);
    }
    WrittenSelect sources;
    fillSources(sources);
    leaf.sources = sources.sources;
    leaf.unique = unique_;
    for (std::size_t l = 0; hasKeys_ && l < inner.from.leaves.size(); ++l) {
        for (const std::string& own : inner.from.leaves[l].keys) {
            Sql key;
            key.text = own;
            key.type = Type::Long;
            carryOut(key, 'k', leaf.keys.size());
            leaf.keys.push_back(key.text);
        }
    }
    for (std::size_t i = 0; hasKeys_ && i < inner.order.size(); ++i) {
        leaf.order.push_back(inner.order[i]);
        carryOut(leaf.order.back().sql, 'o', i);
    }
    leaf.text = "(" + context_.dialect.select(parts(inner, std::move(selected))) + ") AS " + alias;
    return leaf;
}

}  // namespace sql::writing
