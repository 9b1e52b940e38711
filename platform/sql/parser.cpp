#include "platform/sql/parser.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/sql/expression_parser.h"

namespace sql {
namespace {

// Reads one statement or criterion; the expressions in it are read by somebody else.
class StatementParser {
 public:
    explicit StatementParser(std::string_view source) : tokens_(source), expressions_(tokens_) {}

    StatementPtr statement();
    ExpressionPtr criterion();

 private:
    std::shared_ptr<Statement> select();
    StatementPtr insert();
    StatementPtr update();
    StatementPtr remove();
    SelectItem selectItem();
    FromNodePtr from();
    FromNodePtr joinChain();
    FromNodePtr source();
    FromNodePtr join(FromNode::Kind kind, FromNodePtr left, FromNodePtr right, std::size_t position);
    std::vector<OrderItem> orderBy();
    Assignment assignment();

    TokenReader tokens_;
    ExpressionParser expressions_;
    int sources_ = 0;
};

StatementPtr StatementParser::statement() {
    StatementPtr result;
    if (tokens_.isWord("SELECT")) {
        result = select();
    } else if (tokens_.isWord("INSERT")) {
        result = insert();
    } else if (tokens_.isWord("UPDATE")) {
        result = update();
    } else if (tokens_.isWord("DELETE")) {
        result = remove();
    } else if (tokens_.isEnd()) {
        tokens_.fail("the statement is empty.", 0);
    } else {
        tokens_.failAt("a statement begins with SELECT, INSERT, UPDATE or DELETE, not with",
                       tokens_.position());
    }
    tokens_.expectEnd();
    return result;
}

ExpressionPtr StatementParser::criterion() {
    if (tokens_.isEnd()) {
        tokens_.fail("the criterion is empty.", 0);
    }
    const std::size_t start = tokens_.position();
    ExpressionPtr result = expressions_.expression();
    tokens_.expectEnd();
    using Kind = Expression::Kind;
    switch (result->kind) {
        case Kind::Boolean:
        case Kind::Compare:
        case Kind::Not:
        case Kind::And:
        case Kind::Or:
        case Kind::IsNull:
        case Kind::Between:
        case Kind::In:
        case Kind::InSet:
            return result;
        default:
            tokens_.fail("'" + fragment(tokens_.source(), start) + "' is no criterion; it compares nothing.",
                         start);
    }
}

std::shared_ptr<Statement> StatementParser::select() {
    const TokenReader::Nesting nesting(tokens_);
    tokens_.expectWord("SELECT");
    auto result = std::make_shared<Statement>();
    if (tokens_.takeWord("DISTINCT") || tokens_.takeWord("DISTINCTROW")) {
        result->distinct = true;
    } else {
        tokens_.takeWord("ALL");
    }
    if (tokens_.isWord("TOP")) {
        tokens_.refuse("a selection of the first rows (TOP)");
    }
    do {
        result->items.push_back(selectItem());
    } while (tokens_.takeSymbol(","));
    tokens_.expectWord("FROM");
    result->from = from();
    if (tokens_.takeWord("WHERE")) {
        result->where = expressions_.expression();
    }
    if (tokens_.takeWord("GROUP")) {
        tokens_.expectWord("BY");
        do {
            result->groupBy.push_back(expressions_.expression());
        } while (tokens_.takeSymbol(","));
    }
    if (tokens_.takeWord("HAVING")) {
        result->having = expressions_.expression();
    }
    if (tokens_.takeWord("ORDER")) {
        tokens_.expectWord("BY");
        result->orderBy = orderBy();
    }
    return result;
}

SelectItem StatementParser::selectItem() {
    SelectItem item;
    item.position = tokens_.position();
    item.star = tokens_.takeStar(item.qualifier);
    if (item.star) {
        return item;
    }
    item.expression = expressions_.expression();
    item.alias = tokens_.aliasOf(true);
    return item;
}

FromNodePtr StatementParser::join(FromNode::Kind kind, FromNodePtr left, FromNodePtr right,
                                  std::size_t position) {
    auto node = std::make_shared<FromNode>();
    node->kind = kind;
    node->left = std::move(left);
    node->right = std::move(right);
    node->position = position;
    if (kind != FromNode::Kind::Cross) {
        tokens_.expectWord("ON");
        node->on = expressions_.expression();
    }
    return node;
}

FromNodePtr StatementParser::from() {
    const int outer = std::exchange(sources_, 0);
    FromNodePtr result = joinChain();
    while (tokens_.isSymbol(",")) {
        const std::size_t position = tokens_.position();
        tokens_.advance();
        result = join(FromNode::Kind::Cross, result, joinChain(), position);
    }
    sources_ = outer;
    return result;
}

FromNodePtr StatementParser::joinChain() {
    FromNodePtr result = source();
    for (;;) {
        const std::size_t position = tokens_.position();
        FromNode::Kind kind = FromNode::Kind::Inner;
        if (tokens_.takeWord("LEFT")) {
            tokens_.takeWord("OUTER");
            kind = FromNode::Kind::Left;
        } else if (tokens_.takeWord("RIGHT")) {
            tokens_.takeWord("OUTER");
            kind = FromNode::Kind::Right;
        } else if (!tokens_.takeWord("INNER") && !tokens_.isWord("JOIN")) {
            return result;
        }
        tokens_.expectWord("JOIN");
        FromNodePtr right = source();
        result = join(kind, std::move(result), std::move(right), position);
    }
}

FromNodePtr StatementParser::source() {
    const TokenReader::Nesting nesting(tokens_);
    auto node = std::make_shared<FromNode>();
    node->position = tokens_.position();
    if (tokens_.takeSymbol("(")) {
        if (tokens_.isWord("SELECT")) {
            node->kind = FromNode::Kind::Select;
            node->select = select();
            tokens_.takeSymbol(";");
            tokens_.expectSymbol(")");
            node->alias = tokens_.aliasOf(false);
        } else {
            FromNodePtr inner = joinChain();
            tokens_.expectSymbol(")");
            return inner;
        }
    } else {
        node->name = tokens_.name("the name of a table or query");
        node->alias = tokens_.aliasOf(false);
    }
    if (++sources_ > kMaxSources) {
        tokens_.fail("the statement joins too many tables.", node->position);
    }
    return node;
}

std::vector<OrderItem> StatementParser::orderBy() {
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.expression = expressions_.expression();
        if (tokens_.takeWord("DESC")) {
            item.descending = true;
        } else {
            tokens_.takeWord("ASC");
        }
        items.push_back(std::move(item));
    } while (tokens_.takeSymbol(","));
    return items;
}

Assignment StatementParser::assignment() {
    Assignment result;
    result.position = tokens_.position();
    result.field = tokens_.name("a field's name");
    if (tokens_.takeSymbol(".") || tokens_.takeSymbol("!")) {
        result.qualifier = std::exchange(result.field, {});
        result.field = tokens_.name("a field's name");
    }
    tokens_.expectSymbol("=");
    result.value = expressions_.expression();
    return result;
}

StatementPtr StatementParser::insert() {
    auto result = std::make_shared<Statement>();
    result->kind = Statement::Kind::Insert;
    tokens_.expectWord("INSERT");
    tokens_.expectWord("INTO");
    result->tablePosition = tokens_.position();
    result->table = tokens_.name("a table's name");
    tokens_.expectSymbol("(");
    do {
        Assignment field;
        field.position = tokens_.position();
        field.field = tokens_.name("a field's name");
        result->assignments.push_back(std::move(field));
    } while (tokens_.takeSymbol(","));
    tokens_.expectSymbol(")");
    tokens_.expectWord("VALUES");
    tokens_.expectSymbol("(");
    std::size_t given = 0;
    do {
        const std::size_t position = tokens_.position();
        ExpressionPtr value = expressions_.expression();
        if (given == result->assignments.size()) {
            tokens_.fail("there are more values than fields.", position);
        }
        result->assignments[given++].value = std::move(value);
    } while (tokens_.takeSymbol(","));
    if (given < result->assignments.size()) {
        tokens_.fail("there are fewer values than fields.", tokens_.position());
    }
    tokens_.expectSymbol(")");
    return result;
}

StatementPtr StatementParser::update() {
    auto result = std::make_shared<Statement>();
    result->kind = Statement::Kind::Update;
    tokens_.expectWord("UPDATE");
    result->tablePosition = tokens_.position();
    result->table = tokens_.name("a table's name");
    tokens_.expectWord("SET");
    do {
        result->assignments.push_back(assignment());
    } while (tokens_.takeSymbol(","));
    if (tokens_.takeWord("WHERE")) {
        result->where = expressions_.expression();
    }
    return result;
}

StatementPtr StatementParser::remove() {
    auto result = std::make_shared<Statement>();
    result->kind = Statement::Kind::Delete;
    tokens_.expectWord("DELETE");
    SelectItem item;
    item.position = tokens_.position();
    const bool starred = !tokens_.isWord("FROM") && tokens_.takeStar(item.qualifier);
    tokens_.expectWord("FROM");
    result->tablePosition = tokens_.position();
    result->table = tokens_.name("a table's name");
    if (starred && !item.qualifier.empty() && !sameName(item.qualifier, result->table)) {
        tokens_.fail("rows of '" + item.qualifier + "' cannot be deleted from '" + result->table + "'.",
                     item.position);
    }
    if (tokens_.takeWord("WHERE")) {
        result->where = expressions_.expression();
    }
    return result;
}

}  // namespace

StatementPtr parse(std::string_view text) {
    return StatementParser(text).statement();
}

ExpressionPtr parseCriterion(std::string_view text) {
    return StatementParser(text).criterion();
}

}  // namespace sql
