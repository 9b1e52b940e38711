// Feeds the reading of numbers and dates whatever the fuzzer thinks of, under a locale with a point and one
// with a comma. What is read is shown so that it is read as the same once more.
#include <QLocale>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/dao/error.h"
#include "platform/system/dates.h"
#include "platform/system/numbers.h"

namespace {

void expect(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// Too large an amount is told; any other is the one that its text says.
void showAsAmount(float value) {
    try {
        const dao::Currency amount = platform::throughCurrencyFormat(value);
        const std::optional<float> read = platform::readSingle(platform::formatCurrency(value));
        expect(read && platform::formatCurrency(*read) == platform::formatCurrency(amount));
    } catch (const dao::Error& error) {
        expect(error.Number() == dao::errOverflow);
    }
}

void readAsNumber(const QString& text) {
    const std::optional<double> number = platform::readNumber(text);
    expect(platform::isNumeric(text) == number.has_value());
    expect(!number || platform::readNumber(platform::textOfDouble(*number)) == number);
    const std::optional<float> single = platform::readSingle(text);
    expect(!single || number);
    if (single) {
        expect(platform::readSingle(platform::textOfSingle(*single)) == single);
        showAsAmount(*single);
    }
}

void readAsDate(const QString& text) {
    const std::optional<dao::Date> date = platform::readDate(text);
    expect(platform::isDate(text) == date.has_value());
    if (date) {
        const std::optional<dao::Date> again = platform::readDate(platform::textOfDate(*date));
        expect(again && platform::toQDateTime(*again) == platform::toQDateTime(*date));
    }
}

}  // namespace

// The first byte chooses the locale.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    QLocale::setDefault(data[0] % 2 == 0 ? QLocale(QLocale::Serbian, QLocale::LatinScript, QLocale::Serbia)
                                         : QLocale(QLocale::English, QLocale::UnitedStates));
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>(size - 1));
    readAsNumber(text);
    readAsDate(text);
    return 0;
}
