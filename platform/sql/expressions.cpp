#include "platform/sql/expressions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace sql::writing {

namespace {

using Kind = Expression::Kind;
using Op = Expression::Op;

constexpr double kCurrencyScale = 10000;

[[noreturn]] void mismatch(const Expression& e) {
    throw SyntaxError(
        "Data type mismatch in an expression: a text stands where a number or a date is wanted, or the "
        "other way round.",
        e.position);
}

Sql realLiteral(const Dialect& dialect, double number, Type type) {
    Sql result;
    result.text = dialect.real(number);
    result.type = type;
    result.precedence = std::signbit(number) ? kUnary : kAtom;
    result.real = true;
    result.notNull = true;
    return result;
}

Sql integerLiteral(std::int64_t number) {
    Sql result;
    result.text = std::to_string(number);
    const bool fits = number >= std::numeric_limits<std::int32_t>::min() &&
                      number <= std::numeric_limits<std::int32_t>::max();
    result.type = fits ? Type::Long : Type::Double;
    result.precedence = number < 0 ? kUnary : kAtom;
    result.notNull = true;
    return result;
}

bool isNumberLiteral(const Expression& e) {
    return e.kind == Kind::Integer || e.kind == Kind::Number;
}

// The literal as a whole count of ten-thousandths, where it is one.
bool asScaled(const Expression& e, std::int64_t& scaled) {
    constexpr double kExact = 9e15;
    const double value = e.number * kCurrencyScale;
    if (!isNumberLiteral(e) || std::fabs(value) > kExact) {
        return false;
    }
    scaled = std::llround(value);
    return static_cast<double>(scaled) / kCurrencyScale == e.number;
}

// What a condition is, before its text stands.
Sql truth(Precedence precedence) {
    Sql result;
    result.type = Type::YesNo;
    result.precedence = precedence;
    result.truth = true;
    return result;
}

std::string_view signOf(Op op) {
    switch (op) {
        case Op::Add:
            return " + ";
        case Op::Subtract:
            return " - ";
        case Op::Multiply:
            return " * ";
        case Op::NotEqual:
            return " <> ";
        case Op::Less:
            return " < ";
        case Op::Greater:
            return " > ";
        case Op::LessEqual:
            return " <= ";
        case Op::GreaterEqual:
            return " >= ";
        default:
            return " = ";
    }
}

}  // namespace

// Currency in units, as a floating number; a Yes/No as 0 or -1.
Sql ExpressionWriter::inUnits(Sql sql) const {
    sql = dialect_.value(std::move(sql));
    if (sql.type == Type::Currency) {
        sql.text = (sql.precedence < kProduct ? "(" + sql.text + ")" : sql.text) + " / " +
                   dialect_.real(kCurrencyScale);
        sql.precedence = kProduct;
        sql.type = Type::Double;
        sql.real = true;
    }
    return sql;
}

Sql ExpressionWriter::write(const Expression& e) {
    Sql result = written(e);
    context_.countText(result.text.size(), e.position);
    return result;
}

Sql ExpressionWriter::written(const Expression& e) {
    switch (e.kind) {
        case Kind::Name:
            return names_->resolve(e).sql;
        case Kind::Negate:
            return negation(e);
        case Kind::Arithmetic:
            return arithmetic(e);
        case Kind::Concat:
            return concat(e);
        case Kind::Compare:
            return compare(e);
        case Kind::Not:
            return inversion(e);
        case Kind::And:
        case Kind::Or:
            return terms(e);
        case Kind::IsNull:
            return nullTest(e);
        case Kind::Between:
            return between(e);
        case Kind::In:
            return inList(e);
        case Kind::InSet:
            return inSet(e);
        case Kind::Call:
            return call(e);
        default:
            return literal(e);
    }
}

Sql ExpressionWriter::negation(const Expression& e) {
    Sql operand = inUnits(write(*e.children[0]));
    if (operand.type == Type::Text || operand.type == Type::Date) {
        mismatch(e);
    }
    operand = dialect_.number(std::move(operand));
    Sql result;
    result.text = "-" + dialect_.wrapped(operand, kAtom, result.nesting, e.position);
    result.type = Type::Double;
    result.precedence = kUnary;
    result.real = operand.real;
    return result;
}

Sql ExpressionWriter::inversion(const Expression& e) {
    const Sql operand = condition(*e.children[0]);
    Sql result = truth(kNot);
    result.text = "NOT " + dialect_.wrapped(operand, kEquality, result.nesting, e.position);
    return result;
}

