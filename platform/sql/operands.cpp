#include "platform/sql/operands.h"

#include <cmath>
#include <limits>
#include <utility>

namespace sql::writing {
namespace {

using Kind = Expression::Kind;
using Op = Expression::Op;

Sql realLiteral(const Dialect& dialect, double number, Type type) {
    Sql result;
    result.text = dialect.values.real(number);
    result.type = type;
    result.precedence = std::signbit(number) ? kUnary : kAtom;
    result.real = true;
    result.notNull = true;
    return result;
}

Calculation partOf(const Sql& operand) {
    return operand.calculation.isEmpty() ? Calculation::ofOperand(operand.text) : operand.calculation;
}

char arithmeticSign(Op op) {
    return op == Op::Divide ? '/' : signOf(op)[1];
}

}  // namespace

void failMismatch(const Expression& e) {
    throw SyntaxError(
        "Data type mismatch in an expression: a text stands where a number or a date is wanted, or the "
        "other way round.",
        e.position);
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

Sql truth(Precedence precedence) {
    Sql result;
    result.type = Type::YesNo;
    result.precedence = precedence;
    result.truth = true;
    return result;
}

std::string_view signOf(Expression::Op op) {
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

Sql literal(const Dialect& dialect, const Expression& e) {
    Sql result;
    switch (e.kind) {
        case Kind::Integer:
            return integerLiteral(e.integer);
        case Kind::Number:
            return realLiteral(dialect, e.number, Type::Double);
        case Kind::Date:
            return realLiteral(dialect, e.number, Type::Date);
        case Kind::Boolean:
            result = integerLiteral(e.integer);
            result.type = Type::YesNo;
            return result;
        case Kind::Text:
            result.text = dialect.values.text(e.text);
            result.type = Type::Text;
            result.notNull = true;
            return result;
        default:
            result.text = "NULL";
            return result;
    }
}

Sql inUnits(const Dialect& dialect, Sql sql) {
    sql = dialect.values.value(std::move(sql));
    if (sql.type == Type::Currency) {
        if (!dialect.facts.calculate.empty()) {
            sql.calculation = Calculation::of(
                '/', Calculation::ofOperand(sql.text),
                Calculation::ofOperand(std::to_string(static_cast<std::int64_t>(kCurrencyScale))));
        }
        sql.text = (sql.precedence < kProduct ? "(" + sql.text + ")" : sql.text) + " / " +
                   dialect.values.real(kCurrencyScale);
        sql.precedence = kProduct;
        sql.type = Type::Double;
        sql.real = true;
    }
    return sql;
}

Calculation calculation(const Dialect& dialect, Op op, const Sql& result, const Sql& left, const Sql& right) {
    if (dialect.facts.calculate.empty() || !result.real) {
        return {};
    }
    return Calculation::of(arithmeticSign(op), partOf(left), partOf(right));
}

// Its operands lie no deeper than they did.
Sql calculated(const Dialect& dialect, Sql sql) {
    if (!sql.calculation.isLong() || !dialect.values.takes(sql.nesting + 1)) {
        return sql;
    }
    sql.text = sql.calculation.call(dialect.facts.calculate);
    sql.precedence = kAtom;
    ++sql.nesting;
    return sql;
}

}  // namespace sql::writing
