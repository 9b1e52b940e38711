#pragma once

#include <QChar>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <vector>

namespace platform {

// What the user's locale says about numbers, money and dates, read from it once: asking the locale anew for
// every cell of a list of a thousand services would cost more than all the rest.
struct LocaleFacts {
    enum class Part { Day, Month, Year };
    // One piece of the short date: a number with a least width, or text as it stands.
    struct DatePiece {
        enum class Kind { Day, Month, Year, MonthName, ShortMonthName, DayName, ShortDayName, Text } kind;
        int width = 1;
        QString text;
    };
    struct MonthName {
        QString name;  // in small letters, without a point
        int month = 0;
    };

    int reading = 0;  // how often they have been read so far: whoever keeps texts sees that they are old
    QLocale locale;
    QLocale words;  // for the names of months and days: the program speaks Serbian in Latin letters only

    QChar decimal;
    QString decimalText;
    QString group;            // empty: no thousands separator
    QString groupCharacters;  // all that count as one in a typed number
    QString symbol;           // the currency's
    QString isoCode;
    QString positivePrefix, positiveSuffix, negativePrefix, negativeSuffix;  // around an amount of money
    int currencyDecimals = 2;

    std::vector<DatePiece> shortDate;
    Part dateOrder[3] = {Part::Day, Part::Month, Part::Year};
    std::vector<MonthName> monthNames;  // the locale's and the English ones
    QStringList idleWords;              // weekdays, and words that belong to the locale's short date
    bool twelveHours = false;
    QString amText, pmText;
};

// A text without the marks that only steer the direction of writing: they stand in amounts and dates under
// some locales, and nobody sees or types them.
QString withoutDirectionMarks(const QString& text);

// The facts of QLocale(), as it stands at this moment.
const LocaleFacts& localeFacts();

// As long as one of these stands, localeFacts() gives the facts of the moment when it was made: for whoever
// writes a row of cells in one go. On its own thread only, and not over a turn of the windows.
class HeldLocale {
 public:
    HeldLocale();
    ~HeldLocale();
    HeldLocale(const HeldLocale&) = delete;
    HeldLocale& operator=(const HeldLocale&) = delete;

 private:
    const LocaleFacts* before_;
};

}  // namespace platform
