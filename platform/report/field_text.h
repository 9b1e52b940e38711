#pragma once

#include <QString>

namespace dao {
class Value;
}

namespace report {

// What a field shows of a value under the user's locale. `outputFormat`: "#,##0" and behind it, after a
// point, a nought for each decimal; any other format, and any value that is no number, gives the plain
// shortest text. Null gives the empty text.
QString fieldText(const dao::Value& value, const QString& outputFormat);

}  // namespace report
