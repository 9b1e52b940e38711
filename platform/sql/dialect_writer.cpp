#include <algorithm>

#include "platform/sql/assignment.h"
#include "platform/sql/expressions.h"
#include "platform/sql/select.h"
#include "platform/sql/writer.h"

namespace sql {

namespace {

using writing::Context;
using writing::ExpressionWriter;
using writing::Leaf;
using writing::Scope;

// INSERT knows no fields to reckon with.
class NoNames : public writing::NameResolver {
 public:
    const writing::ScopeField& resolve(const Expression& name) const override {
        throw NameError(NameError::Kind::Field,
                        (name.qualifier.empty() ? "" : name.qualifier + ".") + name.text);
    }
};

const ColumnInfo& columnOf(const TableInfo& table, const std::string& field) {
    const int index = table.indexOf(field);
    if (index < 0) {
        throw NameError(NameError::Kind::Field, field);
    }
    return table.columns[static_cast<std::size_t>(index)];
}

void checkGivenOnce(const Statement& statement) {
    const auto& all = statement.assignments;
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (sameName(all[i].field, all[j].field)) {
                throw SyntaxError("The field '" + all[i].field + "' is given two values.", all[i].position);
            }
        }
    }
}

// The one table that UPDATE and DELETE work on, perhaps through stored queries that narrow it.
Leaf target(const Statement& statement, Context& context) {
    context.plainAliases = true;
    Leaf leaf = writing::bindName(statement.table, statement.table, statement.tablePosition, context);
    if (leaf.table == nullptr) {
        throw SyntaxError("The rows of '" + statement.table +
                              "' are made of more than one table; they cannot be "
                              "changed by a statement.",
                          statement.tablePosition);
    }
    return leaf;
}

std::string whereOf(const Statement& statement, const Leaf& leaf, const Scope& scope, Context& context) {
    std::vector<std::string> conditions;
    if (!leaf.condition.empty()) {
        conditions.push_back(leaf.condition);
    }
    if (leaf.idSet >= 0) {
        conditions.push_back(context.dialect.lookups.inSet(leaf.idField, leaf.idField.text, leaf.idSet));
    }
    ExpressionWriter writer(scope, context);
    for (const Expression* condition : writing::conjuncts(statement.where)) {
        int nesting = 0;
        conditions.push_back(context.dialect.values.wrapped(writer.condition(*condition), writing::kNot,
                                                            nesting, condition->position));
    }
    return conditions.empty()
               ? ""
               : " WHERE " + writing::chain(conditions, " AND ", context.dialect.facts.chainLength);
}

std::string insertText(const Statement& statement, Context& context) {
    const TableInfo* table = context.catalog.findTable(statement.table);
    if (table == nullptr) {
        throw NameError(NameError::Kind::Table, statement.table);
    }
    const NoNames names;
    writing::AssignmentWriter writer(names, context);
    std::string fields;
    std::string values;
    for (const Assignment& a : statement.assignments) {
        const ColumnInfo& column = columnOf(*table, a.field);
        fields += (fields.empty() ? "" : ", ") + writing::quotedName(column.name);
        values += (values.empty() ? "" : ", ") + writer.write(*a.value, column);
    }
    return "INSERT INTO " + context.dialect.selects.table(*table) + " (" + fields + ") VALUES (" + values +
           ")";
}

std::string updateText(const Statement& statement, Context& context) {
    const std::vector<Leaf> leaves = {target(statement, context)};
    const Leaf& leaf = leaves.front();
    const Scope scope(leaves);
    writing::AssignmentWriter writer(scope, context);
    std::string values;
    for (const Assignment& a : statement.assignments) {
        Expression name;
        name.kind = Expression::Kind::Name;
        name.qualifier = a.qualifier;
        name.text = a.field;
        name.dotted = a.qualifier.empty() && a.field.find('.') != std::string::npos;
        name.position = a.position;
        const writing::ScopeField& field = scope.resolve(name);
        if (field.source < 0 || field.counter) {
            throw SyntaxError("The field '" + a.field + "' cannot be changed: it is " +
                                  (field.counter ? "numbered by the engine." : "computed."),
                              a.position);
        }
        const ColumnInfo& column = columnOf(*leaf.table, field.field);
        values += (values.empty() ? "" : ", ") + writing::quotedName(column.name) + " = " +
                  writer.write(*a.value, column);
    }
    return "UPDATE " + context.dialect.selects.table(*leaf.table) + " SET " + values +
           whereOf(statement, leaf, scope, context);
}

std::string deleteText(const Statement& statement, Context& context) {
    const std::vector<Leaf> leaves = {target(statement, context)};
    return "DELETE FROM " + context.dialect.selects.table(*leaves.front().table) +
           whereOf(statement, leaves.front(), Scope(leaves), context);
}

class DialectWriter : public Writer {
 public:
    explicit DialectWriter(const writing::Dialect& dialect) : dialect_(dialect) {}

    WrittenSelect select(const Statement& statement, const Catalog& catalog, int idSetBase) const override {
        Context context(dialect_, catalog, idSetBase);
        return selection(statement, context).write();
    }

    WrittenSelect find(const Statement& statement, const Expression& criterion, const Catalog& catalog,
                       int idSetBase) const override {
        Context context(dialect_, catalog, idSetBase);
        return selection(statement, context).find(criterion);
    }

    WrittenAction action(const Statement& statement, const Catalog& catalog, int idSetBase) const override {
        Context context(dialect_, catalog, idSetBase);
        WrittenAction result;
        checkGivenOnce(statement);
        switch (statement.kind) {
            case Statement::Kind::Insert:
                result.text = insertText(statement, context);
                break;
            case Statement::Kind::Update:
                result.text = updateText(statement, context);
                break;
            case Statement::Kind::Delete:
                result.text = deleteText(statement, context);
                break;
            case Statement::Kind::Select:
                throw SyntaxError("A selection changes nothing; it cannot be executed.", 0);
        }
        result.idSets = context.numbers.idSets();
        result.parameters = context.numbers.parameters();
        return result;
    }

 private:
    static writing::SelectWriter selection(const Statement& statement, Context& context) {
        if (statement.kind != Statement::Kind::Select) {
            throw SyntaxError("The statement changes rows; it has none to show.", 0);
        }
        return writing::SelectWriter(statement, context);
    }

    const writing::Dialect& dialect_;
};

}  // namespace

const Writer& sqliteWriter() {
    static const DialectWriter writer(writing::sqliteDialect());
    return writer;
}

const Writer& postgresWriter() {
    static const DialectWriter writer(writing::postgresDialect());
    return writer;
}

bool isKeyCriterion(const Expression& criterion, KeyCriterion& out) {
    using Kind = Expression::Kind;
    if (criterion.kind != Kind::Compare || criterion.op != Expression::Op::Equal) {
        return false;
    }
    const Expression* field = criterion.children[0].get();
    const Expression* number = criterion.children[1].get();
    if (field->kind != Kind::Name) {
        std::swap(field, number);
    }
    if (field->kind != Kind::Name || number->kind != Kind::Integer || !field->qualifier.empty() ||
        field->dotted) {
        return false;
    }
    out.field = field->text;
    out.number = number->integer;
    return true;
}

}  // namespace sql
