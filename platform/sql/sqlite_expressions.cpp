#include "platform/sql/sqlite_expressions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace sql::sqlite {

namespace {

using Kind = Expression::Kind;
using Op = Expression::Op;

// Levels of parentheses that the store's parser surely takes.
constexpr int kMaxWrittenNesting = 24;
constexpr double kCurrencyScale = 10000;

[[noreturn]] void mismatch(const Expression& e) {
    throw SyntaxError(
        "Data type mismatch in an expression: a text stands where a number or a date is wanted, or the "
        "other way round.",
        e.position);
}

std::string shortest(double number) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string result(buffer.data(), end.ptr);
    if (result.find_first_of(".e") == std::string::npos) {
        result += ".0";
    }
    return result;
}

Sql realLiteral(double number, Type type) {
    Sql result;
    result.text = shortest(number);
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

Sql combined(const Sql& a, const Sql& b) {
    Sql result;
    result.nesting = std::max(a.nesting, b.nesting);
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

std::string wrapped(const Sql& sql, int least, int& nesting, std::size_t position) {
    nesting = std::max(nesting, sql.nesting);
    if (sql.precedence >= least) {
        return sql.text;
    }
    nesting = std::max(nesting, sql.nesting + 1);
    if (nesting > kMaxWrittenNesting) {
        throw SyntaxError("The expression is nested too deeply for the store.", position);
    }
    return "(" + sql.text + ")";
}

Sql engineValue(Sql sql) {
    if (sql.truth) {
        sql.text = "-(" + sql.text + ")";
        sql.precedence = kUnary;
        ++sql.nesting;
        sql.truth = false;
    }
    return sql;
}

Sql inUnits(Sql sql) {
    sql = engineValue(std::move(sql));
    if (sql.type == Type::Currency) {
        sql.text = (sql.precedence < kProduct ? "(" + sql.text + ")" : sql.text) + " / 10000.0";
        sql.precedence = kProduct;
        sql.type = Type::Double;
        sql.real = true;
    }
    return sql;
}

std::string orderTerm(const Sql& sql, bool descending) {
    std::string result = engineValue(sql).text;
    if (sql.type == Type::Text) {
        result = (sql.precedence < kCollate ? "(" + result + ")" : result) + " COLLATE DAO_TEXT";
    }
    return descending ? result + " DESC" : result;
}

Sql ExpressionWriter::write(const Expression& e) {
    Sql result = written(e);
    context_.countText(result.text.size(), e.position);
    return result;
}

Sql ExpressionWriter::written(const Expression& e) {
    switch (e.kind) {
        case Kind::Name:
            return names_.resolve(e).sql;
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
    const Sql operand = inUnits(write(*e.children[0]));
    if (operand.type == Type::Text || operand.type == Type::Date) {
        mismatch(e);
    }
    Sql result;
    result.text = "-" + wrapped(operand, kAtom, result.nesting, e.position);
    result.type = Type::Double;
    result.precedence = kUnary;
    result.real = operand.real;
    return result;
}

Sql ExpressionWriter::inversion(const Expression& e) {
    const Sql operand = condition(*e.children[0]);
    Sql result;
    result.text = "NOT " + wrapped(operand, kEquality, result.nesting, e.position);
    result.type = Type::YesNo;
    result.precedence = kNot;
    result.truth = true;
    return result;
}

Sql ExpressionWriter::nullTest(const Expression& e) {
    const Sql operand = write(*e.children[0]);
    Sql result;
    result.text =
        wrapped(operand, kSum, result.nesting, e.position) + (e.negated ? " IS NOT NULL" : " IS NULL");
    result.type = Type::YesNo;
    result.precedence = kEquality;
    result.truth = true;
    result.notNull = true;
    return result;
}

Sql ExpressionWriter::literal(const Expression& e) const {
    Sql result;
    switch (e.kind) {
        case Kind::Integer:
            return integerLiteral(e.integer);
        case Kind::Number:
            return realLiteral(e.number, Type::Double);
        case Kind::Date:
            return realLiteral(e.number, Type::Date);
        case Kind::Boolean:
            result = integerLiteral(e.integer);
            result.type = Type::YesNo;
            return result;
        case Kind::Text:
            result.text = quotedText(e.text);
            result.type = Type::Text;
            result.notNull = true;
            return result;
        default:
            result.text = "NULL";
            return result;
    }
}

Sql ExpressionWriter::value(const Expression& e) {
    return engineValue(write(e));
}

Sql ExpressionWriter::condition(const Expression& e) {
    Sql result = write(e);
    if (result.type == Type::Text) {
        mismatch(e);
    }
    if (result.type == Type::YesNo || result.type == Type::Null) {
        return result;
    }
    result.text = wrapped(result, kSum, result.nesting, e.position) + " <> 0";
    result.precedence = kEquality;
    result.type = Type::YesNo;
    result.truth = true;
    return result;
}

Sql ExpressionWriter::arithmetic(const Expression& e) {
    const Sql left = inUnits(write(*e.children[0]));
    const Sql right = inUnits(write(*e.children[1]));
    Sql result = combined(left, right);
    if (e.op == Op::Add && left.type == Type::Text && right.type == Type::Text) {
        result.text = wrapped(left, kConcat, result.nesting, e.position) + " || " +
                      wrapped(right, kCollate, result.nesting, e.position);
        result.type = Type::Text;
        result.precedence = kConcat;
        return result;
    }
    if (left.type == Type::Text || right.type == Type::Text) {
        mismatch(e);
    }
    if (e.op == Op::Divide) {
        return division(left, right, e);
    }
    if (e.op == Op::IntDivide || e.op == Op::Mod) {
        return wholeNumbers(left, right, e);
    }
    const Precedence level = e.op == Op::Multiply ? kProduct : kSum;
    result.text = wrapped(left, level, result.nesting, e.position) + std::string(signOf(e.op)) +
                  wrapped(right, level + 1, result.nesting, e.position);
    result.precedence = level;
    result.real = left.real || right.real;
    result.notNull = left.notNull && right.notNull;
    // A date and a number of days make a date; the days between two dates are a number.
    const bool oneDate = (left.type == Type::Date) != (right.type == Type::Date);
    const bool date = oneDate && (e.op == Op::Add || (e.op == Op::Subtract && left.type == Type::Date));
    result.type = date ? Type::Date : Type::Double;
    return result;
}

// The engine's division never cuts off what stands behind the point.
Sql ExpressionWriter::division(const Sql& left, const Sql& right, const Expression& e) const {
    Sql result = combined(left, right);
    std::string divisor = wrapped(right, kProduct + 1, result.nesting, e.position);
    std::string dividend = wrapped(left, kProduct, result.nesting, e.position);
    if (e.children[1]->kind == Kind::Integer) {
        divisor += ".0";
    } else if (!left.real && !right.real) {
        dividend = "1.0 * " + wrapped(left, kProduct + 1, result.nesting, e.position);
    }
    result.text = dividend + " / " + divisor;
    result.type = Type::Double;
    result.precedence = kProduct;
    result.real = true;
    return result;
}

// `\` and Mod round their operands to whole numbers first.
Sql ExpressionWriter::wholeNumbers(const Sql& left, const Sql& right, const Expression& e) const {
    Sql result = combined(left, right);
    auto whole = [&](const Sql& operand) {
        if (!operand.real && (operand.type == Type::Long || operand.type == Type::YesNo)) {
            return wrapped(operand, kProduct + 1, result.nesting, e.position);
        }
        ++result.nesting;
        return "CAST(ROUND(" + operand.text + ") AS INTEGER)";
    };
    const std::string dividend = whole(left);
    result.text = dividend + (e.op == Op::Mod ? " % " : " / ") + whole(right);
    result.type = Type::Long;
    result.precedence = kProduct;
    return result;
}

Sql ExpressionWriter::concat(const Expression& e) {
    Sql result;
    auto operand = [&](const Expression& child, int least) -> std::string {
        Sql sql = inUnits(write(child));
        if (sql.type == Type::Date) {
            throw SyntaxError(
                "A date cannot be joined to a text: its form differs from one workstation to the other.",
                child.position);
        }
        if (sql.type == Type::Null) {
            return "''";
        }
        if (sql.type == Type::Text && sql.notNull) {
            return wrapped(sql, least, result.nesting, e.position);
        }
        result.nesting = std::max(result.nesting, sql.nesting + (sql.type == Type::Single ? 3 : 1));
        if (sql.type == Type::Single) {
            // As many digits as a Single holds, not those of the double that the store keeps it in.
            return "CASE WHEN " + sql.text + " IS NULL THEN '' ELSE dao_text(CAST(printf('%.7g', " +
                   sql.text + ") AS REAL)) END";
        }
        return "dao_text(" + sql.text + ")";
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
        result.push_back(engineValue(write(*e.children[i])));
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
    Sql result;
    result.text = wrapped(operands[0], kSum, result.nesting, e.position) + std::string(signOf(e.op));
    if (operands[0].type == Type::Text || operands[1].type == Type::Text) {
        result.text += wrapped(operands[1], kCollate, result.nesting, e.position) + " COLLATE DAO_TEXT";
    } else {
        result.text += wrapped(operands[1], kSum, result.nesting, e.position);
    }
    result.type = Type::YesNo;
    result.precedence = kEquality;
    result.truth = true;
    return result;
}

Sql ExpressionWriter::between(const Expression& e) {
    const std::vector<Sql> operands = comparable(e, 3);
    Sql result;
    const bool text = operands[0].type == Type::Text || operands[1].type == Type::Text;
    result.text = text ? wrapped(operands[0], kCollate, result.nesting, e.position) + " COLLATE DAO_TEXT"
                       : wrapped(operands[0], kSum, result.nesting, e.position);
    result.text += e.negated ? " NOT BETWEEN " : " BETWEEN ";
    result.text += wrapped(operands[1], kSum, result.nesting, e.position) + " AND " +
                   wrapped(operands[2], kSum, result.nesting, e.position);
    result.type = Type::YesNo;
    result.precedence = kEquality;
    result.truth = true;
    return result;
}

Sql ExpressionWriter::inList(const Expression& e) {
    const std::vector<Sql> operands = comparable(e, e.children.size());
    Sql result;
    const bool text = operands[0].type == Type::Text || operands[1].type == Type::Text;
    result.text = text ? wrapped(operands[0], kCollate, result.nesting, e.position) + " COLLATE DAO_TEXT"
                       : wrapped(operands[0], kSum, result.nesting, e.position);
    result.text += e.negated ? " NOT IN (" : " IN (";
    for (std::size_t i = 1; i < operands.size(); ++i) {
        result.text += (i > 1 ? ", " : "") + operands[i].text;
        result.nesting = std::max(result.nesting, operands[i].nesting + 1);
    }
    result.text += ")";
    result.type = Type::YesNo;
    result.precedence = kEquality;
    result.truth = true;
    return result;
}

Sql ExpressionWriter::inSet(const Expression& e) {
    const Sql field = inUnits(write(*e.children[0]));
    if (field.type == Type::Text) {
        mismatch(e);
    }
    Sql result;
    result.text = wrapped(field, kSum, result.nesting, e.position);
    if (e.ids->size() == 1) {
        result.text += " = " + std::to_string(e.ids->front());
    } else if (e.ids->size() <= kInlineIds) {
        result.text += " IN (";
        for (std::size_t i = 0; i < e.ids->size(); ++i) {
            result.text += (i > 0 ? "," : "") + std::to_string((*e.ids)[i]);
        }
        result.text += ")";
    } else {
        result.text += " IN (SELECT value FROM idset(" + std::to_string(context_.addIdSet(e.ids)) + "))";
    }
    result.type = Type::YesNo;
    result.precedence = kEquality;
    result.truth = true;
    return result;
}

Sql ExpressionWriter::terms(const Expression& e) {
    const bool isOr = e.kind == Kind::Or;
    Sql result;
    std::vector<std::string> texts;
    texts.reserve(e.children.size());
    for (const ExpressionPtr& child : e.children) {
        texts.push_back(wrapped(condition(*child), isOr ? kAnd : kNot, result.nesting, child->position));
    }
    constexpr std::size_t kOneGroup = 50;
    result.nesting += texts.size() > kOneGroup ? 4 : 0;
    result.text = chain(texts, isOr ? " OR " : " AND ");
    result.type = Type::YesNo;
    result.precedence = isOr ? kOr : kAnd;
    result.truth = true;
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
        result.text = "dao_now()";
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
    result.text = "dao_datediff(";
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

Sql ExpressionWriter::aggregate(const Expression& e) {
    if (!aggregates_) {
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
    aggregates_ = false;
    const Sql argument = value(*e.children[0]);
    aggregates_ = true;
    const bool sums = e.text == "Sum" || e.text == "Avg";
    if (sums && argument.type == Type::Text) {
        mismatch(e);
    }
    result.nesting = argument.nesting + 1;
    std::string inner = argument.text;
    if (argument.type == Type::Text) {
        inner = wrapped(argument, kCollate, result.nesting, e.position) + " COLLATE DAO_TEXT";
    }
    result.text = e.text + (e.distinct ? "(DISTINCT " : "(") + inner + ")";
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
    const Sql number = inUnits(sql);
    switch (column.type) {
        case Type::YesNo:
            return "-(" + number.text + " <> 0)";
        case Type::Long:
            if (isNumberLiteral(e) && std::fabs(e.number) > std::numeric_limits<std::int32_t>::max()) {
                throw SyntaxError("The number is out of range for the field '" + column.name + "'.",
                                  e.position);
            }
            return number.type == Type::Long && !number.real ? number.text
                                                             : "CAST(ROUND(" + number.text + ") AS INTEGER)";
        case Type::Single:
            if (sql.type == Type::Single) {
                return sql.text;
            }
            if (isNumberLiteral(e)) {
                const auto single = static_cast<float>(e.number);
                if (!std::isfinite(single)) {
                    throw SyntaxError("The number is out of range for the field '" + column.name + "'.",
                                      e.position);
                }
                return shortest(static_cast<double>(single));
            }
            // Cut to the digits that a Single has, so that the field compares as if the engine had read and
            // written it: adding and taking away a large multiple rounds off the rest.
            return "(SELECT v * 536870913.0 - (v * 536870913.0 - v) FROM (SELECT " + number.text + " AS v))";
        default:
            return number.text;
    }
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
    int nesting = 0;
    return "CAST(ROUND(" + wrapped(sql, kProduct, nesting, e.position) + " * 10000.0) AS INTEGER)";
}

std::string ExpressionWriter::assignedText(const Expression& e, const Sql& sql) const {
    if (sql.type == Type::Text) {
        return sql.text;
    }
    if (sql.type == Type::Date) {
        mismatch(e);
    }
    if (e.kind == Kind::Integer) {
        return quotedText(std::to_string(e.integer));
    }
    return "(SELECT CASE WHEN v IS NOT NULL THEN dao_text(v) END FROM (SELECT " + inUnits(sql).text +
           " AS v))";
}

}  // namespace sql::sqlite
