#include "platform/sql/expressions.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/sql/comparison.h"
#include "platform/sql/operands.h"

namespace sql::writing {

using Kind = Expression::Kind;
using Op = Expression::Op;

Sql ExpressionWriter::write(const Expression& e) {
    Sql result = written(e);
    context_.countText(result.text.size(), e.position);
    return result;
}

Sql ExpressionWriter::written(const Expression& e) {
    switch (e.kind) {
        case Kind::Name:
            return field(e);
        case Kind::Negate:
            return negation(e);
        case Kind::Arithmetic:
            return arithmetic(e);
        case Kind::Concat:
            return concat(e);
        case Kind::Not:
            return inversion(e);
        case Kind::And:
        case Kind::Or:
            return terms(e);
        case Kind::IsNull:
            return nullTest(e);
        case Kind::Compare:
        case Kind::Between:
        case Kind::In:
            return comparison(e);
        case Kind::InSet:
            return inSet(e);
        case Kind::Call:
            return call(e);
        default:
            return literal(dialect_, e);
    }
}

// What a selection within has reckoned goes by a name of its own out here.
Sql ExpressionWriter::field(const Expression& e) {
    Sql result = names_->resolve(e).sql;
    result.calculation = {};
    return result;
}

Sql ExpressionWriter::negation(const Expression& e) {
    Sql operand = inUnits(dialect_, write(*e.children[0]));
    if (operand.type == Type::Text || operand.type == Type::Date) {
        failMismatch(e);
    }
    operand = dialect_.values.number(std::move(operand));
    Sql result;
    result.text = "-" + dialect_.values.wrapped(operand, kAtom, result.nesting, e.position);
    result.type = Type::Double;
    result.precedence = kUnary;
    result.real = operand.real;
    return result;
}

Sql ExpressionWriter::inversion(const Expression& e) {
    const Sql operand = condition(*e.children[0]);
    Sql result = truth(kNot);
    result.text = "NOT " + dialect_.values.wrapped(operand, kEquality, result.nesting, e.position);
    return result;
}

Sql ExpressionWriter::nullTest(const Expression& e) {
    const Sql operand = write(*e.children[0]);
    Sql result = truth(kEquality);
    result.text = dialect_.values.wrapped(operand, kSum, result.nesting, e.position) +
                  (e.negated ? " IS NOT NULL" : " IS NULL");
    result.notNull = true;
    return result;
}

Sql ExpressionWriter::value(const Expression& e) {
    return dialect_.values.value(write(e));
}

Sql ExpressionWriter::condition(const Expression& e) {
    Sql result = write(e);
    if (result.type == Type::Text) {
        failMismatch(e);
    }
    if (result.type == Type::YesNo || result.type == Type::Null) {
        return dialect_.values.condition(std::move(result));
    }
    result.text = dialect_.values.wrapped(result, kSum, result.nesting, e.position) + " <> 0";
    result.precedence = kEquality;
    result.type = Type::YesNo;
    result.truth = true;
    return result;
}

Sql ExpressionWriter::arithmetic(const Expression& e) {
    Sql left = inUnits(dialect_, write(*e.children[0]));
    Sql right = inUnits(dialect_, write(*e.children[1]));
    Sql result;
    if (e.op == Op::Add && left.type == Type::Text && right.type == Type::Text) {
        result.text = dialect_.values.wrapped(left, kConcat, result.nesting, e.position) + " || " +
                      dialect_.values.wrapped(right, kCollate, result.nesting, e.position);
        result.type = Type::Text;
        result.precedence = kConcat;
        return result;
    }
    if (left.type == Type::Text || right.type == Type::Text) {
        failMismatch(e);
    }
    if (e.op == Op::Divide || e.op == Op::IntDivide || e.op == Op::Mod) {
        result = dialect_.values.quotient(e, left, right);
        result.type = e.op == Op::Divide ? Type::Double : Type::Long;
        result.calculation = calculation(dialect_, e.op, result, left, right);
        return result;
    }
    left = dialect_.values.number(std::move(left));
    right = dialect_.values.number(std::move(right));
    const Precedence level = e.op == Op::Multiply ? kProduct : kSum;
    result.text = dialect_.values.wrapped(left, level, result.nesting, e.position) +
                  std::string(signOf(e.op)) +
                  dialect_.values.wrapped(right, level + 1, result.nesting, e.position);
    result.precedence = level;
    result.real = left.real || right.real;
    result.notNull = left.notNull && right.notNull;
    result.calculation = calculation(dialect_, e.op, result, left, right);
    // A date and a number of days make a date; the days between two dates are a number.
    const bool oneDate = (left.type == Type::Date) != (right.type == Type::Date);
    const bool date = oneDate && (e.op == Op::Add || (e.op == Op::Subtract && left.type == Type::Date));
    result.type = date ? Type::Date : Type::Double;
    return result;
}

Sql ExpressionWriter::concat(const Expression& e) {
    Sql result;
    const auto operand = [&](const Expression& child, int least) {
        const Sql sql = inUnits(dialect_, write(child));
        if (sql.type == Type::Date) {
            throw SyntaxError(
                "A date cannot be joined to a text: its form differs from one workstation to the other.",
                child.position);
        }
        return dialect_.values.wrapped(dialect_.values.joinedText(sql), least, result.nesting, e.position);
    };
    const std::string left = operand(*e.children[0], kConcat);
    result.text = left + " || " + operand(*e.children[1], kCollate);
    result.type = Type::Text;
    result.precedence = kConcat;
    result.notNull = true;
    return result;
}

Sql ExpressionWriter::comparison(const Expression& e) {
    std::vector<Sql> operands;
    operands.reserve(e.children.size());
    for (const ExpressionPtr& child : e.children) {
        operands.push_back(calculated(dialect_, value(*child)));
    }
    return Comparison(dialect_, e, std::move(operands)).write();
}

Sql ExpressionWriter::inSet(const Expression& e) {
    const Sql field = inUnits(dialect_, write(*e.children[0]));
    if (field.type == Type::Text) {
        failMismatch(e);
    }
    Sql result = truth(kEquality);
    result.text = dialect_.values.compared(field, false, kSum, result.nesting, e.position);
    if (e.ids->size() == 1) {
        result.text += " = " + std::to_string(e.ids->front());
    } else if (e.ids->size() <= kInlineIds) {
        result.text += " IN (";
        for (std::size_t i = 0; i < e.ids->size(); ++i) {
            result.text += (i > 0 ? "," : "") + std::to_string((*e.ids)[i]);
        }
        result.text += ")";
    } else {
        const int set = dialect_.lookups.addSet(context_.numbers, e.ids);
        result.text = dialect_.lookups.inSet(field, result.text, set);
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
            dialect_.values.wrapped(condition(*child), isOr ? kAnd : kNot, result.nesting, child->position));
    }
    const std::size_t most = dialect_.facts.chainLength;
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
        result.text = dialect_.values.now(context_.numbers);
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
    result.text = std::string(dialect_.facts.dateDiff) + "(";
    for (std::size_t i = 0; i < e.children.size(); ++i) {
        const Sql argument = inUnits(dialect_, write(*e.children[i]));
        if (argument.type != Type::Null && (argument.type == Type::Text) != (i == 0)) {
            failMismatch(*e.children[i]);
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
        failMismatch(e);
    }
    result.nesting = argument.nesting + 1;
    result.text = dialect_.selects.aggregate(e, argument, result.nesting);
    result.real = argument.real && e.text != "Count";
    if (e.text == "Sum") {
        result.type = argument.type == Type::Currency ? Type::Currency : Type::Double;
    } else if (e.text == "Avg") {
        result.type = argument.type == Type::Currency ? Type::Currency : Type::Double;
        result = inUnits(dialect_, std::move(result));
        result.real = true;
    } else if (e.text != "Count") {
        result.type = argument.type;
    }
    return result;
}

}  // namespace sql::writing
