#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "platform/sql/ast.h"
#include "platform/sql/token_reader.h"

namespace sql {

// Reads the expressions of a statement where its tokens stand, from the loosest binding to the tightest.
class ExpressionParser {
 public:
    explicit ExpressionParser(TokenReader& tokens) : tokens_(tokens) {}

    ExpressionPtr expression();

 private:
    struct OrChain;

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
    ExpressionPtr word();
    ExpressionPtr nameOrCall();
    ExpressionPtr call(const Token& word);
    std::shared_ptr<Expression> make(Expression::Kind kind, std::size_t position,
                                     std::vector<ExpressionPtr> children = {}) const;

    TokenReader& tokens_;
};

}  // namespace sql
