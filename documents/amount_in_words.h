#pragma once

#include <QString>

// An amount as it stands on a document, in Serbian words: the whole part as one unbroken word, so that nobody
// can write anything in between, then the hundredths as digits: "jednahiljadadin. i 0/100".
//
// `amount` is the shown text, with the user's separators. Zero is "nula" alone, without a currency. A
// negative amount is worded as if it were none. Throws platform::RunError 13 where the whole part is no
// number, and 6 past 2,147,483,647.
QString AmountInWords(const QString& amount, bool dinars);
