#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "platform/system/locale_facts.h"
#include "platform/system/numbers.h"

namespace platform {

namespace {

bool isMinus(QChar c) {
    return c == QLatin1Char('-') || c == QChar(0x2212);
}

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// What stands around the digits: signs, brackets, a currency mark, each at most once and in any order.
class Wrapping {
 public:
    explicit Wrapping(const LocaleFacts& facts)
        : marks_{withoutDirectionMarks(facts.symbol), facts.isoCode} {}

    // Peels until only the number itself is left; false where what is there twice makes no sense.
    bool peel(QString& text) {
        for (bool found = true; found;) {
            text = text.trimmed();
            found = peelBrackets(text) || peelSign(text) || peelMark(text);
        }
        return valid_ && !(signs_ > 0 && brackets_) && signs_ <= 1 && markCount_ <= 1;
    }
    bool negative() const { return minus_ || brackets_; }

 private:
    bool peelBrackets(QString& text) {
        if (!text.startsWith(QLatin1Char('(')) || !text.endsWith(QLatin1Char(')'))) {
            return false;
        }
        valid_ = valid_ && !brackets_;
        brackets_ = true;
        text = text.mid(1, text.size() - 2);
        return true;
    }
    bool peelSign(QString& text) {
        const auto isSign = [](QChar c) { return isMinus(c) || c == QLatin1Char('+'); };
        if (text.isEmpty()) {
            return false;
        }
        if (isSign(text.front())) {
            minus_ = minus_ || isMinus(text.front());
            text.remove(0, 1);
        } else if (isSign(text.back())) {
            minus_ = minus_ || isMinus(text.back());
            text.chop(1);
        } else {
            return false;
        }
        ++signs_;
        return true;
    }
    bool peelMark(QString& text) {
        for (const QString& mark : marks_) {
            if (mark.isEmpty()) {
                continue;
            }
            if (text.startsWith(mark, Qt::CaseInsensitive)) {
                text.remove(0, mark.size());
            } else if (text.endsWith(mark, Qt::CaseInsensitive)) {
                text.chop(mark.size());
            } else {
                continue;
            }
            ++markCount_;
            return true;
        }
        return false;
    }

    QString marks_[2];
    bool valid_ = true;
    bool brackets_ = false;
    bool minus_ = false;
    int signs_ = 0;
    int markCount_ = 0;
};

// Turns the digits, with their separators and an exponent, into the plain form that from_chars reads.
// Thousands separators count only where they cut groups of three: a "1,5" under a point must not become
// fifteen on a bill.
class PlainForm {
 public:
    PlainForm(const QString& text, const LocaleFacts& facts) : text_(text), facts_(facts) {}

    bool read(std::string& plain) {
        const bool whole = readWhole();
        const bool fraction = readFraction();
        if (!whole || (wholeDigits_ == 0 && !fraction) || !readExponent() || at_ != text_.size()) {
            return false;
        }
        plain = plain_;
        return true;
    }

 private:
    bool isGroup(QChar c) const { return facts_.groupCharacters.contains(c); }
    void take() { plain_ += text_[at_++].toLatin1(); }
    int takeDigits() {
        int count = 0;
        for (; at_ < text_.size() && isDigit(text_[at_]); ++count) {
            take();
        }
        return count;
    }
    bool readWhole() {
        wholeDigits_ = takeDigits();
        bool grouped = false;
        for (; at_ < text_.size() && isGroup(text_[at_]); grouped = true) {
            ++at_;
            if (wholeDigits_ == 0 || (!grouped && wholeDigits_ > 3) || takeDigits() != 3) {
                return false;
            }
        }
        if (wholeDigits_ == 0) {
            plain_ += '0';
        }
        return true;
    }
    bool readFraction() {
        if (at_ >= text_.size() || text_[at_] != facts_.decimal) {
            return false;
        }
        ++at_;
        plain_ += '.';
        const int digits = takeDigits();
        if (digits == 0) {
            plain_ += '0';
        }
        return digits > 0;
    }
    bool readExponent() {
        if (at_ >= text_.size() || text_[at_].toLower() != QLatin1Char('e')) {
            return true;
        }
        ++at_;
        plain_ += 'e';
        if (at_ < text_.size() && (isMinus(text_[at_]) || text_[at_] == QLatin1Char('+'))) {
            plain_ += isMinus(text_[at_]) ? "-" : "";
            ++at_;
        }
        return takeDigits() > 0;
    }

    const QString& text_;
    const LocaleFacts& facts_;
    std::string plain_;
    qsizetype at_ = 0;
    int wholeDigits_ = 0;
};

// Whether a plain number that no binary number holds is too large, rather than too small, for one.
bool isTooLarge(const std::string& plain) {
    const std::size_t end = std::min(plain.find('e'), plain.size());
    const std::size_t point = std::min(plain.find('.'), end);
    const auto first = static_cast<std::ptrdiff_t>(plain.find_first_of("123456789"));
    std::ptrdiff_t exponent = 0;
    if (end < plain.size() &&
        std::from_chars(plain.data() + end + 1, plain.data() + plain.size(), exponent).ec != std::errc()) {
        return plain[end + 1] != '-';
    }
    // No text has digits enough to outweigh such an exponent.
    constexpr std::ptrdiff_t kOutweighsAll = std::ptrdiff_t{1} << 48;
    exponent = std::clamp(exponent, -kOutweighsAll, kOutweighsAll);
    return static_cast<std::ptrdiff_t>(point) - first + exponent > 0;
}

struct Read {
    std::string plain;
    bool negative = false;
};

std::optional<Read> plainForm(const QString& text) {
    const LocaleFacts& facts = localeFacts();
    QString rest = withoutDirectionMarks(text);
    Wrapping wrapping(facts);
    Read result;
    if (!wrapping.peel(rest) || !PlainForm(rest, facts).read(result.plain)) {
        return std::nullopt;
    }
    result.negative = wrapping.negative();
    return result;
}

template <typename Number>
std::optional<Number> binaryOf(const QString& text) {
    const std::optional<Read> read = plainForm(text);
    if (!read) {
        return std::nullopt;
    }
    const std::string& plain = read->plain;
    Number number = 0;
    if (std::from_chars(plain.data(), plain.data() + plain.size(), number).ec ==
        std::errc::result_out_of_range) {
        if (isTooLarge(plain)) {
            return std::nullopt;
        }
        number = 0;
    }
    return read->negative && number != 0 ? -number : number;
}

}  // namespace

std::optional<double> readNumber(const QString& text) {
    return binaryOf<double>(text);
}

std::optional<float> readSingle(const QString& text) {
    return binaryOf<float>(text);
}

bool isNumeric(const QString& text) {
    return readNumber(text).has_value();
}

}  // namespace platform