Sql ExpressionWriter::nullTest(const Expression& e) {
    const Sql operand = write(*e.children[0]);
    Sql result = truth(kEquality);
    result.text = dialect_.wrapped(operand, kSum, result.nesting, e.position) +
                  (e.negated ? " IS NOT NULL" : " IS NULL");
    result.notNull = true;
    return result;
}

Sql ExpressionWriter::literal(const Expression& e) const {
    Sql result;
    switch (e.kind) {
        case Kind::Integer:
            return integerLiteral(e.integer);
        case Kind::Number:
            return realLiteral(dialect_, e.number, Type::Double);
        case Kind::Date:
            return realLiteral(dialect_, e.number, Type::Date);
        case Kind::Boolean:
            result = integerLiteral(e.integer);
            result.type = Type::YesNo;
            return result;
        case Kind::Text:
            result.text = dialect_.text(e.text);
            result.type = Type::Text;
            result.notNull = true;
            return result;
        default:
            result.text = "NULL";
            return result;
    }
}

Sql ExpressionWriter::value(const Expression& e) {
    return dialect_.value(write(e));
}

Sql ExpressionWriter::condition(const Expression& e) {
    Sql result = write(e);
    if (result.type == Type::Text) {
        mismatch(e);
    }
    if (result.type == Type::YesNo || result.type == Type::Null) {
        return dialect_.condition(std::move(result));
    }
    result.text = dialect_.wrapped(result, kSum, result.nesting, e.position) + " <> 0";
    result.precedence = kEquality;
    result.type = Type::YesNo;
    result.truth = true;
    return result;
}

Sql ExpressionWriter::arithmetic(const Expression& e) {
    Sql left = inUnits(write(*e.children[0]));
    Sql right = inUnits(write(*e.children[1]));
    Sql result;
    if (e.op == Op::Add && left.type == Type::Text && right.type == Type::Text) {
        result.text = dialect_.wrapped(left, kConcat, result.nesting, e.position) + " || " +
                      dialect_.wrapped(right, kCollate, result.nesting, e.position);
        result.type = Type::Text;
        result.precedence = kConcat;
        return result;
    }
    if (left.type == Type::Text || right.type == Type::Text) {
        mismatch(e);
    }
    if (e.op == Op::Divide || e.op == Op::IntDivide || e.op == Op::Mod) {
        result = dialect_.quotient(e, left, right);
        result.type = e.op == Op::Divide ? Type::Double : Type::Long;
        return result;
    }
    left = dialect_.number(std::move(left));
    right = dialect_.number(std::move(right));
    const Precedence level = e.op == Op::Multiply ? kProduct : kSum;
    result.text = dialect_.wrapped(left, level, result.nesting, e.position) + std::string(signOf(e.op)) +
                  dialect_.wrapped(right, level + 1, result.nesting, e.position);
    result.precedence = level;
    result.real = left.real || right.real;
    result.notNull = left.notNull && right.notNull;
    // A date and a number of days make a date; the days between two dates are a number.
    const bool oneDate = (left.type == Type::Date) != (right.type == Type::Date);
    const bool date = oneDate && (e.op == Op::Add || (e.op == Op::Subtract && left.type == Type::Date));
    result.type = date ? Type::Date : Type::Double;
    return result;
}

Sql ExpressionWriter::concat(const Expression& e) {
    Sql result;
    const auto operand = [&](const Expression& child, int least) {
        const Sql sql = inUnits(write(child));
        if (sql.type == Type::Date) {
            throw SyntaxError(
                "A date cannot be joined to a text: its form differs from one workstation to the other.",
                child.position);
        }
        return dialect_.wrapped(dialect_.joinedText(sql), least, result.nesting, e.position);
    };
    const std::string left = operand(*e.children[0], kConcat);
    result.text = left + " || " + operand(*e.children[1], kCollate);
    result.type = Type::Text;
    result.precedence = kConcat;
    result.notNull = true;
    return result;
}

// The operands of a comparison, brought to one measure.
std::vector<Sql> ExpressionWriter::comparable(const Expression& e, std::size_t count) {
    std::vector<Sql> result;
    bool text = false;
    bool other = false;
    bool scaled = true;  // all are Currency or whole ten-thousandths: no conversion, and an index can serve
    bool anyCurrency = false;
    std::int64_t ignored = 0;
    for (std::size_t i = 0; i < count; ++i) {
        result.push_back(dialect_.value(write(*e.children[i])));
        const Type type = result.back().type;
        text = text || type == Type::Text;
        other = other || (type != Type::Text && type != Type::Null);
        anyCurrency = anyCurrency || type == Type::Currency;
        scaled = scaled && (type == Type::Currency || asScaled(*e.children[i], ignored));
    }
    if (text && other) {
        mismatch(e);
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::int64_t number = 0;
        if (anyCurrency && scaled && asScaled(*e.children[i], number)) {
            result[i] = integerLiteral(number);
        } else if (!scaled) {
            result[i] = inUnits(std::move(result[i]));
        }
    }
    return result;
}

