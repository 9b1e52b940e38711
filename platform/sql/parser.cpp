#include "platform/sql/parser.h"

#include <algorithm>
#include <array>

#include "platform/sql/parser_impl.h"

namespace sql {

namespace {

// Words that are never a name unless in brackets.
constexpr std::array<std::string_view, 46> kReserved = {
    "ALL",      "ALTER",       "AND",    "AS",    "ASC",    "BETWEEN", "BY",     "CREATE", "DELETE", "DESC",
    "DISTINCT", "DISTINCTROW", "DROP",   "EQV",   "EXISTS", "FALSE",   "FROM",   "GROUP",  "HAVING", "IMP",
    "IN",       "INNER",       "INSERT", "INTO",  "IS",     "JOIN",    "LEFT",   "LIKE",   "MOD",    "NOT",
    "NULL",     "ON",          "OR",     "ORDER", "OUTER",  "RIGHT",   "SELECT", "SET",    "TOP",    "TRUE",
    "UNION",    "UPDATE",      "VALUES", "WHERE", "XOR",    "WITH"};

bool isReservedWord(std::string_view word) {
    return std::any_of(kReserved.begin(), kReserved.end(),
                       [word](std::string_view reserved) { return sameName(reserved, word); });
}

}  // namespace

Parser::Nesting::Nesting(Parser& parser) : parser_(parser) {
    if (parser_.nesting_ >= kMaxNesting) {
        parser_.fail("the statement is nested too deeply at '" +
                         fragment(parser_.lexer_.source(), parser_.token_.position) + "'.",
                     parser_.token_.position);
    }
    ++parser_.nesting_;
}

Parser::Parser(std::string_view source) : lexer_(source) {
    token_ = lexer_.next();
}

void Parser::fail(const std::string& sentence, std::size_t position) const {
    throw SyntaxError(sentence, position);
}

void Parser::failHere(const std::string& expected) const {
    if (token_.kind == Token::Kind::End) {
        fail("the statement ends where " + expected + " is missing.", token_.position);
    }
    fail(expected + " is missing before '" + fragment(lexer_.source(), token_.position) + "'.",
         token_.position);
}

bool Parser::isWord(std::string_view word) const {
    return token_.kind == Token::Kind::Name && sameName(token_.text, word);
}

bool Parser::isSymbol(std::string_view symbol) const {
    return token_.kind == Token::Kind::Symbol && token_.text == symbol;
}

bool Parser::isReserved() const {
    return token_.kind == Token::Kind::Name && isReservedWord(token_.text);
}

void Parser::advance() {
    lastEnd_ = token_.end;
    token_ = lexer_.next();
}

bool Parser::takeWord(std::string_view word) {
    if (!isWord(word)) {
        return false;
    }
    advance();
    return true;
}

bool Parser::takeSymbol(std::string_view symbol) {
    if (!isSymbol(symbol)) {
        return false;
    }
    advance();
    return true;
}

void Parser::expectWord(std::string_view word) {
    if (!takeWord(word)) {
        failHere("the word " + std::string(word));
    }
}

void Parser::expectSymbol(std::string_view symbol) {
    if (!takeSymbol(symbol)) {
        failHere("the sign " + std::string(symbol));
    }
}

void Parser::expectEnd() {
    takeSymbol(";");
    if (token_.kind == Token::Kind::End) {
        return;
    }
    if (isWord("UNION")) {
        fail("a UNION of selections is not supported.", token_.position);
    }
    failHere("an operator or the end of the statement");
}

StatementPtr Parser::statement() {
    StatementPtr result;
    if (isWord("SELECT")) {
        result = select();
    } else if (isWord("INSERT")) {
        result = insert();
    } else if (isWord("UPDATE")) {
        result = update();
    } else if (isWord("DELETE")) {
        result = remove();
    } else if (token_.kind == Token::Kind::End) {
        fail("the statement is empty.", 0);
    } else {
        fail("a statement begins with SELECT, INSERT, UPDATE or DELETE, not with '" +
                 fragment(lexer_.source(), token_.position) + "'.",
             token_.position);
    }
    expectEnd();
    return result;
}

ExpressionPtr Parser::criterion() {
    if (token_.kind == Token::Kind::End) {
        fail("the criterion is empty.", 0);
    }
    const std::size_t start = token_.position;
    ExpressionPtr result = expression();
    expectEnd();
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
            fail("'" + fragment(lexer_.source(), start) + "' is no criterion; it compares nothing.", start);
    }
}

