#include "platform/sql/select.h"

#include <algorithm>
#include <utility>

#include "platform/sql/expressions.h"
#include "platform/sql/select_texts.h"

namespace sql::writing {

namespace {

Leaf tableLeaf(const TableInfo& table, std::string name, Context& context) {
    Leaf leaf;
    leaf.name = std::move(name);
    leaf.table = &table;
    const std::string alias = context.plainAliases ? quotedName(table.name) : context.newAlias();
    leaf.text = context.dialect.selects.table(table);
    if (!context.plainAliases) {
        leaf.text += " AS " + alias;
    }
    leaf.sources.push_back({table.name, false});
    leaf.keys.push_back(context.dialect.selects.rowKey(table, alias));
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

Leaf bindPart(const FromNode& part, const std::string& name, Context& context) {
    return part.kind == FromNode::Kind::Select ? SelectWriter(*part.select, context).asLeaf(name)
                                               : bindName(part.name, name, part.position, context);
}

// A name in a criterion: a column of the result, by its own name or by its table's and field's.
class CriterionNames : public NameResolver {
 public:
    explicit CriterionNames(const std::vector<SelectColumn>& columns) : columns_(columns) {}
    const ScopeField& resolve(const Expression& name) const override {
        const std::string full = (name.qualifier.empty() ? "" : name.qualifier + ".") + name.text;
        for (const SelectColumn& column : columns_) {
            if (sameName(column.field.name, full) ||
                (!column.leafName.empty() && sameName(column.leafName + "." + column.leafField, full))) {
                return column.field;
            }
        }
        throw NameError(NameError::Kind::Field, full);
    }

 private:
    const std::vector<SelectColumn>& columns_;
};

// What a nested selection gives, under names of its own: whoever reads from it calls it by those.
class Outlet {
 public:
    explicit Outlet(Context& context) : dialect_(context.dialect), alias_(context.newAlias()) {}

    const std::string& alias() const { return alias_; }
    void carryOut(Sql& sql, char kind, std::size_t number) {
        sql = dialect_.values.value(std::move(sql));
        selected_.push_back({sql, kind + std::to_string(number)});
        sql.text = alias_ + "." + selected_.back().name;
        sql.precedence = kAtom;
        sql.nesting = 0;
        sql.notNull = false;
    }
    std::vector<SelectedColumn> takeSelected() { return std::move(selected_); }

 private:
    const Dialect& dialect_;
    std::string alias_;
    std::vector<SelectedColumn> selected_;
};

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
    : context_(context), source_(statement, context, bindPart) {}

WrittenSelect SelectWriter::write() {
    WrittenSelect result;
    const SelectBody whole = body(SelectPurpose::All);
    const SelectTexts texts(source_, whole, context_);
    result.rows = texts.rows();
    for (const SelectColumn& column : whole.columns) {
        const ScopeField& field = column.field;
        const int source = source_.hasKeys() ? field.source : -1;
        result.columns.push_back(
            {field.name, field.sql.type, field.size, source, source < 0 ? "" : field.field});
    }
    if (source_.hasKeys()) {
        result.keys = texts.keys();
        result.keySet = texts.keySet();
        fillFetch(result);
    }
    if (source_.isOneTable()) {
        result.fetchRange = texts.range();
    }
    fillNumbers(result);
    return result;
}

void SelectWriter::fillFetch(WrittenSelect& result) {
    const SelectBody row = body(SelectPurpose::Fetch);
    result.fetch = SelectTexts(source_, row, context_).fetch();
    const SelectBody list = body(SelectPurpose::Fetch);
    result.fetchList = SelectTexts(source_, list, context_).fetchList();
}

// What stands for rows, keys and numbers in all the texts.
void SelectWriter::fillNumbers(WrittenSelect& result) const {
    result.sources = source_.sources();
    result.uniqueSource = source_.unique();
    result.idSets = context_.numbers.idSets();
    result.parameters = context_.numbers.parameters();
    result.asksTheTime = context_.numbers.asksTheTime();
}

WrittenSelect SelectWriter::find(const Expression& criterion) {
    if (!source_.hasKeys()) {
        throw SyntaxError("A selection of groups or of distinct rows cannot be searched.",
                          criterion.position);
    }
    WrittenSelect result;
    SelectBody whole = body(SelectPurpose::All);
    whole.conditions.push_back(narrowing(criterion, whole));
    const SelectTexts texts(source_, whole, context_);
    result.keys = texts.keys();
    if (source_.isOneTable()) {
        result.firstKeys = texts.firstKeys();
        result.firstRow = texts.firstRow();
    }
    fillNumbers(result);
    return result;
}

std::string SelectWriter::narrowing(const Expression& criterion, const SelectBody& whole) {
    const CriterionNames names(whole.columns);
    ExpressionWriter writer(names, context_);
    int nesting = 0;
    return context_.dialect.values.wrapped(writer.condition(criterion), kNot, nesting, criterion.position);
}

Leaf SelectWriter::asLeaf(std::string name) {
    return source_.isOneTable() ? merged(std::move(name)) : nested(std::move(name));
}

// A selection from one table is that table with a condition: its rows keep their keys, and the store its
// indexes.
Leaf SelectWriter::merged(std::string name) {
    SelectBody own = SelectBodyWriter(source_, context_).writeMerged();
    Leaf leaf = source_.leaves().front();
    leaf.condition = chain(own.conditions, " AND ", context_.dialect.facts.chainLength);
    leaf.order = std::move(own.order);
    leaf.name = std::move(name);
    leaf.fields.clear();
    for (SelectColumn& column : own.columns) {
        leaf.fields.push_back(std::move(column.field));
    }
    return leaf;
}

// Any other selection stands in the store's FROM as it is, with the keys of its tables under names of their
// own.
Leaf SelectWriter::nested(std::string name) {
    Leaf leaf;
    leaf.name = std::move(name);
    Outlet outlet(context_);
    const SelectBody inner = body(SelectPurpose::Part);
    const bool hasKeys = source_.hasKeys();
    for (const SelectColumn& column : inner.columns) {
        leaf.fields.push_back(column.field);
        leaf.fields.back().counter = hasKeys && column.field.counter;
        outlet.carryOut(leaf.fields.back().sql, 'f', leaf.fields.size() - 1);
    }
    leaf.sources = source_.sources();
    leaf.unique = source_.unique();
    for (std::size_t l = 0; hasKeys && l < inner.from.leaves.size(); ++l) {
        for (const std::string& own : inner.from.leaves[l].keys) {
            Sql key;
            key.text = own;
            key.type = Type::Long;
            outlet.carryOut(key, 'k', leaf.keys.size());
            leaf.keys.push_back(key.text);
        }
    }
    for (std::size_t i = 0; hasKeys && i < inner.order.size(); ++i) {
        leaf.order.push_back(inner.order[i]);
        outlet.carryOut(leaf.order.back().sql, 'o', i);
    }
    leaf.text =
        "(" + SelectTexts(source_, inner, context_).part(outlet.takeSelected()) + ") AS " + outlet.alias();
    return leaf;
}

}  // namespace sql::writing