Sql ExpressionWriter::compare(const Expression& e) {
    const std::vector<Sql> operands = comparable(e, 2);
    Sql result = truth(kEquality);
    const bool text = operands[0].type == Type::Text || operands[1].type == Type::Text;
    result.text = dialect_.compared(operands[0], false, kSum, result.nesting, e.position) +
                  std::string(signOf(e.op)) +
                  dialect_.compared(operands[1], text, kSum, result.nesting, e.position);
    return result;
}

Sql ExpressionWriter::between(const Expression& e) {
    const std::vector<Sql> operands = comparable(e, 3);
    Sql result = truth(kEquality);
    const bool text = operands[0].type == Type::Text || operands[1].type == Type::Text;
    result.text = dialect_.compared(operands[0], text, kSum, result.nesting, e.position);
    result.text += e.negated ? " NOT BETWEEN " : " BETWEEN ";
    result.text += dialect_.compared(operands[1], false, kSum, result.nesting, e.position) + " AND " +
                   dialect_.compared(operands[2], false, kSum, result.nesting, e.position);
    return result;
}

Sql ExpressionWriter::inList(const Expression& e) {
    const std::vector<Sql> operands = comparable(e, e.children.size());
    Sql result = truth(kEquality);
    const bool text = operands[0].type == Type::Text || operands[1].type == Type::Text;
    result.text = dialect_.compared(operands[0], text, kSum, result.nesting, e.position);
    result.text += e.negated ? " NOT IN (" : " IN (";
    for (std::size_t i = 1; i < operands.size(); ++i) {
        result.text += i > 1 ? ", " : "";
        result.text += dialect_.compared(operands[i], false, kOr, result.nesting, e.position);
        result.nesting = std::max(result.nesting, operands[i].nesting + 1);
    }
    result.text += ")";
    return result;
}

Sql ExpressionWriter::inSet(const Expression& e) {
    const Sql field = inUnits(write(*e.children[0]));
    if (field.type == Type::Text) {
        mismatch(e);
    }
    Sql result = truth(kEquality);
    result.text = dialect_.compared(field, false, kSum, result.nesting, e.position);
    if (e.ids->size() == 1) {
        result.text += " = " + std::to_string(e.ids->front());
    } else if (e.ids->size() <= kInlineIds) {
        result.text += " IN (";
        for (std::size_t i = 0; i < e.ids->size(); ++i) {
            result.text += (i > 0 ? "," : "") + std::to_string((*e.ids)[i]);
        }
        result.text += ")";
    } else {
        const int set = dialect_.addSet(context_.numbers, e.ids);
        result.text = dialect_.inSet(field, result.text, set);
    }
    return result;
}

Sql ExpressionWriter::terms(const Expression& e) {
    const bool isOr = e.kind == Kind::Or;
    Sql result = truth(isOr ? kOr : kAnd);
    std::vector<std::string> texts;
    texts.reserve(e.children.size());
    for (const ExpressionPtr& child : e.children) {
        texts.push_back(
            dialect_.wrapped(condition(*child), isOr ? kAnd : kNot, result.nesting, child->position));
    }
    const std::size_t most = dialect_.facts().chainLength;
    result.nesting += texts.size() > most ? 4 : 0;
    result.text = chain(texts, isOr ? " OR " : " AND ", most);
    return result;
}

bool ExpressionWriter::isAggregate(const Expression& call) {
    return call.kind == Kind::Call && call.text != "DateDiff" && call.text != "Now";
}

bool ExpressionWriter::hasAggregate(const Expression& e) {
    return isAggregate(e) || std::any_of(e.children.begin(), e.children.end(),
                                         [](const ExpressionPtr& child) { return hasAggregate(*child); });
}

Sql ExpressionWriter::call(const Expression& e) {
    if (e.text == "Now") {
        Sql result;
        result.text = dialect_.now(context_.numbers);
        result.type = Type::Date;
        result.real = true;
        result.notNull = true;
        return result;
    }
    return e.text == "DateDiff" ? dateDiff(e) : aggregate(e);
}

