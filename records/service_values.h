#pragma once

#include <QString>

#include "platform/dao/value.h"
#include "records/service_fields.h"
#include "records/service_row.h"

// The way of a value from the file into the list and the editor, and back, by what its field holds.

// A service as the list counts with it: Date, Currency in the unit on screen, Single, or Text. Null: the file
// has no readable value.
using ServiceValues = PerServiceColumn<dao::Value>;
// A service as the editor has it. Dates and numbers are in the user's form, amounts in the unit on screen; an
// empty date is one left open.
using ServiceTexts = PerServiceColumn<QString>;

// Of what the file holds; Null where that cannot be read, or the amount grows too large. Reuses the memory of
// `shown`.
void showValue(ServiceKind kind, const dao::Value& stored, const service_row::ScreenUnit& unit,
               dao::Value& shown);
// Takes from an earlier row what is missing here and goes on from row to row.
void takeFromRowAbove(ServiceValues& own, const ServiceValues& above);
// False while something is missing that an earlier row could have.
bool isComplete(const ServiceValues& values);
// What is still missing counts as 0: the first row has none before it.
void countMissingAsNothing(ServiceValues& values);

// The cell of a list's row. A finish or due date from before the shop's first jobs is an empty cell.
QString cellOfValue(ServiceKind kind, const dao::Value& value);
// The same of the editor's text.
QString cellOfText(ServiceKind kind, const QString& text);

// The editor's text as the file takes it. Throws dao::Error 6 for an amount that is too large.
dao::Value storedValue(ServiceKind kind, const QString& text, const service_row::ScreenUnit& unit);

// What a field holds that nobody has typed anything into.
QString untypedText(ServiceKind kind);
// A typed text in the program's own form: short dates, numbers without grouping.
struct TakenText {
    QString text;
    QString refusal;  // what to tell the person; empty: there is nothing to tell, and `text` counts
};
TakenText takeTyped(const ServiceField& field, const QString& typed);
