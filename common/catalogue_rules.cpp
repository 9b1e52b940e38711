#include "common/catalogue_rules.h"

#include "common/modMain.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

constexpr int kDivisionByZero = 11;

}  // namespace

QString NameAsKept(const QString& typed) {
    return MakeProperCase ? ConvertCase(typed, 0) : typed;
}

float EuroOfDinars(double dinars, float rate) {
    if (rate == 0) {
        throw platform::RunError(kDivisionByZero, QStringLiteral("Division by zero"));
    }
    const QString euro = platform::formatGrouped(dinars / static_cast<double>(rate));
    return platform::readSingle(euro).value_or(0);
}
