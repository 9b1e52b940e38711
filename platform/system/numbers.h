#pragma once

#include <QLocale>
#include <QString>
#include <optional>

#include "platform/dao/currency.h"

// Numbers and amounts as texts, and back. All of it goes by the user's locale (QLocale()), which a test sets
// with QLocale::setDefault; currency decimals come from currencyDecimals().
namespace platform {

// Rounds half away from zero on the shortest decimal of the value: 0.335 to two places is 0.34, 1.005
// is 1.01.
double roundHalfAway(double value, int decimals);

// "#,##0.00" and its like: groups of three and a fixed number of decimals. What rounds to zero has no sign.
QString formatGrouped(double value, int decimals = 2);
QString formatGrouped(float value, int decimals = 2);  // rounds on the shortest decimal of the float
QString formatGrouped(dao::Currency value, int decimals = 2);

// What is read off such a text again: the amount as a person sees it, as a Single. No text is made. 0 where
// the value is not finite: its text is no number.
float throughGroupedFormat(float value, int decimals = 2);

// The named format "currency": the locale's symbol and decimals.
QString formatCurrency(double value);
QString formatCurrency(float value);
QString formatCurrency(dao::Currency value);
// The locale's currency decimals (Serbian dinar: 2), from the C library's table for QLocale().
int currencyDecimals();
// What formatting with "currency" and reading back gives: the amount in the locale's currency decimals,
// through a Single. No text is made. Throws dao::Error 6 where the amount is too large for a Currency.
dao::Currency throughCurrencyFormat(dao::Currency value);
dao::Currency throughCurrencyFormat(float value);

// The shortest text that reads back as the same Single, with the locale's decimal separator, no grouping.
QString textOfSingle(float value);
QString textOfDouble(double value);

// A number typed or shown by the program: blanks around it, thousands separators, a currency symbol, a sign
// in front or behind, parentheses for negative, an exponent. Nothing where the text is no number. Thousands
// separators count only between groups of three: under a point "1,5" is no number, rather than a bill ten
// times too high.
std::optional<double> readNumber(const QString& text);
std::optional<float> readSingle(const QString& text);  // none on overflow of a Single
bool isNumeric(const QString& text);

// The decimal separator of the user's locale.
QString decimalSeparator();

}  // namespace platform
