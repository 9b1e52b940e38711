#pragma once

#include <cstdint>
#include <string_view>

#include "platform/sql/dialect.h"

// What expressions are put together from, whatever they ask.
namespace sql::writing {

inline constexpr double kCurrencyScale = 10000;

// A text stands where a number or a date is wanted, or the other way round.
[[noreturn]] void failMismatch(const Expression& e);

Sql literal(const Dialect& dialect, const Expression& e);
Sql integerLiteral(std::int64_t number);
bool isNumberLiteral(const Expression& e);

// Currency in units, as a floating number; a Yes/No as 0 or -1.
Sql inUnits(const Dialect& dialect, Sql sql);
// How `result`, written of these, is calculated; empty where that is not all of floating numbers.
Calculation calculation(const Dialect& dialect, Expression::Op op, const Sql& result, const Sql& left,
                        const Sql& right);
// The same value by one call, where that takes less time.
Sql calculated(const Dialect& dialect, Sql sql);
// What a condition is, before its text stands.
Sql truth(Precedence precedence);
std::string_view signOf(Expression::Op op);  // of a comparison or of an arithmetic one, with its blanks

}  // namespace sql::writing
