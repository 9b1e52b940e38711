#include <QRegularExpression>
#include <algorithm>
#include <vector>

#include "platform/system/dates.h"
#include "platform/system/locale_facts.h"

namespace platform {

namespace {

using Part = LocaleFacts::Part;

// A number, with the count of its digits, or a month by its name.
struct Token {
    int value = 0;
    int digits = 0;  // 0: a month by name
};

bool isSeparator(QChar c) {
    return c == QLatin1Char('.') || c == QLatin1Char('/') || c == QLatin1Char('-') || c == QLatin1Char(',') ||
           c.isSpace();
}

bool isAsciiDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// Cuts a text into the numbers and month names of a date. Between two of them stands at most one sign besides
// blanks; one point or comma may stand behind the last.
class DateTokens {
 public:
    explicit DateTokens(const QString& text) : text_(text) {}

    std::optional<std::vector<Token>> read() {
        while (at_ < text_.size()) {
            if (isAsciiDigit(text_[at_])) {
                readDigits();
            } else if (isSeparator(text_[at_])) {
                readSeparator();
            } else {
                readWord();
            }
            if (!valid_) {
                return std::nullopt;
            }
        }
        return tokens_;
    }

 private:
    void readDigits() {
        constexpr int kMostDigits = 4;
        Token token;
        for (; at_ < text_.size() && isAsciiDigit(text_[at_]); ++at_) {
            token.value = token.value * 10 + text_[at_].digitValue();
            valid_ = valid_ && ++token.digits <= kMostDigits;
            if (!valid_) {
                return;
            }
        }
        tokens_.push_back(token);
    }
    void readSeparator() {
        int signs = 0;
        for (; at_ < text_.size() && isSeparator(text_[at_]); ++at_) {
            signs += text_[at_].isSpace() ? 0 : 1;
            const bool atEnd = at_ + 1 == text_.size();
            const bool endsADate = text_[at_] == QLatin1Char('.') || text_[at_] == QLatin1Char(',');
            valid_ = valid_ && !(atEnd && !endsADate && !text_[at_].isSpace());
        }
        // "5. jul, 2005": a word may bring its own point along.
        valid_ = valid_ && !tokens_.empty() && signs <= 1;
    }
    void readWord() {
        qsizetype end = at_;
        while (end < text_.size() && !isAsciiDigit(text_[end]) && !isSeparator(text_[end])) {
            ++end;
        }
        const QString word = text_.mid(at_, end - at_).toLower();
        at_ = end;
        const LocaleFacts& facts = localeFacts();
        const auto named =
            std::find_if(facts.monthNames.begin(), facts.monthNames.end(),
                         [&](const LocaleFacts::MonthName& month) { return month.name == word; });
        if (named != facts.monthNames.end()) {
            tokens_.push_back({named->month, 0});
            skipPointOfAbbreviation();
        } else if (facts.idleWords.contains(word)) {
            skipIdle();
        } else {
            valid_ = false;
        }
    }
    void skipPointOfAbbreviation() {
        if (at_ < text_.size() && text_[at_] == QLatin1Char('.')) {
            ++at_;
        }
    }
    // A weekday, or the word for "year": it goes with the signs behind it.
    void skipIdle() {
        while (at_ < text_.size() &&
               (text_[at_] == QLatin1Char('.') || text_[at_] == QLatin1Char(',') || text_[at_].isSpace())) {
            ++at_;
        }
    }

