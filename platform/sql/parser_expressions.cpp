#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "platform/sql/parser_impl.h"

namespace sql {

namespace {

using Kind = Expression::Kind;
using Op = Expression::Op;

struct Operator {
    std::string_view sign;
    int level;  // the higher, the tighter
    Op op;      // None: text joining
};

constexpr int kTightestLevel = 4;
constexpr std::array<Operator, 7> kOperators = {{{"&", 0, Op::None},
                                                 {"+", 1, Op::Add},
                                                 {"-", 1, Op::Subtract},
                                                 {"Mod", 2, Op::Mod},
                                                 {"\\", 3, Op::IntDivide},
                                                 {"*", 4, Op::Multiply},
                                                 {"/", 4, Op::Divide}}};

struct Comparison {
    std::string_view sign;
    Op op;
};
constexpr std::array<Comparison, 6> kComparisons = {{{"=", Op::Equal},
                                                     {"<>", Op::NotEqual},
                                                     {"<", Op::Less},
                                                     {">", Op::Greater},
                                                     {"<=", Op::LessEqual},
                                                     {">=", Op::GreaterEqual}}};

struct Function {
    std::string_view name;
    std::size_t least;
    std::size_t most;
};
constexpr std::array<Function, 7> kFunctions = {{{"DateDiff", 3, 4},
                                                 {"Now", 0, 0},
                                                 {"Count", 1, 1},
                                                 {"Sum", 1, 1},
                                                 {"Min", 1, 1},
                                                 {"Max", 1, 1},
                                                 {"Avg", 1, 1}}};

bool isEqualTerm(const Expression& e) {
    return e.kind == Kind::Compare && e.op == Op::Equal && e.children[0]->kind == Kind::Name &&
           e.children[1]->kind == Kind::Integer;
}

bool sameField(const Expression& a, const Expression& b) {
    return sameName(a.text, b.text) && sameName(a.qualifier, b.qualifier) && a.dotted == b.dotted;
}

}  // namespace

// The terms of a chain as they come in. Terms "field = number" on one field gather in one set, at the place
// where the first of them stood.
struct Parser::OrChain {
    struct Run {
        std::size_t place;  // in terms
        std::vector<std::int64_t> ids;
    };
    static constexpr std::size_t kMaxRuns = 8;
    std::vector<ExpressionPtr> terms;
    std::vector<Run> runs;

