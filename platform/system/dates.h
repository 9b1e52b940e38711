#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>

#include "platform/dao/date.h"

// Dates as texts, and back, by the user's locale (QLocale()).
namespace platform {

// The short date: the locale's short form with the year in four digits.
QString formatShortDate(const QDate& date);
// A date value as text: the short date; with the time behind it where there is one; the time alone on day 0.
QString textOfDate(dao::Date date);
QString formatLongDate(const QDate& date);

// A date as people type it under this locale: day, month and year in the locale's order with any of ". / - "
// or blanks between, year in two digits (00 to 29: 2000 to 2029, 30 to 99: 1930 to 1999), in four, or left
// out (this year); a month's name; ISO form; a time behind it. Nothing where it is no date. Range: years 100
// to 9999.
std::optional<dao::Date> readDate(const QString& text);
bool isDate(const QString& text);

// Between the engine's days (since 30 December 1899) and the calendar. The time of day is dropped by toQDate.
QDate toQDate(dao::Date date);
QDateTime toQDateTime(dao::Date date);
dao::Date fromQDate(const QDate& date);
dao::Date fromQDateTime(const QDateTime& time);

}  // namespace platform
