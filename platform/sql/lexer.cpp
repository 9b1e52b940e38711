#include "platform/sql/lexer.h"

#include <array>
#include <charconv>
#include <cmath>

namespace sql {

namespace {

constexpr std::size_t kFragmentLength = 40;

[[noreturn]] void fail(const std::string& sentence, std::size_t position) {
    throw SyntaxError(sentence, position);
}

// Days from 30 December 1899 to a day of the calendar.
std::int64_t dayNumber(int year, int month, int day) {
    const int y = month <= 2 ? year - 1 : year;
    const int era = (y >= 0 ? y : y - 399) / 400;
    const int yearOfEra = y - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    constexpr std::int64_t kFromYearZeroTo1899 = 693899;
    return static_cast<std::int64_t>(era) * 146097 + dayOfEra - kFromYearZeroTo1899;
}

bool isLeap(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int daysOf(int month, int year) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeap(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

// Walks through what stands between two # signs.
class DateReader {
 public:
    explicit DateReader(std::string_view text) : text_(text) {}

    bool read(double& days) {
        int month = 0;
        int day = 0;
        int year = 0;
        blanks();
        if (!(number(month, 2) && sign('/') && number(day, 2) && sign('/') && number(year, 4))) {
            return false;
        }
        if (month < 1 || month > 12 || year < 100 || day < 1 || day > daysOf(month, year)) {
            return false;
        }
        days = static_cast<double>(dayNumber(year, month, day));
        double time = 0;
        if (!readTime(time)) {
            return false;
        }
        // Before the first day the time of day counts away from it, as the engine has always stored it.
        days = days < 0 ? days - time : days + time;
        return true;
    }

 private:
    bool readTime(double& time) {
        int hour = 0;
        int minute = 0;
        int second = 0;
        blanks();
        if (at_ == text_.size()) {
            return true;
        }
        if (!(number(hour, 2) && sign(':') && number(minute, 2))) {
            return false;
        }
        if (sign(':') && !number(second, 2)) {
            return false;
        }
        blanks();
        if (at_ != text_.size() || hour > 23 || minute > 59 || second > 59) {
            return false;
        }
        time = (hour * 3600 + minute * 60 + second) / 86400.0;
        return true;
    }

    void blanks() {
        while (at_ < text_.size() && isBlank(text_[at_])) {
            ++at_;
        }
    }

    bool number(int& value, std::size_t digits) {
        const std::size_t start = at_;
        value = 0;
        while (at_ < text_.size() && isDigit(text_[at_]) && at_ - start < digits) {
            value = value * 10 + (text_[at_++] - '0');
        }
        return at_ > start;
    }

    bool sign(char c) {
        if (at_ < text_.size() && text_[at_] == c) {
            ++at_;
            return true;
        }
        return false;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

}  // namespace

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isNamePart(char c) {
    return isNameStart(c) || isDigit(c);
}

std::string fragment(std::string_view source, std::size_t position) {
    if (position >= source.size()) {
        return {};
    }
    std::string_view rest = source.substr(position);
    if (rest.size() <= kFragmentLength) {
        return std::string(rest);
    }
    std::size_t length = kFragmentLength;
    while (length > 0 && (static_cast<unsigned char>(rest[length]) & 0xC0) == 0x80) {
        --length;
    }
    return std::string(rest.substr(0, length)) + "...";
}

void Lexer::skipBlanks() {
    while (at_ < source_.size() && isBlank(source_[at_])) {
        ++at_;
    }
}

Token Lexer::next() {
    skipBlanks();
    if (at_ >= source_.size()) {
        Token end;
        end.position = end.end = source_.size();
        return end;
    }
    const char c = source_[at_];
    if (isNameStart(c)) {
        return word();
    }
    if (isDigit(c) || (c == '.' && at_ + 1 < source_.size() && isDigit(source_[at_ + 1]))) {
        return number();
    }
    switch (c) {
        case '[':
            return bracketName();
        case '\'':
        case '"':
            return quoted(c);
        case '#':
            return date();
        default:
            return symbol();
    }
}

Token Lexer::word() {
    Token token;
    token.kind = Token::Kind::Name;
    token.position = at_;
    while (at_ < source_.size() && isNamePart(source_[at_])) {
        ++at_;
    }
    token.end = at_;
    token.text = source_.substr(token.position, at_ - token.position);
    return token;
}

Token Lexer::bracketName() {
    Token token;
    token.kind = Token::Kind::BracketName;
    token.position = at_;
    const std::size_t close = source_.find(']', at_);
    if (close == std::string_view::npos) {
        fail("the bracket in '" + fragment(source_, at_) + "' is never closed.", at_);
    }
    token.text = source_.substr(at_ + 1, close - at_ - 1);
    while (!token.text.empty() && isBlank(token.text.front())) {
        token.text.remove_prefix(1);
    }
    while (!token.text.empty() && isBlank(token.text.back())) {
        token.text.remove_suffix(1);
    }
    if (token.text.empty() || token.text.find('[') != std::string_view::npos) {
        fail("no name stands in the brackets of '" + fragment(source_, at_) + "'.", at_);
    }
    at_ = close + 1;
    token.end = at_;
    return token;
}

Token Lexer::number() {
    Token token;
    token.position = at_;
    bool whole = true;
    auto digits = [this] {
        const std::size_t start = at_;
        while (at_ < source_.size() && isDigit(source_[at_])) {
            ++at_;
        }
        return at_ > start;
    };
    digits();
    if (at_ < source_.size() && source_[at_] == '.') {
        whole = false;
        ++at_;
        digits();
    }
    if (at_ < source_.size() && (source_[at_] == 'e' || source_[at_] == 'E')) {
        whole = false;
        ++at_;
        if (at_ < source_.size() && (source_[at_] == '+' || source_[at_] == '-')) {
            ++at_;
        }
        if (!digits()) {
            fail("'" + fragment(source_, token.position) + "' is no number.", token.position);
        }
    }
    if (at_ < source_.size() && (isNamePart(source_[at_]) || source_[at_] == '.')) {
        fail("'" + fragment(source_, token.position) + "' is neither a number nor a name.", token.position);
    }
    token.end = at_;
    const char* first = source_.data() + token.position;
    const char* last = source_.data() + token.end;
    if (whole && std::from_chars(first, last, token.integer).ec == std::errc()) {
        token.kind = Token::Kind::Integer;
        token.number = static_cast<double>(token.integer);
        return token;
    }
    token.kind = Token::Kind::Number;
    if (std::from_chars(first, last, token.number).ec != std::errc() || !std::isfinite(token.number)) {
        fail("the number '" + fragment(source_, token.position) + "' is out of range.", token.position);
    }
    return token;
}

Token Lexer::quoted(char quote) {
    Token token;
    token.kind = Token::Kind::Text;
    token.position = at_;
    ++at_;
    for (;;) {
        const std::size_t close = source_.find(quote, at_);
        if (close == std::string_view::npos) {
            fail("the text in '" + fragment(source_, token.position) + "' is never closed.", token.position);
        }
        token.value.append(source_, at_, close - at_);
        at_ = close + 1;
        if (at_ >= source_.size() || source_[at_] != quote) {
            break;
        }
        token.value.push_back(quote);
        ++at_;
    }
    token.end = at_;
    if (token.value.find('\0') != std::string::npos) {
        fail("a text holds a character that cannot be stored.", token.position);
    }
    return token;
}

Token Lexer::date() {
    Token token;
    token.kind = Token::Kind::Date;
    token.position = at_;
    const std::size_t close = source_.find('#', at_ + 1);
    if (close == std::string_view::npos) {
        fail("the date in '" + fragment(source_, at_) + "' is never closed.", at_);
    }
    DateReader reader(source_.substr(at_ + 1, close - at_ - 1));
    if (!reader.read(token.number)) {
        fail("'" + fragment(source_, at_) + "' is no date; a date is written #month/day/year#.", at_);
    }
    at_ = close + 1;
    token.end = at_;
    return token;
}

Token Lexer::symbol() {
    Token token;
    token.kind = Token::Kind::Symbol;
    token.position = at_;
    std::size_t length = 1;
    const std::string_view two = source_.substr(at_, 2);
    if (two == "<>" || two == "<=" || two == ">=") {
        length = 2;
    } else if (std::string_view("(),;.!*/\\+-&^=<>").find(source_[at_]) == std::string_view::npos) {
        fail("the character in '" + fragment(source_, at_) + "' has no meaning here.", at_);
    }
    at_ += length;
    token.end = at_;
    token.text = source_.substr(token.position, length);
    return token;
}

}  // namespace sql
