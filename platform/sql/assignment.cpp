#include "platform/sql/assignment.h"

#include <cmath>
#include <limits>

#include "platform/sql/operands.h"

namespace sql::writing {

std::string AssignmentWriter::write(const Expression& e, const ColumnInfo& column) {
    const Sql sql = values_.value(e);
    const bool isText = sql.type == Type::Text;
    if (sql.type == Type::Null) {
        return sql.text;
    }
    if (column.type == Type::Text) {
        return text(e, sql);
    }
    if (isText || ((column.type == Type::Long || column.type == Type::Single) && sql.type == Type::Date)) {
        failMismatch(e);
    }
    if (column.type == Type::Currency) {
        return currency(e, sql);
    }
    return number(e, inUnits(dialect_, sql), column);
}

std::string AssignmentWriter::number(const Expression& e, const Sql& number, const ColumnInfo& column) const {
    const bool isLiteral = isNumberLiteral(e);
    const auto single = static_cast<float>(e.number);
    if (isLiteral && ((column.type == Type::Long && std::fabs(e.number) > std::numeric_limits<int>::max()) ||
                      (column.type == Type::Single && !std::isfinite(single)))) {
        throw SyntaxError("The number is out of range for the field '" + column.name + "'.", e.position);
    }
    if (column.type == Type::Single && isLiteral) {
        return dialect_.values.real(static_cast<double>(single));
    }
    const bool same = number.type == column.type && !(column.type == Type::Long && number.real);
    if (column.type == Type::YesNo || (!same && column.type != Type::Date)) {
        return dialect_.values.stored(number, column.type, e.position);
    }
    return number.text;
}

std::string AssignmentWriter::currency(const Expression& e, const Sql& sql) const {
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
    return dialect_.values.stored(sql, Type::Currency, e.position);
}

std::string AssignmentWriter::text(const Expression& e, const Sql& sql) const {
    if (sql.type == Type::Text) {
        return sql.text;
    }
    if (sql.type == Type::Date) {
        failMismatch(e);
    }
    if (e.kind == Expression::Kind::Integer) {
        return dialect_.values.text(std::to_string(e.integer));
    }
    return dialect_.values.stored(inUnits(dialect_, sql), Type::Text, e.position);
}

}  // namespace sql::writing
