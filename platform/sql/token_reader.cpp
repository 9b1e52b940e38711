#include "platform/sql/token_reader.h"

#include <algorithm>
#include <array>

#include "platform/sql/ast.h"

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

TokenReader::Nesting::Nesting(TokenReader& tokens) : tokens_(tokens) {
    if (tokens_.nesting_ >= kMaxNesting) {
        tokens_.failAt("the statement is nested too deeply at", tokens_.token_.position);
    }
    ++tokens_.nesting_;
}

TokenReader::TokenReader(std::string_view source) : lexer_(source) {
    token_ = lexer_.next();
}

void TokenReader::fail(const std::string& sentence, std::size_t position) const {
    throw SyntaxError(sentence, position);
}

void TokenReader::failAt(const std::string& beginning, std::size_t position) const {
    fail(beginning + " '" + fragment(source(), position) + "'.", position);
}

void TokenReader::refuse(const std::string& what) const {
    fail(what + " is not supported.", token_.position);
}

void TokenReader::failHere(const std::string& expected) const {
    if (token_.kind == Token::Kind::End) {
        fail("the statement ends where " + expected + " is missing.", token_.position);
    }
    failAt(expected + " is missing before", token_.position);
}

bool TokenReader::isWord(std::string_view word) const {
    return token_.kind == Token::Kind::Name && sameName(token_.text, word);
}

bool TokenReader::isSymbol(std::string_view symbol) const {
    return token_.kind == Token::Kind::Symbol && token_.text == symbol;
}

bool TokenReader::isName() const {
    return token_.kind == Token::Kind::BracketName ||
           (token_.kind == Token::Kind::Name && !isReservedWord(token_.text));
}

void TokenReader::advance() {
    token_ = lexer_.next();
}

bool TokenReader::takeWord(std::string_view word) {
    if (!isWord(word)) {
        return false;
    }
    advance();
    return true;
}

bool TokenReader::takeSymbol(std::string_view symbol) {
    if (!isSymbol(symbol)) {
        return false;
    }
    advance();
    return true;
}

void TokenReader::expectWord(std::string_view word) {
    if (!takeWord(word)) {
        failHere("the word " + std::string(word));
    }
}

void TokenReader::expectSymbol(std::string_view symbol) {
    if (!takeSymbol(symbol)) {
        failHere("the sign " + std::string(symbol));
    }
}

void TokenReader::expectEnd() {
    takeSymbol(";");
    if (token_.kind == Token::Kind::End) {
        return;
    }
    if (isWord("UNION")) {
        refuse("a UNION of selections");
    }
    failHere("an operator or the end of the statement");
}

std::string TokenReader::name(std::string_view what) {
    if (!isName()) {
        failHere(std::string(what));
    }
    std::string result(token_.text);
    advance();
    return result;
}

std::string TokenReader::aliasOf(bool wordNeeded) {
    if (takeWord("AS")) {
        return name("a name behind AS");
    }
    return isName() && !wordNeeded ? name("a name") : std::string();
}

bool TokenReader::takeStar(std::string& qualifier) {
    if (takeSymbol("*")) {
        return true;
    }
    if (!isName()) {
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
    qualifier = std::string(token_.text);
    lexer_ = ahead;
    advance();
    return true;
}

void TokenReader::skipTo(std::size_t position) {
    lexer_.moveTo(position);
    advance();
}

}  // namespace sql