    const QString& text_;
    qsizetype at_ = 0;
    bool valid_ = true;
    std::vector<Token> tokens_;
};

std::optional<int> yearOf(const Token& token) {
    constexpr int kLastOfThisCentury = 29;
    if (token.digits == 2) {
        return token.value + (token.value <= kLastOfThisCentury ? 2000 : 1900);
    }
    return token.digits == 4 ? std::optional<int>(token.value) : std::nullopt;
}

std::optional<QDate> dateOf(const std::optional<int>& year, const Token& month, const Token& day) {
    constexpr int kFirstYear = 100;
    if (!year || *year < kFirstYear || month.digits > 2 || day.digits > 2 || day.digits == 0) {
        return std::nullopt;
    }
    const QDate date(*year, month.value, day.value);
    return date.isValid() ? std::optional<QDate>(date) : std::nullopt;
}

std::optional<QDate> threeNumbers(const std::vector<Token>& tokens) {
    Token found[3];
    if (tokens[0].digits == 4) {
        return dateOf(tokens[0].value, tokens[1], tokens[2]);
    }
    const LocaleFacts& facts = localeFacts();
    for (std::size_t i = 0; i < 3; ++i) {
        found[static_cast<std::size_t>(facts.dateOrder[i])] = tokens[i];
    }
    return dateOf(yearOf(found[static_cast<std::size_t>(Part::Year)]),
                  found[static_cast<std::size_t>(Part::Month)], found[static_cast<std::size_t>(Part::Day)]);
}

std::optional<QDate> twoNumbers(const std::vector<Token>& tokens, int thisYear) {
    const LocaleFacts& facts = localeFacts();
    const auto* day = std::find(std::begin(facts.dateOrder), std::end(facts.dateOrder), Part::Day);
    const auto* month = std::find(std::begin(facts.dateOrder), std::end(facts.dateOrder), Part::Month);
    return day < month ? dateOf(thisYear, tokens[1], tokens[0]) : dateOf(thisYear, tokens[0], tokens[1]);
}

// A month by name and one or two numbers: the day, and the year where it was typed.
std::optional<QDate> withMonthName(const Token& month, const std::vector<Token>& numbers, int thisYear) {
    if (numbers.size() == 1) {
        return dateOf(thisYear, month, numbers[0]);
    }
    const bool yearFirst =
        numbers[0].digits == 4 || (numbers[1].digits != 4 && localeFacts().dateOrder[0] == Part::Year);
    return yearFirst ? dateOf(yearOf(numbers[0]), month, numbers[1])
                     : dateOf(yearOf(numbers[1]), month, numbers[0]);
}

std::optional<QDate> readDay(const QString& text) {
    const auto tokens = DateTokens(text).read();
    if (!tokens) {
        return std::nullopt;
    }
    std::vector<Token> names;
    std::vector<Token> numbers;
    for (const Token& token : *tokens) {
        (token.digits == 0 ? names : numbers).push_back(token);
    }
    const int thisYear = QDate::currentDate().year();
    if (names.size() == 1 && (numbers.size() == 1 || numbers.size() == 2)) {
        return withMonthName(names[0], numbers, thisYear);
    }
    if (names.empty() && numbers.size() == 3) {
        return threeNumbers(numbers);
    }
    return names.empty() && numbers.size() == 2 ? twoNumbers(numbers, thisYear) : std::nullopt;
}

bool isOneOf(const QString& mark, const QString& plain, const QString& ofLocale) {
    return mark.compare(plain, Qt::CaseInsensitive) == 0 || mark.compare(ofLocale, Qt::CaseInsensitive) == 0;
}

// Cuts a time of day off the end of the text. Nothing where something like a time is there and is none.
std::optional<QTime> takeTime(QString& text, bool& found) {
    static const QRegularExpression kTime(
        QStringLiteral("(?:^|[\\sT])(\\d{1,2}):(\\d{2})(?::(\\d{2}))?(?:\\s*([^\\d\\s:][^\\d:]*))?$"));
    const QRegularExpressionMatch match = kTime.match(text);
    found = match.hasMatch();
    if (!found) {
        return QTime(0, 0);
    }
    int hour = match.captured(1).toInt();
    const QString half = match.captured(4).trimmed();
    if (!half.isEmpty()) {
        const LocaleFacts& facts = localeFacts();
        const bool morning = isOneOf(half, QStringLiteral("AM"), facts.amText);
        if ((!morning && !isOneOf(half, QStringLiteral("PM"), facts.pmText)) || hour < 1 || hour > 12) {
            return std::nullopt;
        }
        hour = hour % 12 + (morning ? 0 : 12);
    }
    const QTime time(hour, match.captured(2).toInt(), match.captured(3).toInt());
    text.truncate(match.capturedStart());
    return time.isValid() ? std::optional<QTime>(time) : std::nullopt;
}

}  // namespace

std::optional<dao::Date> readDate(const QString& text) {
    QString rest = withoutDirectionMarks(text).trimmed();
    bool hasTime = false;
    const std::optional<QTime> time = takeTime(rest, hasTime);
    rest = rest.trimmed();
    if (!time || (rest.isEmpty() && !hasTime)) {
        return std::nullopt;
    }
    const std::optional<QDate> day = rest.isEmpty() ? QDate(1899, 12, 30) : readDay(rest);
    if (!day) {
        return std::nullopt;
    }
    const double days = fromQDate(*day).days;
    constexpr double kMillisecondsOfDay = 86'400'000;
    const double ofDay = time->msecsSinceStartOfDay() / kMillisecondsOfDay;
    return dao::Date{days < 0 ? days - ofDay : days + ofDay};
}

}  // namespace platform
