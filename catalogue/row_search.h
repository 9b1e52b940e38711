#pragma once

#include <QString>
#include <source_location>

#include "platform/dao/recordset.h"
#include "platform/system/trap.h"

// Searches in the tables of the catalogue. That there is nothing, and that nobody could look, are two things:
// of a search that failed the set knows neither, and stands where it stood.
namespace row_search {

enum class Outcome { Found, Nothing, Failed };

// Makes the first row that meets the criterion the current one. The failure of a search is noted in `step`.
Outcome find(dao::Recordset rows, const QString& criterion, platform::Trap& step,
             std::source_location where = std::source_location::current());

// Whether a row of that name is there, and makes it the current one. The name goes into the criterion as it
// was typed, between quotes of the kind given. A quote in it that breaks the search has not been found: a
// monitor of 24" can be a name, too.
bool hasName(dao::Recordset rows, const QString& field, const QString& name, QChar quote = QLatin1Char('"'));

}  // namespace row_search
