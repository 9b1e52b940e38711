#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/sql/ast.h"
#include "platform/sql/lexer.h"

namespace sql {

// Reads one statement or criterion. The grammar of expressions stands in parser_expressions.cpp, that of
// statements in parser.cpp.
class Parser {
 public:
    explicit Parser(std::string_view source);

    StatementPtr statement();
    ExpressionPtr criterion();

 private:
    // Whatever may stand inside something of its own kind counts itself in here, so that no statement can
    // exhaust the stack.
    class Nesting {
     public:
        explicit Nesting(Parser& parser);
        ~Nesting() { --parser_.nesting_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

     private:
        Parser& parser_;
    };
    struct OrChain;

    [[noreturn]] void fail(const std::string& sentence, std::size_t position) const;
    [[noreturn]] void failHere(const std::string& expected) const;
    bool isWord(std::string_view word) const;
    bool isSymbol(std::string_view symbol) const;
    bool isReserved() const;
    bool takeWord(std::string_view word);
    bool takeSymbol(std::string_view symbol);
    void expectWord(std::string_view word);
    void expectSymbol(std::string_view symbol);
    void advance();
    void expectEnd();

    // Statements.
    std::shared_ptr<Statement> select();
    StatementPtr insert();
    StatementPtr update();
    StatementPtr remove();
    SelectItem selectItem();
    bool starOf(SelectItem& item);
    FromNodePtr from();
    FromNodePtr joinChain();
    FromNodePtr source();
    FromNodePtr join(FromNode::Kind kind, FromNodePtr left, FromNodePtr right, std::size_t position);
    std::vector<OrderItem> orderBy();
    std::string name(std::string_view what);
    std::string aliasOf(bool wordNeeded);
    Assignment assignment();

    // Expressions, from the loosest binding to the tightest.
    ExpressionPtr expression();
    ExpressionPtr orChain();
    void addTerm(OrChain& chain, const ExpressionPtr& term, std::size_t start);
    void runOfEqualTerms(std::string_view field, std::vector<std::int64_t>& ids);
    ExpressionPtr setOf(const ExpressionPtr& field, std::vector<std::int64_t> ids) const;
    ExpressionPtr andChain();
    ExpressionPtr notTerm();
    ExpressionPtr comparison();
    ExpressionPtr comparisonTail(const ExpressionPtr& left);
    ExpressionPtr inList(const ExpressionPtr& left, bool negated);
    ExpressionPtr binary(int level);
    ExpressionPtr sign();
    ExpressionPtr primary();
    ExpressionPtr literal();
    ExpressionPtr nameOrCall();
    ExpressionPtr call(const Token& word);

    std::shared_ptr<Expression> make(Expression::Kind kind, std::size_t position,
                                     std::vector<ExpressionPtr> children = {}) const;

    Lexer lexer_;
    Token token_;              // the one looked at
    std::size_t lastEnd_ = 0;  // behind the token taken last
    int nesting_ = 0;
    int sources_ = 0;
};

}  // namespace sql
