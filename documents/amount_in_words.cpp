#include "documents/amount_in_words.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "common/modMain.h"
#include "platform/system/trap.h"

namespace {

// What stands at the start of the text as a number, with a point for the decimals; 0 where nothing does.
double leadingNumber(const QString& text) {
    const QString trimmed = text.trimmed();
    qsizetype end = 0;
    bool point = false;
    for (; end < trimmed.size(); ++end) {
        const QChar character = trimmed[end];
        const bool sign = end == 0 && (character == QLatin1Char('-') || character == QLatin1Char('+'));
        const bool firstPoint = !point && character == QLatin1Char('.');
        if (!sign && !firstPoint && (character < QLatin1Char('0') || character > QLatin1Char('9'))) {
            break;
        }
        point = point || firstPoint;
    }
    return trimmed.left(end).toDouble();
}

std::int32_t wholePart(const QString& amount) {
    const QChar mark = amount.contains(QLatin1Char('.')) ? QLatin1Char('.') : QLatin1Char(',');
    bool isNumber = false;
    const double whole = amount.section(mark, 0, 0).trimmed().toDouble(&isNumber);
    if (!isNumber) {
        throw platform::RunError(13, QStringLiteral("Type mismatch"));
    }
    if (std::abs(whole) > std::numeric_limits<std::int32_t>::max()) {
        throw platform::RunError(6, QStringLiteral("Overflow"));
    }
    return static_cast<std::int32_t>(whole);
}

// A half goes to the even neighbour, as the program's whole numbers have always been made.
int hundredths(double amount, std::int32_t whole) {
    return static_cast<int>(std::nearbyint((amount - whole) * 100)) % 100;
}

QString unitWord(int digit) {
    static const std::array<QString, 10> kWords = {QString(),
                                                   QStringLiteral("jedan"),
                                                   QStringLiteral("dva"),
                                                   QStringLiteral("tri"),
                                                   QStringLiteral("cetiri"),
                                                   QStringLiteral("pet"),
                                                   QStringLiteral("šest"),
                                                   QStringLiteral("sedam"),
                                                   QStringLiteral("osam"),
                                                   QStringLiteral("devet")};
    return kWords[static_cast<std::size_t>(digit)];
}

QString hundredsWord(int hundreds) {
    if (hundreds == 0) {
        return {};
    }
    if (hundreds == 1) {
        return QStringLiteral("stotinu");
    }
    const QString stem = hundreds == 2 ? QStringLiteral("dve") : unitWord(hundreds);
    return stem + (hundreds > 4 ? QStringLiteral("stotina") : QStringLiteral("stotine"));
}

QString teenWord(int units) {
    if (units == 0) {
        return QStringLiteral("deset");
    }
    const QString stem = units == 1   ? QStringLiteral("jeda")
                         : units == 4 ? QStringLiteral("cetr")
                                      : unitWord(units);
    return stem + QStringLiteral("naest");
}

QString tensWord(int tens) {
    QString stem = unitWord(tens);
    switch (tens) {
        case 4:
            stem = QStringLiteral("cetr");
            break;
        case 5:
            stem = QStringLiteral("pe");
            break;
        case 6:
            stem = QStringLiteral("šez");
            break;
        case 9:
            stem = QStringLiteral("deve");
            break;
        default:
            break;
    }
    return stem + QStringLiteral("deset");
}

struct GroupName {
    const char* stem;
    bool feminine;           // one is "jedna", two "dve"
    const char* fromTwelve;  // the ending where the last two digits are 12 to 18
    const char* one;         // where the last digit is 1
    const char* few;         // 2 to 4
    const char* many;        // all else
};
// Thousands of millions, millions, thousands. A 32-bit amount knows no more.
constexpr GroupName kMilliards = {"milijard", true, "i", "a", "e", "i"};
constexpr GroupName kMillions = {"milion", false, "a", "", "a", "a"};
constexpr GroupName kThousands = {"hiljad", true, "a", "a", "e", "a"};
constexpr GroupName kUnits = {"", false, "", "", "", ""};

const char* ending(const GroupName& name, int number) {
    const int lastTwo = number % 100;
    const int units = number % 10;
    if (lastTwo >= 12 && lastTwo <= 18) {
        return name.fromTwelve;
    }
    if (units == 1) {
        return name.one;
    }
    return units >= 2 && units <= 4 ? name.few : name.many;
}

QString groupWord(int number, const GroupName& name) {
    const int tens = number / 10 % 10;
    const int units = number % 10;
    QString word = hundredsWord(number / 100);
    if (tens == 1) {
        word += teenWord(units);
    } else {
        if (tens > 1) {
            word += tensWord(tens);
        }
        if (name.feminine && units == 1) {
            word += QStringLiteral("jedna");
        } else if (name.feminine && units == 2) {
            word += QStringLiteral("dve");
        } else {
            word += unitWord(units);
        }
    }
    return word + QLatin1String(name.stem) + QLatin1String(ending(name, number));
}

}  // namespace

QString AmountInWords(const QString& amount, bool dinars) {
    if (leadingNumber(amount) == 0) {
        return QStringLiteral("nula");
    }

    QString decimal = GetLocaleValue(14);
    if (decimal.isEmpty()) {
        decimal = QStringLiteral(".");
    }
    QString thousands = GetLocaleValue(15);
    if (thousands.isEmpty()) {
        thousands = QStringLiteral(",");
    }
    QString plain = amount;
    plain.remove(thousands).replace(decimal, QStringLiteral("."));

    const std::int32_t whole = wholePart(plain);
    const int cents = hundredths(leadingNumber(plain), whole);

    struct Group {
        int divisor;
        const GroupName& name;
    };
    const Group kGroups[] = {
        {1'000'000'000, kMilliards}, {1'000'000, kMillions}, {1'000, kThousands}, {1, kUnits}};
    QString words;
    const int digits = std::abs(whole);
    for (const Group& group : kGroups) {
        const int number = digits / group.divisor % 1000;
        if (number != 0) {
            words += groupWord(number, group.name);
        }
    }
    words += dinars ? QStringLiteral("din. i") : QStringLiteral("eur. i");
    return words + (cents < 0 ? QString() : QStringLiteral(" ")) + QString::number(cents) +
           QStringLiteral("/100");
}
