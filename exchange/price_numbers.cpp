#include "exchange/price_numbers.h"

#include <QString>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace exchange {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Takes the word from either end of the text.
bool takeWord(QString& text, const QString& word) {
    if (text.startsWith(word, Qt::CaseInsensitive)) {
        text = text.mid(word.size()).trimmed();
        return true;
    }
    if (text.endsWith(word, Qt::CaseInsensitive)) {
        text = text.chopped(word.size()).trimmed();
        return true;
    }
    return false;
}

std::optional<Money> takeMoney(QString& text) {
    static const std::pair<QString, Money> kWords[] = {
        {QStringLiteral("euro"), Money::Euro},   {QStringLiteral("eur"), Money::Euro},
        {QStringLiteral("\u20ac"), Money::Euro}, {QStringLiteral("dinara"), Money::Dinars},
        {QStringLiteral("din."), Money::Dinars}, {QStringLiteral("din"), Money::Dinars},
        {QStringLiteral("rsd"), Money::Dinars},
    };
    for (const auto& [word, money] : kWords) {
        if (takeWord(text, word)) {
            return money;
        }
    }
    return std::nullopt;
}

bool isGroupSpace(QChar c) {
    return c.isSpace() || c == QLatin1Char('\'') || c == QChar(0x2019);
}

// Groups of three behind the first, which has one to three.
bool areGroups(std::string_view whole, char separator) {
    std::size_t at = whole.find(separator);
    if (at == std::string_view::npos) {
        return true;
    }
    if (at == 0 || at > 3) {
        return false;
    }
    for (std::string_view rest = whole.substr(at);; rest = rest.substr(4)) {
        if (rest.size() < 4 || rest[0] != separator ||
            !std::all_of(rest.begin() + 1, rest.begin() + 4, isDigit)) {
            return false;
        }
        if (rest.size() == 4) {
            return true;
        }
    }
}

std::ptrdiff_t countOf(std::string_view text, char c) {
    return std::count(text.begin(), text.end(), c);
}

DecimalMark markOf(char c) {
    return c == ',' ? DecimalMark::Comma : DecimalMark::Point;
}
DecimalMark otherThan(char c) {
    return c == ',' ? DecimalMark::Point : DecimalMark::Comma;
}

}  // namespace

std::optional<TypedNumber> typedNumber(std::string_view typed) {
    QString text = QString::fromUtf8(typed.data(), static_cast<qsizetype>(typed.size())).trimmed();
    TypedNumber number;
    number.money = takeMoney(text);
    for (const char* const nothing : {",-", ".-"}) {  // as shops write "no cents"
        if (text.endsWith(QLatin1String(nothing))) {
            text.chop(2);
        }
    }
    text.removeIf(isGroupSpace);
    number.digits = text.toStdString();
    std::string_view rest = number.digits;
    if (rest.starts_with('-')) {
        rest.remove_prefix(1);
    }
    const bool isNumber =
        std::any_of(rest.begin(), rest.end(), isDigit) &&
        std::all_of(rest.begin(), rest.end(), [](char c) { return isDigit(c) || c == ',' || c == '.'; });
    return isNumber ? std::optional<TypedNumber>(number) : std::nullopt;
}

DecimalMark markIn(const std::string& digits) {
    const std::size_t last = digits.find_last_of(",.");
    if (last == std::string::npos) {
        return DecimalMark::Unknown;
    }
    const char mark = digits[last];
    if (digits.find(mark == ',' ? '.' : ',') != std::string::npos) {
        return markOf(mark);
    }
    if (countOf(digits, mark) > 1) {
        return otherThan(mark);
    }
    const std::size_t first = digits.starts_with('-') ? 1 : 0;
    const bool mayBeThousands =
        digits.size() - last == 4 && last > first && last - first <= 3 && digits[first] != '0';
    return mayBeThousands ? DecimalMark::Unknown : markOf(mark);
}

std::optional<double> numberUnder(DecimalMark mark, const std::string& digits) {
    const char decimal = mark == DecimalMark::Comma ? ',' : '.';
    const char group = mark == DecimalMark::Comma ? '.' : ',';
    const bool negative = digits.starts_with('-');
    std::string whole = digits.substr(negative ? 1 : 0);
    std::string fraction;
    if (const std::size_t at = whole.find(decimal); at != std::string::npos) {
        fraction = whole.substr(at + 1);
        whole.erase(at);
    }
    if (!std::all_of(fraction.begin(), fraction.end(), isDigit) || !areGroups(whole, group)) {
        return std::nullopt;
    }
    std::erase(whole, group);
    const std::string plain = (negative ? "-" : "") + (whole.empty() ? "0" : whole) + '.' + fraction + '0';
    double number = 0;
    const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
    const bool isRead = error == std::errc() && end == plain.data() + plain.size() && std::isfinite(number);
    return isRead ? std::optional<double>(number) : std::nullopt;
}

}  // namespace exchange
