#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include "platform/system/dates.h"
#include "platform/system/locale_scope.h"
#include "platform/system/numbers.h"
#include "support/places.h"

// Walks reading_corpus.txt, which tells what people type and what has to come of it.

namespace {

struct Line {
    int number = 0;
    QStringList locales;
    QString kind, text, expected;
};

// "\uXXXX" and "\t" in a text stand for the character.
QString unescaped(QString text) {
    static const QRegularExpression kCode(QStringLiteral("\\\\u([0-9A-Fa-f]{4})"));
    for (auto match = kCode.match(text); match.hasMatch(); match = kCode.match(text)) {
        text.replace(match.captured(0), QChar(match.captured(1).toUShort(nullptr, 16)));
    }
    return text.replace(QLatin1String("\\t"), QLatin1String("\t"));
}

QList<Line> corpus() {
    QFile file(QLatin1String(tests::kSourceFolder) + QStringLiteral("/platform/system/reading_corpus.txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QList<Line> lines;
    int number = 0;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        ++number;
        if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
            continue;
        }
        const QStringList fields = line.split(QLatin1Char('|'));
        EXPECT_EQ(fields.size(), 4) << "line " << number;
        lines += {number, fields.value(0).split(QLatin1Char(' ')), fields.value(1),
                  unescaped(fields.value(2)), fields.value(3)};
    }
    return lines;
}

QString readAsTold(const QString& kind, const QString& text) {
    const QString kNothing = QStringLiteral("none");
    if (kind == QLatin1String("number")) {
        const auto number = platform::readNumber(text);
        EXPECT_EQ(platform::isNumeric(text), number.has_value());
        return number ? QString::number(*number, 'g', QLocale::FloatingPointShortest) : kNothing;
    }
    const auto date = platform::readDate(text);
    EXPECT_EQ(platform::isDate(text), date.has_value());
    if (!date) {
        return kNothing;
    }
    const QDateTime time = platform::toQDateTime(*date);
    return time.toString(time.time() == QTime(0, 0) ? QStringLiteral("yyyy-MM-dd")
                                                    : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

}  // namespace

TEST(Reading, EveryLineOfTheCorpusReadsAsTold) {
    const QList<Line> lines = corpus();
    ASSERT_GT(lines.size(), 100);
    const QString thisYear = QString::number(QDate::currentDate().year());
    for (const Line& line : lines) {
        for (const QString& name : line.locales) {
            const LocaleScope locale{QLocale(name)};
            QString expected = line.expected;
            expected.replace(QLatin1String("this"), thisYear);
            EXPECT_EQ(readAsTold(line.kind, line.text).toStdString(), expected.toStdString())
                << "line " << line.number << ", " << name.toStdString() << ": " << line.text.toStdString();
        }
    }
}
