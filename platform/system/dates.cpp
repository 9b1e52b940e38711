#include "platform/system/dates.h"

#include <cmath>
#include <vector>

#include "platform/system/locale_facts.h"

namespace platform {

namespace {

constexpr int kMillisecondsOfDay = 86'400'000;
const QDate kDayZero(1899, 12, 30);

// A date value taken apart. Before day 0 the time of day is still counted forwards, as the engine has it:
// -1.25 is six in the morning of the day before.
struct DayAndTime {
    qint64 day = 0;
    int milliseconds = 0;
};

std::optional<DayAndTime> parts(dao::Date date) {
    constexpr double kFarAway = 10'000'000;
    if (!std::isfinite(date.days) || std::abs(date.days) > kFarAway) {
        return std::nullopt;
    }
    const double whole = std::trunc(date.days);
    DayAndTime result{static_cast<qint64>(whole),
                      static_cast<int>(std::lround(std::abs(date.days - whole) * kMillisecondsOfDay))};
    if (result.milliseconds >= kMillisecondsOfDay) {
        result.milliseconds = 0;
        ++result.day;
    }
    return result;
}

// A date is a dozen characters; they are gathered here and become a text in one step.
class DateText {
 public:
    void add(QStringView text) {
        for (const QChar c : text) {
            add(c.unicode());
        }
    }
    void add(char16_t c) {
        if (length_ < kRoom) {
            room_[length_++] = c;
        }
    }
    void add(int number, int width) {
        char16_t reversed[12];
        int length = 0;
        for (; number > 0 || length < width || length == 0; number /= 10) {
            reversed[length++] = static_cast<char16_t>(u'0' + number % 10);
        }
        while (length > 0) {
            add(reversed[--length]);
        }
    }
    QString text() const { return QString(reinterpret_cast<const QChar*>(room_), length_); }

 private:
    static constexpr int kRoom = 256;
    char16_t room_[kRoom];
    int length_ = 0;
};

struct DayMonthYear {
    int day = 0, month = 0, year = 0;
};

void addPiece(DateText& text, const LocaleFacts::DatePiece& piece, const LocaleFacts& facts,
              const DayMonthYear& parts, const QDate& date) {
    using Kind = LocaleFacts::DatePiece::Kind;
    switch (piece.kind) {
        case Kind::Day:
            return text.add(parts.day, piece.width);
        case Kind::Month:
            return text.add(parts.month, piece.width);
        case Kind::Year:
            return text.add(parts.year, piece.width);
        case Kind::Text:
            return text.add(piece.text);
        case Kind::MonthName:
            return text.add(facts.words.monthName(parts.month, QLocale::LongFormat));
        case Kind::ShortMonthName:
            return text.add(facts.words.monthName(parts.month, QLocale::ShortFormat));
        case Kind::DayName:
            return text.add(facts.words.dayName(date.dayOfWeek(), QLocale::LongFormat));
        case Kind::ShortDayName:
            return text.add(facts.words.dayName(date.dayOfWeek(), QLocale::ShortFormat));
    }
}

// Always with colons: with the locale's own sign, where that is a point, a time looks like a date.
QString timeText(int milliseconds) {
    const LocaleFacts& facts = localeFacts();
    const int seconds = milliseconds / 1000;
    const int hour = seconds / 3600;
    DateText text;
    text.add(facts.twelveHours ? (hour + 11) % 12 + 1 : hour, facts.twelveHours ? 1 : 2);
    text.add(u':');
    text.add(seconds / 60 % 60, 2);
    text.add(u':');
    text.add(seconds % 60, 2);
    if (facts.twelveHours) {
        text.add(u' ');
        text.add(hour < 12 ? facts.amText : facts.pmText);
    }
    return text.text();
}

}  // namespace

QString formatShortDate(const QDate& date) {
    if (!date.isValid()) {
        return {};
    }
    const LocaleFacts& facts = localeFacts();
    DayMonthYear parts;
    date.getDate(&parts.year, &parts.month, &parts.day);
    DateText text;
    for (const LocaleFacts::DatePiece& piece : facts.shortDate) {
        addPiece(text, piece, facts, parts, date);
    }
    return text.text();
}

namespace {

// What one day is written as. A list of services shows the days of a few years over and over.
QString textOfDay(qint64 day) {
    constexpr std::size_t kDays = 4096;
    struct Known {
        qint64 day = 0;
        int reading = 0;  // of the locale's facts; 0: nothing is known
        QString text;
    };
    static thread_local std::vector<Known> known(kDays);
    Known& place = known[static_cast<std::size_t>(day) % kDays];
    const int reading = localeFacts().reading;
    if (place.reading != reading || place.day != day) {
        place = {day, reading, formatShortDate(kDayZero.addDays(day))};
    }
    return place.text;
}

}  // namespace

QString textOfDate(dao::Date date) {
    std::optional<DayAndTime> when = parts(date);
    if (!when) {
        return {};
    }
    // The text shows whole seconds, so half a second before midnight belongs to the next day.
    constexpr int kSecond = 1000;
    when->milliseconds = (when->milliseconds + kSecond / 2) / kSecond * kSecond;
    if (when->milliseconds >= kMillisecondsOfDay) {
        when->milliseconds = 0;
        ++when->day;
    }
    if (when->day == 0) {
        return timeText(when->milliseconds);
    }
    const QString day = textOfDay(when->day);
    return when->milliseconds == 0 ? day : day + QLatin1Char(' ') + timeText(when->milliseconds);
}

QString formatLongDate(const QDate& date) {
    return localeFacts().words.toString(date, QLocale::LongFormat);
}

bool isDate(const QString& text) {
    return readDate(text).has_value();
}

QDate toQDate(dao::Date date) {
    const std::optional<DayAndTime> when = parts(date);
    return when ? kDayZero.addDays(when->day) : QDate();
}

QDateTime toQDateTime(dao::Date date) {
    const std::optional<DayAndTime> when = parts(date);
    return when ? QDateTime(kDayZero.addDays(when->day), QTime::fromMSecsSinceStartOfDay(when->milliseconds))
                : QDateTime();
}

dao::Date fromQDate(const QDate& date) {
    return {static_cast<double>(kDayZero.daysTo(date))};
}

dao::Date fromQDateTime(const QDateTime& time) {
    const double day = fromQDate(time.date()).days;
    const double ofDay = static_cast<double>(time.time().msecsSinceStartOfDay()) / kMillisecondsOfDay;
    return {day < 0 ? day - ofDay : day + ofDay};
}

}  // namespace platform