Sql ExpressionWriter::dateDiff(const Expression& e) {
    constexpr std::array<std::string_view, 10> kIntervals = {"yyyy", "q",  "m", "y", "d",
                                                             "w",    "ww", "h", "n", "s"};
    const Expression& interval = *e.children[0];
    const bool known = std::any_of(kIntervals.begin(), kIntervals.end(),
                                   [&](std::string_view k) { return sameName(k, interval.text); });
    if (interval.kind == Kind::Text && !known) {
        throw SyntaxError("'" + interval.text + "' is no interval that dates can be counted in.",
                          interval.position);
    }
    Sql result;
    result.text = std::string(dialect_.facts().dateDiff) + "(";
    for (std::size_t i = 0; i < e.children.size(); ++i) {
        const Sql argument = inUnits(write(*e.children[i]));
        if (argument.type != Type::Null && (argument.type == Type::Text) != (i == 0)) {
            mismatch(*e.children[i]);
        }
        result.text += (i > 0 ? ", " : "") + argument.text;
        result.nesting = std::max(result.nesting, argument.nesting + 2);
    }
    result.text += ")";
    result.type = Type::Long;
    return result;
}

// What a counting function counts.
Sql ExpressionWriter::ofRows(const Expression& e) {
    const NameResolver* groups = std::exchange(names_, rows_);
    const NameResolver* rows = std::exchange(rows_, nullptr);
    Sql result = value(e);
    names_ = groups;
    rows_ = rows;
    return result;
}

Sql ExpressionWriter::aggregate(const Expression& e) {
    if (rows_ == nullptr) {
        throw SyntaxError("The function " + e.text + " can stand only behind SELECT, HAVING or ORDER BY.",
                          e.position);
    }
    Sql result;
    result.type = Type::Long;
    if (e.star) {
        result.text = "COUNT(*)";
        result.notNull = true;
        return result;
    }
    const Sql argument = ofRows(*e.children[0]);
    const bool sums = e.text == "Sum" || e.text == "Avg";
    if (sums && argument.type == Type::Text) {
        mismatch(e);
    }
    result.nesting = argument.nesting + 1;
    result.text = dialect_.aggregate(e, argument, result.nesting);
    result.real = argument.real && e.text != "Count";
    if (e.text == "Sum") {
        result.type = argument.type == Type::Currency ? Type::Currency : Type::Double;
    } else if (e.text == "Avg") {
        result.type = argument.type == Type::Currency ? Type::Currency : Type::Double;
        result = inUnits(std::move(result));
        result.real = true;
    } else if (e.text != "Count") {
        result.type = argument.type;
    }
    return result;
}

std::string ExpressionWriter::assigned(const Expression& e, const ColumnInfo& column) {
    const Sql sql = value(e);
    const bool text = sql.type == Type::Text;
    if (sql.type == Type::Null) {
        return sql.text;
    }
    if (column.type == Type::Text) {
        return assignedText(e, sql);
    }
    if (text || ((column.type == Type::Long || column.type == Type::Single) && sql.type == Type::Date)) {
        mismatch(e);
    }
    if (column.type == Type::Currency) {
        return assignedCurrency(e, sql);
    }
    return assignedNumber(e, inUnits(sql), column);
}

std::string ExpressionWriter::assignedNumber(const Expression& e, const Sql& number,
                                             const ColumnInfo& column) const {
    const bool literal = isNumberLiteral(e);
    const auto single = static_cast<float>(e.number);
    if (literal && ((column.type == Type::Long && std::fabs(e.number) > std::numeric_limits<int>::max()) ||
                    (column.type == Type::Single && !std::isfinite(single)))) {
        throw SyntaxError("The number is out of range for the field '" + column.name + "'.", e.position);
    }
    if (column.type == Type::Single && literal) {
        return dialect_.real(static_cast<double>(single));
    }
    const bool same = number.type == column.type && !(column.type == Type::Long && number.real);
    if (column.type == Type::YesNo || (!same && column.type != Type::Date)) {
        return dialect_.stored(number, column.type, e.position);
    }
    return number.text;
}

std::string ExpressionWriter::assignedCurrency(const Expression& e, const Sql& sql) const {
    if (sql.type == Type::Currency) {
        return sql.text;
    }
    constexpr double kMost = 922337203685477.0;
    if (isNumberLiteral(e)) {
        if (std::fabs(e.number) > kMost) {
            throw SyntaxError("The amount is out of range.", e.position);
        }
        return std::to_string(std::llround(e.number * kCurrencyScale));
    }
    return dialect_.stored(sql, Type::Currency, e.position);
}

std::string ExpressionWriter::assignedText(const Expression& e, const Sql& sql) const {
    if (sql.type == Type::Text) {
        return sql.text;
    }
    if (sql.type == Type::Date) {
        mismatch(e);
    }
    if (e.kind == Kind::Integer) {
        return dialect_.text(std::to_string(e.integer));
    }
    return dialect_.stored(inUnits(sql), Type::Text, e.position);
}

}  // namespace sql::writing