    // The numbers the term was gathered with; nullptr where it stands alone.
    std::vector<std::int64_t>* add(const ExpressionPtr& term) {
        if (!isEqualTerm(*term)) {
            terms.push_back(term);
            return nullptr;
        }
        for (Run& run : runs) {
            if (sameField(*terms[run.place]->children[0], *term->children[0])) {
                run.ids.push_back(term->children[1]->integer);
                return &run.ids;
            }
        }
        terms.push_back(term);
        if (runs.size() == kMaxRuns) {
            return nullptr;
        }
        runs.push_back({terms.size() - 1, {term->children[1]->integer}});
        return &runs.back().ids;
    }
};

std::shared_ptr<Expression> Parser::make(Kind kind, std::size_t position,
                                         std::vector<ExpressionPtr> children) const {
    auto result = std::make_shared<Expression>();
    result->kind = kind;
    result->position = position;
    for (const ExpressionPtr& child : children) {
        result->depth = std::max(result->depth, child->depth + 1);
    }
    if (result->depth > kMaxTreeDepth) {
        fail("the expression is too long or nested too deeply at '" + fragment(lexer_.source(), position) +
                 "'.",
             position);
    }
    result->children = std::move(children);
    return result;
}

// From the second term of a quick filter's chain on, the text repeats itself: " OR CustID=" and a number.
// Reading these without cutting them into tokens is what keeps a filter with a hundred thousand hits quick.
// `field` is the name as the term before spelled it; whatever does not look exactly like that term is left to
// the general rules.
void Parser::runOfEqualTerms(std::string_view field, std::vector<std::int64_t>& ids) {
    const std::string_view source = lexer_.source();
    auto blanks = [source](std::size_t at) {
        while (at < source.size() && isBlank(source[at])) {
            ++at;
        }
        return at;
    };
    auto isOr = [source](std::size_t at) {
        return at + 2 < source.size() && (source[at] | 0x20) == 'o' && (source[at + 1] | 0x20) == 'r' &&
               isBlank(source[at + 2]);
    };
    std::size_t at = token_.position;
    while (isOr(at)) {
        std::size_t p = blanks(at + 2);
        if (source.compare(p, field.size(), field) != 0) {
            break;
        }
        p = blanks(p + field.size());
        if (p >= source.size() || source[p] != '=') {
            break;
        }
        p = blanks(p + 1);
        std::int64_t id = 0;
        const auto number = std::from_chars(source.data() + p, source.data() + source.size(), id);
        const auto end = static_cast<std::size_t>(number.ptr - source.data());
        p = blanks(end);
        const bool termEnds =
            p == source.size() || source[p] == ')' || source[p] == ';' || (p > end && isOr(p));
        if (number.ec != std::errc() || !termEnds) {
            break;
        }
        ids.push_back(id);
        at = p;
    }
    if (at != token_.position) {
        lexer_.moveTo(at);
        token_ = lexer_.next();
    }
}

// Adds a term, and takes at one stroke those that follow it and look like it.
void Parser::addTerm(OrChain& chain, const ExpressionPtr& term, std::size_t start) {
    std::vector<std::int64_t>* ids = chain.add(term);
    if (ids == nullptr || !isWord("OR") || term->children[0]->position != start) {
        return;
    }
    const std::string_view source = lexer_.source();
    std::size_t end = std::min(source.find('=', start), source.size());
    while (end > start && isBlank(source[end - 1])) {
        --end;
    }
    if (end > start) {
        runOfEqualTerms(source.substr(start, end - start), *ids);
    }
}

ExpressionPtr Parser::expression() {
    const Nesting nesting(*this);
    return orChain();
}

ExpressionPtr Parser::orChain() {
    const std::size_t position = token_.position;
    ExpressionPtr term = andChain();
    if (!isWord("OR")) {
        if (isWord("XOR") || isWord("EQV") || isWord("IMP")) {
            fail("the operator " + std::string(token_.text) + " is not supported.", token_.position);
        }
        return term;
    }
    OrChain chain;
    addTerm(chain, term, position);
    while (takeWord("OR")) {
        const std::size_t start = token_.position;
        addTerm(chain, andChain(), start);
    }
    for (OrChain::Run& run : chain.runs) {
        if (run.ids.size() > 1) {
            ExpressionPtr& place = chain.terms[run.place];
            place = setOf(place->children[0], std::move(run.ids));
        }
    }
    if (chain.terms.size() == 1) {
        return chain.terms.front();
    }
    return make(Kind::Or, position, std::move(chain.terms));
}

ExpressionPtr Parser::setOf(const ExpressionPtr& field, std::vector<std::int64_t> ids) const {
    if (!std::is_sorted(ids.begin(), ids.end())) {
        std::sort(ids.begin(), ids.end());
    }
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    auto result = make(Kind::InSet, field->position, {field});
    result->ids = std::make_shared<const std::vector<std::int64_t>>(std::move(ids));
    return result;
}

ExpressionPtr Parser::andChain() {
    const std::size_t position = token_.position;
    ExpressionPtr first = notTerm();
    if (!isWord("AND")) {
        return first;
    }
    std::vector<ExpressionPtr> terms;
    terms.push_back(std::move(first));
    while (takeWord("AND")) {
        terms.push_back(notTerm());
    }
    return make(Kind::And, position, std::move(terms));
}

ExpressionPtr Parser::notTerm() {
    if (!isWord("NOT")) {
        return comparison();
    }
    const Nesting nesting(*this);
    const std::size_t position = token_.position;
    advance();
    return make(Kind::Not, position, {notTerm()});
}

ExpressionPtr Parser::comparison() {
    ExpressionPtr left = binary(0);
    for (;;) {
        ExpressionPtr whole = comparisonTail(left);
        if (whole == nullptr) {
            return left;
        }
        left = std::move(whole);
    }
}

// What may follow an operand to make a comparison of it; nullptr where nothing of the kind stands.
ExpressionPtr Parser::comparisonTail(const ExpressionPtr& left) {
    if (token_.kind == Token::Kind::Symbol) {
        for (const Comparison& candidate : kComparisons) {
            if (takeSymbol(candidate.sign)) {
                auto result = make(Kind::Compare, left->position, {left, binary(0)});
                result->op = candidate.op;
                return result;
            }
        }
        return nullptr;
    }
    if (token_.kind != Token::Kind::Name) {
        return nullptr;
    }
    if (takeWord("IS")) {
        const bool negated = takeWord("NOT");
        expectWord("NULL");
        auto result = make(Kind::IsNull, left->position, {left});
        result->negated = negated;
        return result;
    }
    bool negated = false;
    if (isWord("NOT")) {
        advance();
        negated = true;
        if (!isWord("BETWEEN") && !isWord("IN") && !isWord("LIKE")) {
            failHere("BETWEEN or IN");
        }
    }
    if (isWord("LIKE")) {
        fail("the operator LIKE is not supported.", token_.position);
    }
    if (takeWord("BETWEEN")) {
        ExpressionPtr low = binary(0);
        expectWord("AND");
        auto result = make(Kind::Between, left->position, {left, std::move(low), binary(0)});
        result->negated = negated;
        return result;
    }
    return takeWord("IN") ? inList(left, negated) : nullptr;
}

ExpressionPtr Parser::inList(const ExpressionPtr& left, bool negated) {
    expectSymbol("(");
    if (isWord("SELECT")) {
        fail("a selection behind IN is not supported.", token_.position);
    }
    std::vector<ExpressionPtr> list;
    std::vector<std::int64_t> ids;
    do {
        list.push_back(expression());
        if (list.back()->kind == Kind::Integer) {
            ids.push_back(list.back()->integer);
        }
    } while (takeSymbol(","));
    expectSymbol(")");
    if (left->kind == Kind::Name && !negated && ids.size() == list.size()) {
        return setOf(left, std::move(ids));
    }
    list.insert(list.begin(), left);
    auto result = make(Kind::In, left->position, std::move(list));
    result->negated = negated;
    return result;
}

// Operators of two operands from one level upwards; those of a level bind from the left.
ExpressionPtr Parser::binary(int level) {
    ExpressionPtr left = level == kTightestLevel ? sign() : binary(level + 1);
    for (;;) {
        const Operator* found = nullptr;
        for (const Operator& candidate : kOperators) {
            if (candidate.level == level && (isSymbol(candidate.sign) || isWord(candidate.sign))) {
                found = &candidate;
            }
        }
        if (isSymbol("^")) {
            fail("the operator ^ is not supported.", token_.position);
        }
        if (found == nullptr) {
            return left;
        }
        advance();
        ExpressionPtr right = level == kTightestLevel ? sign() : binary(level + 1);
        const Kind kind = found->op == Op::None ? Kind::Concat : Kind::Arithmetic;
        const std::size_t position = left->position;
        auto result = make(kind, position, {std::move(left), std::move(right)});
        result->op = found->op;
        left = result;
    }
}

ExpressionPtr Parser::sign() {
    if (!isSymbol("-") && !isSymbol("+")) {
        return primary();
    }
    const Nesting nesting(*this);
    const std::size_t position = token_.position;
    const bool minus = isSymbol("-");
    advance();
    ExpressionPtr operand = sign();
    if (!minus) {
        return operand;
    }
    if (operand->kind == Kind::Integer || operand->kind == Kind::Number) {
        auto number = std::make_shared<Expression>(*operand);
        number->position = position;
        number->integer = -operand->integer;
        number->number = -operand->number;
        return number;
    }
    return make(Kind::Negate, position, {std::move(operand)});
}

ExpressionPtr Parser::primary() {
    if (isSymbol("(")) {
        advance();
        if (isWord("SELECT")) {
            fail("a selection inside an expression is not supported.", token_.position);
        }
        ExpressionPtr inner = expression();
        expectSymbol(")");
        return inner;
    }
    ExpressionPtr constant = literal();
    return constant != nullptr ? constant : nameOrCall();
}

// nullptr where no literal stands.
ExpressionPtr Parser::literal() {
    std::shared_ptr<Expression> result;
    const std::size_t position = token_.position;
    switch (token_.kind) {
        case Token::Kind::Integer:
            result = make(Kind::Integer, position);
            break;
        case Token::Kind::Number:
            result = make(Kind::Number, position);
            break;
        case Token::Kind::Date:
            result = make(Kind::Date, position);
            break;
        case Token::Kind::Text:
            result = make(Kind::Text, position);
            result->text = std::move(token_.value);
            break;
        case Token::Kind::Name:
            if (isWord("NULL")) {
                result = make(Kind::Null, position);
            } else if (isWord("TRUE") || isWord("FALSE")) {
                result = make(Kind::Boolean, position);
                token_.integer = isWord("TRUE") ? -1 : 0;
            }
            break;
        default:
            break;
    }
    if (result != nullptr) {
        result->integer = token_.integer;
        result->number = token_.number;
        advance();
    }
    return result;
}

// `Field`, `Table.Field`, `Table!Field`, each part with or without brackets; `[Table.Field]`;
// `Function(...)`.
ExpressionPtr Parser::nameOrCall() {
    const bool named =
        token_.kind == Token::Kind::BracketName || (token_.kind == Token::Kind::Name && !isReserved());
    if (!named) {
        failHere("a value");
    }
    const Token first = token_;
    advance();
    if (first.kind == Token::Kind::Name && isSymbol("(")) {
        return call(first);
    }
    auto result = make(Kind::Name, first.position);
    result->text = std::string(first.text);
    if (takeSymbol(".") || takeSymbol("!")) {
        if (token_.kind != Token::Kind::Name && token_.kind != Token::Kind::BracketName) {
            failHere("a field's name");
        }
        result->qualifier = std::exchange(result->text, std::string(token_.text));
        advance();
        if (isSymbol(".") || isSymbol("!")) {
            fail("a name has a table and a field and no more parts.", token_.position);
        }
    } else if (first.kind == Token::Kind::BracketName) {
        result->dotted = result->text.find('.') != std::string::npos;
    }
    return result;
}

ExpressionPtr Parser::call(const Token& word) {
    const auto* function = std::find_if(kFunctions.begin(), kFunctions.end(),
                                        [&word](const Function& f) { return sameName(f.name, word.text); });
    if (function == kFunctions.end()) {
        fail("the function '" + std::string(word.text) + "' is not known.", word.position);
    }
    auto result = make(Kind::Call, word.position);
    const bool count = function->name == "Count";
    expectSymbol("(");
    std::vector<ExpressionPtr> arguments;
    if (count && takeSymbol("*")) {
        result->star = true;
    } else if (!isSymbol(")")) {
        result->distinct = function->least == 1 && takeWord("DISTINCT");
        do {
            arguments.push_back(expression());
        } while (takeSymbol(","));
    }
    expectSymbol(")");
    const bool enough =
        result->star || (arguments.size() >= function->least && arguments.size() <= function->most);
    if (!enough) {
        fail("the function '" + std::string(word.text) + "' does not take that number of arguments.",
             word.position);
    }
    auto finished = make(Kind::Call, word.position, std::move(arguments));
    finished->text = std::string(function->name);
    finished->star = result->star;
    finished->distinct = result->distinct;
    return finished;
}

}  // namespace sql
