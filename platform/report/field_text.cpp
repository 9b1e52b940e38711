#include "platform/report/field_text.h"

#include <QByteArray>
#include <QLocale>
#include <algorithm>
#include <limits>
#include <optional>

#include "platform/dao/value.h"
#include "platform/system/dates.h"
#include "platform/system/numbers.h"

namespace report {
namespace {

std::optional<int> decimalsOf(const QString& format) {
    static const QString kWhole = QStringLiteral("#,##0");
    if (!format.startsWith(kWhole)) {
        return std::nullopt;
    }
    const QStringView rest = QStringView(format).sliced(kWhole.size());
    if (rest.isEmpty()) {
        return 0;
    }
    const bool noughts = rest.size() > 1 && rest[0] == u'.' &&
                         std::all_of(rest.begin() + 1, rest.end(), [](QChar c) { return c == u'0'; });
    return noughts ? std::optional<int>(static_cast<int>(rest.size()) - 1) : std::nullopt;
}

// What a statement reckons may end a hair beside the figure that a person comes to: 6.375 with a fifth on top
// is 7.6499999999999995. Fifteen digits are what such a number holds for certain, and they say 7.65.
double withoutNoise(double value) {
    constexpr int kCertainDigits = std::numeric_limits<double>::digits10;
    return QByteArray::number(value, 'g', kCertainDigits).toDouble();
}

struct Shown {
    std::optional<int> decimals;

    QString operator()(std::monostate) const { return QString(); }
    QString operator()(bool value) const { return value ? QStringLiteral("True") : QStringLiteral("False"); }
    QString operator()(std::int32_t value) const {
        return decimals ? platform::formatGrouped(static_cast<double>(value), *decimals)
                        : QString::number(value);
    }
    QString operator()(float value) const {
        return decimals ? platform::formatGrouped(value, *decimals) : platform::textOfSingle(value);
    }
    QString operator()(double value) const {
        return decimals ? platform::formatGrouped(withoutNoise(value), *decimals)
                        : platform::textOfDouble(value);
    }
    QString operator()(dao::Currency value) const {
        return decimals ? platform::formatGrouped(value, *decimals)
                        : platform::textOfDouble(value.toDouble());
    }
    QString operator()(dao::Date value) const { return platform::textOfDate(value); }
    QString operator()(const std::string& value) const { return QString::fromUtf8(value); }
};

}  // namespace

QString fieldText(const dao::Value& value, const QString& outputFormat) {
    return std::visit(Shown{decimalsOf(outputFormat)}, value.store());
}

}  // namespace report
