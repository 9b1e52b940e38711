#include "plain_texts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>

namespace {

constexpr int kMarks = 16;  // places behind each letter, for those with a mark
constexpr std::size_t kLetters = 0x180;

using Places = std::array<std::uint16_t, kLetters>;

constexpr Places makePlaces() {
    Places places{};
    for (std::size_t code = 0; code < kLetters; ++code) {
        const std::size_t small = code >= 'A' && code <= 'Z' ? code + 0x20 : code;
        places[code] = static_cast<std::uint16_t>(code < 0x80 ? small * kMarks : 0x80 * kMarks);
    }
    struct Marked {
        std::size_t capital;  // the small letter comes next
        char plain;
        int mark;
    };
    for (const Marked letter : {Marked{0x10C, 'c', 1}, Marked{0x106, 'c', 2}, Marked{0x110, 'd', 3},
                                Marked{0x160, 's', 1}, Marked{0x17D, 'z', 1}}) {
        places[letter.capital] = places[letter.capital + 1] =
            static_cast<std::uint16_t>(letter.plain * kMarks + letter.mark);
    }
    return places;
}
constexpr Places kPlaces = makePlaces();

// The place of the next letter; 0 behind the last one.
std::uint64_t nextPlace(const char*& at, const char* end) {
    if (at == end) {
        return 0;
    }
    const auto first = static_cast<unsigned char>(*at++);
    if (first < 0x80) {
        return kPlaces[first];
    }
    const std::size_t code =
        at == end ? kLetters : (first & 0x1FU) << 6 | (static_cast<unsigned>(*at++) & 0x3FU);
    return code < kLetters ? kPlaces[code] : 0x80 * kMarks;
}

std::uint64_t fourPlaces(const char*& at, const char* end) {
    std::uint64_t places = 0;
    for (int i = 0; i < 4; ++i) {
        places = places << 16 | nextPlace(at, end);
    }
    return places;
}

}  // namespace

Lines Cells::lines(int cellsOfLine) const {
    Lines lines;
    std::size_t from = 0;
    for (std::size_t i = 0; i < ends_.size(); ++i) {
        if (i % static_cast<std::size_t>(cellsOfLine) == 0) {
            lines.emplace_back();
        } else {
            lines.back() += '|';
        }
        lines.back().append(texts_, from, ends_[i] - from);
        from = ends_[i];
    }
    return lines;
}

// --- Numbers and dates.

void appendNumber(std::string& text, std::int64_t number) {
    char digits[24];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void appendSingle(std::string& text, float number) {
    char digits[64];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed).ptr);
}

void appendDate(std::string& text, double days) {
    constexpr std::chrono::sys_days kFirst = std::chrono::year(1899) / 12 / 30;
    const std::chrono::year_month_day date(kFirst + std::chrono::days(static_cast<int>(days)));
    appendNumber(text, static_cast<unsigned>(date.month()));
    text += '/';
    appendNumber(text, static_cast<unsigned>(date.day()));
    text += '/';
    appendNumber(text, static_cast<int>(date.year()));
}

void appendAmount(std::string& text, std::int64_t cents) {
    char digits[32];
    char* const end = digits + sizeof digits;
    char* at = end;
    auto rest = static_cast<std::uint64_t>(cents < 0 ? -cents : cents);
    for (int place = 0; place < 3 || rest > 0; ++place, rest /= 10) {
        if (place == 2) {
            *--at = '.';
        } else if (place > 2 && (place - 2) % 3 == 0) {
            *--at = ',';
        }
        *--at = static_cast<char>('0' + rest % 10);
    }
    if (cents < 0) {
        *--at = '-';
    }
    text.append(at, end);
}

// 542.925 times 100 lies a hair below the half that it is.
std::int64_t centsOf(double amount) {
    constexpr double kHair = 1e-12;
    return std::llround(amount * 100 * (1 + kHair));
}

double decimalOf(float number) {
    char digits[64];
    const char* const end =
        std::to_chars(digits, digits + sizeof digits, number, std::chars_format::scientific).ptr;
    double decimal = 0;
    std::from_chars(digits, end, decimal);
    return decimal;
}

// --- A selector's entries.

void PlainSelector::clear() {
    texts_.clear();
    entries_.clear();
}

void PlainSelector::end(int number) {
    const std::uint32_t from = entries_.empty() ? 0 : entries_.back().to;
    const char* at = texts_.data() + from;
    const char* const end = texts_.data() + texts_.size();
    const std::uint64_t head = fourPlaces(at, end);
    const std::uint64_t neck = fourPlaces(at, end);
    entries_.push_back({head, neck, from, static_cast<std::uint32_t>(texts_.size()), number});
}

bool PlainSelector::before(const Entry& a, const Entry& b) const {
    if (a.head != b.head) {
        return a.head < b.head;
    }
    if (a.neck != b.neck) {
        return a.neck < b.neck;
    }
    const int order = compareNames(textOf(a), textOf(b));
    return order != 0 ? order < 0 : a.from < b.from;
}

void PlainSelector::sort() {
    std::sort(entries_.begin(), entries_.end(),
              [this](const Entry& a, const Entry& b) { return before(a, b); });
}

int PlainSelector::entryOf(int number) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [number](const Entry& entry) { return entry.number == number; });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

Lines PlainSelector::lines(int chosen) const {
    Lines lines{"chosen: " + std::to_string(chosen)};
    for (const Entry& entry : entries_) {
        lines.push_back(std::string(textOf(entry)) + "|" + std::to_string(entry.number));
    }
    return lines;
}

int compareNames(std::string_view a, std::string_view b) {
    const char *atA = a.data(), *atB = b.data();
    const char *const endA = atA + a.size(), *const endB = atB + b.size();
    while (atA != endA || atB != endB) {
        const std::uint64_t placeA = nextPlace(atA, endA), placeB = nextPlace(atB, endB);
        if (placeA != placeB) {
            return placeA < placeB ? -1 : 1;
        }
    }
    return 0;
}
