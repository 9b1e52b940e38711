#include "platform/sql/expression_parser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "platform/sql/close_numbers.h"

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
struct ExpressionParser::OrChain {
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

std::shared_ptr<Expression> ExpressionParser::make(Kind kind, std::size_t position,
                                                   std::vector<ExpressionPtr> children) const {
    auto result = std::make_shared<Expression>();
    result->kind = kind;
    result->position = position;
    for (const ExpressionPtr& child : children) {
        result->depth = std::max(result->depth, child->depth + 1);
    }
    if (result->depth > kMaxTreeDepth) {
        tokens_.failAt("the expression is too long or nested too deeply at", position);
    }
    result->children = std::move(children);
    return result;
}

// From the second term of a quick filter's chain on, the text repeats itself: " OR CustID=" and a number.
// Reading these without cutting them into tokens is what keeps a filter with a hundred thousand hits quick.
// `field` is the name as the term before spelled it; whatever does not look exactly like that term is left to
// the general rules.
void ExpressionParser::runOfEqualTerms(std::string_view field, std::vector<std::int64_t>& ids) {
    const std::string_view source = tokens_.source();
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
    std::size_t at = tokens_.position();
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
    if (at != tokens_.position()) {
        tokens_.skipTo(at);
    }
}

// Adds a term, and takes at one stroke those that follow it and look like it.
void ExpressionParser::addTerm(OrChain& chain, const ExpressionPtr& term, std::size_t start) {
    std::vector<std::int64_t>* ids = chain.add(term);
    if (ids == nullptr || !tokens_.isWord("OR") || term->children[0]->position != start) {
        return;
    }
    const std::string_view source = tokens_.source();
    std::size_t end = std::min(source.find('=', start), source.size());
    while (end > start && isBlank(source[end - 1])) {
        --end;
    }
    if (end > start) {
        runOfEqualTerms(source.substr(start, end - start), *ids);
    }
}

ExpressionPtr ExpressionParser::expression() {
    const TokenReader::Nesting nesting(tokens_);
    return orChain();
}

ExpressionPtr ExpressionParser::orChain() {
    const std::size_t position = tokens_.position();
    ExpressionPtr term = andChain();
    if (!tokens_.isWord("OR")) {
        if (tokens_.isWord("XOR") || tokens_.isWord("EQV") || tokens_.isWord("IMP")) {
            tokens_.refuse("the operator " + std::string(tokens_.token().text));
        }
        return term;
    }
    OrChain chain;
    addTerm(chain, term, position);
    while (tokens_.takeWord("OR")) {
        const std::size_t start = tokens_.position();
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

ExpressionPtr ExpressionParser::setOf(const ExpressionPtr& field, std::vector<std::int64_t> ids) const {
    auto result = make(Kind::InSet, field->position, {field});
    sortOnce(ids);
    result->ids = std::make_shared<const std::vector<std::int64_t>>(std::move(ids));
    return result;
}

ExpressionPtr ExpressionParser::andChain() {
    const std::size_t position = tokens_.position();
    ExpressionPtr first = notTerm();
    if (!tokens_.isWord("AND")) {
        return first;
    }
    std::vector<ExpressionPtr> terms;
    terms.push_back(std::move(first));
    while (tokens_.takeWord("AND")) {
        terms.push_back(notTerm());
    }
    return make(Kind::And, position, std::move(terms));
}

ExpressionPtr ExpressionParser::notTerm() {
    if (!tokens_.isWord("NOT")) {
        return comparison();
    }
    const TokenReader::Nesting nesting(tokens_);
    const std::size_t position = tokens_.position();
    tokens_.advance();
    return make(Kind::Not, position, {notTerm()});
}

ExpressionPtr ExpressionParser::comparison() {
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
ExpressionPtr ExpressionParser::comparisonTail(const ExpressionPtr& left) {
    if (tokens_.token().kind == Token::Kind::Symbol) {
        for (const Comparison& candidate : kComparisons) {
            if (tokens_.takeSymbol(candidate.sign)) {
                auto result = make(Kind::Compare, left->position, {left, binary(0)});
                result->op = candidate.op;
                return result;
            }
        }
        return nullptr;
    }
    if (tokens_.token().kind != Token::Kind::Name) {
        return nullptr;
    }
    if (tokens_.takeWord("IS")) {
        const bool negated = tokens_.takeWord("NOT");
        tokens_.expectWord("NULL");
        auto result = make(Kind::IsNull, left->position, {left});
        result->negated = negated;
        return result;
    }
    bool negated = false;
    if (tokens_.isWord("NOT")) {
        tokens_.advance();
        negated = true;
        if (!tokens_.isWord("BETWEEN") && !tokens_.isWord("IN") && !tokens_.isWord("LIKE")) {
            tokens_.failHere("BETWEEN or IN");
        }
    }
    if (tokens_.isWord("LIKE")) {
        tokens_.refuse("the operator LIKE");
    }
    if (tokens_.takeWord("BETWEEN")) {
        ExpressionPtr low = binary(0);
        tokens_.expectWord("AND");
        auto result = make(Kind::Between, left->position, {left, std::move(low), binary(0)});
        result->negated = negated;
        return result;
    }
    return tokens_.takeWord("IN") ? inList(left, negated) : nullptr;
}

ExpressionPtr ExpressionParser::inList(const ExpressionPtr& left, bool negated) {
    tokens_.expectSymbol("(");
    if (tokens_.isWord("SELECT")) {
        tokens_.refuse("a selection behind IN");
    }
    std::vector<ExpressionPtr> list;
    std::vector<std::int64_t> ids;
    do {
        list.push_back(expression());
        if (list.back()->kind == Kind::Integer) {
            ids.push_back(list.back()->integer);
        }
    } while (tokens_.takeSymbol(","));
    tokens_.expectSymbol(")");
    if (left->kind == Kind::Name && !negated && ids.size() == list.size()) {
        return setOf(left, std::move(ids));
    }
    list.insert(list.begin(), left);
    auto result = make(Kind::In, left->position, std::move(list));
    result->negated = negated;
    return result;
}

// Operators of two operands from one level upwards; those of a level bind from the left.
ExpressionPtr ExpressionParser::binary(int level) {
    ExpressionPtr left = level == kTightestLevel ? sign() : binary(level + 1);
    for (;;) {
        const Operator* found = nullptr;
        for (const Operator& candidate : kOperators) {
            if (candidate.level == level &&
                (tokens_.isSymbol(candidate.sign) || tokens_.isWord(candidate.sign))) {
                found = &candidate;
            }
        }
        if (tokens_.isSymbol("^")) {
            tokens_.refuse("the operator ^");
        }
        if (found == nullptr) {
            return left;
        }
        tokens_.advance();
        ExpressionPtr right = level == kTightestLevel ? sign() : binary(level + 1);
        const Kind kind = found->op == Op::None ? Kind::Concat : Kind::Arithmetic;
        const std::size_t position = left->position;
        auto result = make(kind, position, {std::move(left), std::move(right)});
        result->op = found->op;
        left = result;
    }
}

ExpressionPtr ExpressionParser::sign() {
    if (!tokens_.isSymbol("-") && !tokens_.isSymbol("+")) {
        return primary();
    }
    const TokenReader::Nesting nesting(tokens_);
    const std::size_t position = tokens_.position();
    const bool minus = tokens_.isSymbol("-");
    tokens_.advance();
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

ExpressionPtr ExpressionParser::primary() {
    if (tokens_.isSymbol("(")) {
        tokens_.advance();
        if (tokens_.isWord("SELECT")) {
            tokens_.refuse("a selection inside an expression");
        }
        ExpressionPtr inner = expression();
        tokens_.expectSymbol(")");
        return inner;
    }
    ExpressionPtr constant = literal();
    return constant != nullptr ? constant : nameOrCall();
}

// nullptr where no literal stands.
ExpressionPtr ExpressionParser::literal() {
    std::shared_ptr<Expression> result;
    const Token& token = tokens_.token();
    switch (token.kind) {
        case Token::Kind::Integer:
            result = make(Kind::Integer, token.position);
            break;
        case Token::Kind::Number:
            result = make(Kind::Number, token.position);
            break;
        case Token::Kind::Date:
            result = make(Kind::Date, token.position);
            break;
        case Token::Kind::Text:
            result = make(Kind::Text, token.position);
            result->text = token.value;
            break;
        default:
            return word();
    }
    result->integer = token.integer;
    result->number = token.number;
    tokens_.advance();
    return result;
}

// Of the words those that are values.
ExpressionPtr ExpressionParser::word() {
    const std::size_t position = tokens_.position();
    if (tokens_.takeWord("NULL")) {
        return make(Kind::Null, position);
    }
    const bool yes = tokens_.isWord("TRUE");
    if (!yes && !tokens_.isWord("FALSE")) {
        return nullptr;
    }
    tokens_.advance();
    auto result = make(Kind::Boolean, position);
    result->integer = yes ? -1 : 0;
    return result;
}

// `Field`, `Table.Field`, `Table!Field`, each part with or without brackets; `[Table.Field]`;
// `Function(...)`.
ExpressionPtr ExpressionParser::nameOrCall() {
    if (!tokens_.isName()) {
        tokens_.failHere("a value");
    }
    const Token first = tokens_.token();
    tokens_.advance();
    if (first.kind == Token::Kind::Name && tokens_.isSymbol("(")) {
        return call(first);
    }
    auto result = make(Kind::Name, first.position);
    result->text = std::string(first.text);
    if (tokens_.takeSymbol(".") || tokens_.takeSymbol("!")) {
        if (tokens_.token().kind != Token::Kind::Name && tokens_.token().kind != Token::Kind::BracketName) {
            tokens_.failHere("a field's name");
        }
        result->qualifier = std::exchange(result->text, std::string(tokens_.token().text));
        tokens_.advance();
        if (tokens_.isSymbol(".") || tokens_.isSymbol("!")) {
            tokens_.fail("a name has a table and a field and no more parts.", tokens_.position());
        }
    } else if (first.kind == Token::Kind::BracketName) {
        result->dotted = result->text.find('.') != std::string::npos;
    }
    return result;
}

ExpressionPtr ExpressionParser::call(const Token& word) {
    const auto* function = std::find_if(kFunctions.begin(), kFunctions.end(),
                                        [&word](const Function& f) { return sameName(f.name, word.text); });
    if (function == kFunctions.end()) {
        tokens_.fail("the function '" + std::string(word.text) + "' is not known.", word.position);
    }
    auto result = make(Kind::Call, word.position);
    const bool count = function->name == "Count";
    tokens_.expectSymbol("(");
    std::vector<ExpressionPtr> arguments;
    if (count && tokens_.takeSymbol("*")) {
        result->star = true;
    } else if (!tokens_.isSymbol(")")) {
        result->distinct = function->least == 1 && tokens_.takeWord("DISTINCT");
        do {
            arguments.push_back(expression());
        } while (tokens_.takeSymbol(","));
    }
    tokens_.expectSymbol(")");
    const bool enough =
        result->star || (arguments.size() >= function->least && arguments.size() <= function->most);
    if (!enough) {
        tokens_.fail("the function '" + std::string(word.text) + "' does not take that number of arguments.",
                     word.position);
    }
    auto finished = make(Kind::Call, word.position, std::move(arguments));
    finished->text = std::string(function->name);
    finished->star = result->star;
    finished->distinct = result->distinct;
    return finished;
}

}  // namespace sql
