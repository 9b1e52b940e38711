#include "platform/sql/comparison.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/sql/operands.h"

namespace sql::writing {
namespace {

using Kind = Expression::Kind;

bool isText(const Sql& sql) {
    return sql.type == Type::Text;
}

bool isCurrency(const Sql& sql) {
    return sql.type == Type::Currency;
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

}  // namespace

Comparison::Comparison(const Dialect& dialect, const Expression& e, std::vector<Sql> operands)
    : dialect_(dialect), e_(e), operands_(std::move(operands)), result_(truth(kEquality)) {
    needOneKind();
    bringToOneMeasure();
    ofTexts_ = isText(operands_[0]) || isText(operands_[1]);
}

void Comparison::needOneKind() const {
    const auto isOther = [](const Sql& sql) { return !isText(sql) && sql.type != Type::Null; };
    if (std::any_of(operands_.begin(), operands_.end(), isText) &&
        std::any_of(operands_.begin(), operands_.end(), isOther)) {
        failMismatch(e_);
    }
}

// Where all are Currency or whole ten-thousandths nothing is converted, and an index can serve.
void Comparison::bringToOneMeasure() {
    bool scaled = true;
    std::int64_t number = 0;
    for (std::size_t i = 0; i < operands_.size(); ++i) {
        scaled = scaled && (isCurrency(operands_[i]) || asScaled(*e_.children[i], number));
    }
    const bool anyCurrency = std::any_of(operands_.begin(), operands_.end(), isCurrency);
    for (std::size_t i = 0; i < operands_.size(); ++i) {
        if (anyCurrency && scaled && asScaled(*e_.children[i], number)) {
            operands_[i] = integerLiteral(number);
        } else if (!scaled) {
            operands_[i] = inUnits(dialect_, std::move(operands_[i]));
        }
    }
}

Sql Comparison::write() {
    if (e_.kind == Kind::Between) {
        writeBetween();
    } else if (e_.kind == Kind::In) {
        writeList();
    } else {
        result_.text = operand(0, false, kSum) + std::string(signOf(e_.op)) + operand(1, ofTexts_, kSum);
    }
    return std::move(result_);
}

void Comparison::writeBetween() {
    result_.text = operand(0, ofTexts_, kSum) + (e_.negated ? " NOT BETWEEN " : " BETWEEN ") +
                   operand(1, false, kSum) + " AND " + operand(2, false, kSum);
}

void Comparison::writeList() {
    result_.text = operand(0, ofTexts_, kSum) + (e_.negated ? " NOT IN (" : " IN (");
    for (std::size_t i = 1; i < operands_.size(); ++i) {
        result_.text += i > 1 ? ", " : "";
        result_.text += operand(i, false, kOr);
        result_.nesting = std::max(result_.nesting, operands_[i].nesting + 1);
    }
    result_.text += ")";
}

std::string Comparison::operand(std::size_t place, bool collating, int least) {
    return dialect_.values.compared(operands_[place], collating, least, result_.nesting, e_.position);
}

}  // namespace sql::writing
