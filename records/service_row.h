#pragma once

#include <QString>
#include <QStringList>
#include <string_view>

#include "platform/dao/currency.h"
#include "platform/dao/date.h"

// The rules of one row in the list of services: what is still to be paid, which of the four states the job is
// in, and the texts of its cells. No window and no record set is needed for any of it.
namespace service_row {

// Jobs were first booked in 1990; an older date in a service is no date at all to the list, and shows as
// empty.
inline constexpr dao::Date kFirstRealDate{32874.0};
// What a due date or a finish date that was left empty is stored as.
inline constexpr dao::Date kEmptyDate{1.0};
// A remainder below this is a rounding crumb, and an overpayment is no debt either: both count as nothing.
inline constexpr dao::Currency kTolerance = dao::Currency::fromScaled(1000);

// The unit that amounts are shown and typed in. Stored amounts are always euro.
struct ScreenUnit {
    bool dinars = false;
    float rate = 1;  // dinars for one euro

    // Rounded to four decimals. Throws dao::Error 6 where the amount grows too large.
    dao::Currency toScreen(dao::Currency stored) const;
    // Throws dao::Error 6 for a result that is too large, or none at all (a rate of 0).
    dao::Currency toStored(float shown) const;
};

// The figures of one service, the amounts in the unit on screen.
struct Figures {
    dao::Currency price;
    dao::Currency paid;
    float discount = 0;  // percent
    float gst = 0;       // percent
};

// The number as the person typed it: 117.2 and not the 117.19999... that a Single holds for it. Amounts of
// some hundred thousand dinars would otherwise be off by a para in every multiplication.
double decimalOf(float value);
dao::Currency currencyOf(float value);  // throws dao::Error 6

// What is still to be paid, from stored amounts; 0 for anything below the tolerance.
dao::Currency remainder(const Figures& figures);
// The same from what was typed into the editor or read back from a row: in Singles all along, so that the
// editor's own figure and the row agree. Not cut at 0.
float editorRemainder(float price, float discount, float gst, float paid);
// As the row counts it: through the "currency" format, 0 below the tolerance.
dao::Currency settledRemainder(float rawRemainder);

bool isFinished(dao::Date finished);
// Of a date that was typed, as it is stored: kEmptyDate for an empty one, or one that is no date.
dao::Date typedDate(const QString& text);
// A job without a price is never paid, whatever was paid for it.
bool isPaid(dao::Currency remainder, bool hasPrice);
// "FinishedPayed", "NotFinishedNotPayed", "NotFinishedPayed" or "FinishedNotPayed".
QString stateKey(bool finished, bool paid);
// The state after the price alone has changed: the finish half stays what the row shows.
QString repricedState(const QString& presentState, dao::Currency remainder, float total);

// "K" and the service's number, and back. A text that is no key gives 0.
QString keyOf(qint32 id);
qint32 idOfKey(const QString& key);

// The first kind of work stands for any: it is the one of a service that nobody has given a kind.
inline const QString kAnyType = QStringLiteral("1");
// The row's tag: kinds of work, "##", description.
QString tagOf(const QString& types, const QString& comments);
QString storedTag(std::string_view types, std::string_view comments);  // the same of what the file holds
QString typesOfTag(const QString& tag);                                // all before the first "##"
QString commentsOfTag(const QString& tag);                             // all behind it; empty without one
// The names of the kinds of work, one a line. `types` holds positions from 1 with "|" between; `names` has
// them at those positions and nothing at 0. A position that the table does not have adds no line.
QString typeNames(const QString& types, const QStringList& names);

}  // namespace service_row