std::shared_ptr<Statement> Parser::select() {
    const Nesting nesting(*this);
    expectWord("SELECT");
    auto result = std::make_shared<Statement>();
    if (takeWord("DISTINCT") || takeWord("DISTINCTROW")) {
        result->distinct = true;
    } else {
        takeWord("ALL");
    }
    if (isWord("TOP")) {
        fail("a selection of the first rows (TOP) is not supported.", token_.position);
    }
    do {
        result->items.push_back(selectItem());
    } while (takeSymbol(","));
    expectWord("FROM");
    result->from = from();
    if (takeWord("WHERE")) {
        result->where = expression();
    }
    if (takeWord("GROUP")) {
        expectWord("BY");
        do {
            result->groupBy.push_back(expression());
        } while (takeSymbol(","));
    }
    if (takeWord("HAVING")) {
        result->having = expression();
    }
    if (takeWord("ORDER")) {
        expectWord("BY");
        result->orderBy = orderBy();
    }
    return result;
}

// `*`, `Table.*` and `[Table].*`.
bool Parser::starOf(SelectItem& item) {
    if (isSymbol("*")) {
        item.star = true;
        advance();
        return true;
    }
    const bool named =
        token_.kind == Token::Kind::BracketName || (token_.kind == Token::Kind::Name && !isReserved());
    if (!named) {
        return false;
    }
    Lexer ahead = lexer_;
    const Token point = ahead.next();
    if (point.kind != Token::Kind::Symbol || (point.text != "." && point.text != "!")) {
        return false;
    }
    const Token star = ahead.next();
    if (star.kind != Token::Kind::Symbol || star.text != "*") {
        return false;
    }
    item.star = true;
    item.qualifier = std::string(token_.text);
    advance();
    advance();
    advance();
    return true;
}

SelectItem Parser::selectItem() {
    SelectItem item;
    item.position = token_.position;
    if (starOf(item)) {
        return item;
    }
    item.expression = expression();
    item.alias = aliasOf(true);
    return item;
}

std::string Parser::name(std::string_view what) {
    const bool named =
        token_.kind == Token::Kind::BracketName || (token_.kind == Token::Kind::Name && !isReserved());
    if (!named) {
        failHere(std::string(what));
    }
    std::string result(token_.text);
    advance();
    return result;
}

std::string Parser::aliasOf(bool wordNeeded) {
    if (takeWord("AS")) {
        return name("a name behind AS");
    }
    const bool named =
        token_.kind == Token::Kind::BracketName || (token_.kind == Token::Kind::Name && !isReserved());
    return named && !wordNeeded ? name("a name") : std::string();
}

FromNodePtr Parser::join(FromNode::Kind kind, FromNodePtr left, FromNodePtr right, std::size_t position) {
    auto node = std::make_shared<FromNode>();
    node->kind = kind;
    node->left = std::move(left);
    node->right = std::move(right);
    node->position = position;
    if (kind != FromNode::Kind::Cross) {
        expectWord("ON");
        node->on = expression();
    }
    return node;
}

FromNodePtr Parser::from() {
    const int outer = std::exchange(sources_, 0);
    FromNodePtr result = joinChain();
    while (isSymbol(",")) {
        const std::size_t position = token_.position;
        advance();
        result = join(FromNode::Kind::Cross, result, joinChain(), position);
    }
    sources_ = outer;
    return result;
}

FromNodePtr Parser::joinChain() {
    FromNodePtr result = source();
    for (;;) {
        const std::size_t position = token_.position;
        FromNode::Kind kind = FromNode::Kind::Inner;
        if (takeWord("LEFT")) {
            takeWord("OUTER");
            kind = FromNode::Kind::Left;
        } else if (takeWord("RIGHT")) {
            takeWord("OUTER");
            kind = FromNode::Kind::Right;
        } else if (!takeWord("INNER") && !isWord("JOIN")) {
            return result;
        }
        expectWord("JOIN");
        FromNodePtr right = source();
        result = join(kind, std::move(result), std::move(right), position);
    }
}

FromNodePtr Parser::source() {
    const Nesting nesting(*this);
    auto node = std::make_shared<FromNode>();
    node->position = token_.position;
    if (takeSymbol("(")) {
        if (isWord("SELECT")) {
            node->kind = FromNode::Kind::Select;
            node->select = select();
            takeSymbol(";");
            expectSymbol(")");
            node->alias = aliasOf(false);
        } else {
            FromNodePtr inner = joinChain();
            expectSymbol(")");
            return inner;
        }
    } else {
        node->name = name("the name of a table or query");
        node->alias = aliasOf(false);
    }
    if (++sources_ > kMaxSources) {
        fail("the statement joins too many tables.", node->position);
    }
    return node;
}

std::vector<OrderItem> Parser::orderBy() {
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.expression = expression();
        if (takeWord("DESC")) {
            item.descending = true;
        } else {
            takeWord("ASC");
        }
        items.push_back(std::move(item));
    } while (takeSymbol(","));
    return items;
}

Assignment Parser::assignment() {
    Assignment result;
    result.position = token_.position;
    result.field = name("a field's name");
    if (takeSymbol(".") || takeSymbol("!")) {
        result.qualifier = std::exchange(result.field, {});
        result.field = name("a field's name");
    }
    expectSymbol("=");
    result.value = expression();
    return result;
}

StatementPtr Parser::insert() {
    auto result = std::make_shared<Statement>();
    result->kind = Statement::Kind::Insert;
    expectWord("INSERT");
    expectWord("INTO");
    result->tablePosition = token_.position;
    result->table = name("a table's name");
    expectSymbol("(");
    do {
        Assignment field;
        field.position = token_.position;
        field.field = name("a field's name");
        result->assignments.push_back(std::move(field));
    } while (takeSymbol(","));
    expectSymbol(")");
    expectWord("VALUES");
    expectSymbol("(");
    std::size_t given = 0;
    do {
        const std::size_t position = token_.position;
        ExpressionPtr value = expression();
        if (given == result->assignments.size()) {
            fail("there are more values than fields.", position);
        }
        result->assignments[given++].value = std::move(value);
    } while (takeSymbol(","));
    if (given < result->assignments.size()) {
        fail("there are fewer values than fields.", token_.position);
    }
    expectSymbol(")");
    return result;
}

StatementPtr Parser::update() {
    auto result = std::make_shared<Statement>();
    result->kind = Statement::Kind::Update;
    expectWord("UPDATE");
    result->tablePosition = token_.position;
    result->table = name("a table's name");
    expectWord("SET");
    do {
        result->assignments.push_back(assignment());
    } while (takeSymbol(","));
    if (takeWord("WHERE")) {
        result->where = expression();
    }
    return result;
}

StatementPtr Parser::remove() {
    auto result = std::make_shared<Statement>();
    result->kind = Statement::Kind::Delete;
    expectWord("DELETE");
    SelectItem item;
    item.position = token_.position;
    const bool starred = !isWord("FROM") && starOf(item);
    expectWord("FROM");
    result->tablePosition = token_.position;
    result->table = name("a table's name");
    if (starred && !item.qualifier.empty() && !sameName(item.qualifier, result->table)) {
        fail("rows of '" + item.qualifier + "' cannot be deleted from '" + result->table + "'.",
             item.position);
    }
    if (takeWord("WHERE")) {
        result->where = expression();
    }
    return result;
}

StatementPtr parse(std::string_view text) {
    return Parser(text).statement();
}

ExpressionPtr parseCriterion(std::string_view text) {
    return Parser(text).criterion();
}

}  // namespace sql
