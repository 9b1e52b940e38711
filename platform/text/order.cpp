#include "platform/text/order.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/text/ascii.h"
#include "platform/text/utf8.h"

namespace alphabet {
namespace {

// A letter in lower case, and the plain letter that it counts as (0: none, it stands for itself).
struct Letter {
    std::uint16_t lower = 0;
    char base = 0;
};

// The plain letters of the small letters from U+00DF to U+017F; a point where there is none, and under a
// capital.
constexpr std::string_view kBasesDF =
    "saaaaaaaceeeeiiiidnooooo.ouuuuyty"
    ".a.a.a.c.c.c.c.d...e.e.e.e.e.g.g.g.g.h.h.i.i.i.i.i.i.j.kk.l.l.l.l.l.n.n.nn.n.o.o.o.o.r.r.r.s.s.s.s.t.t."
    "t."
    "u.u.u.u.u.u.w.y..z.z.zs";
static_assert(kBasesDF.size() == 0x180 - 0xDF);
// The same from U+01C4 (dž, lj and nj written as one sign) to U+0233.
constexpr std::string_view kBases1C4 =
    "..d..l..n.a.i.o.u.u.u.u.u..a.a.a...g.k.o.o..j....g...n.a.a.o.a.a.e.e.i.i.o.o.r.r.u.u.s.t...h.......a.e."
    "o.o.o.o.y";
static_assert(kBases1C4.size() == 0x234 - 0x1C4);
// The same from U+1E00 to U+1EFF.
constexpr std::string_view kBases1E00 =
    ".a.b.b.b.c.d.d.d.d.d.e.e.e.e.e.f.g.h.h.h.h.h.i.i.k.k.k.l.l.l.l.m.m.m.n.n.n.n.o.o.o.o.p.p.r.r.r.r.s.s.s."
    "s.s."
    "t.t.t.t.u.u.u.u.u.v.v.w.w.w.w.w.x.x.y.z.z.zhtwy.s.....a.a.a.a.a.a.a.a.a.a.a.a.e.e.e.e.e.e.e.e.i.i.o.o.o."
    "o."
    "o.o.o.o.o.o.o.o.u.u.u.u.u.u.u.y.y.y.y......";
static_assert(kBases1E00.size() == 0x100);

constexpr bool within(char32_t code, char32_t first, char32_t last) {
    return code >= first && code <= last;
}

// Pairs that stand side by side, the capital first, on an even or on an odd code.
constexpr bool isEvenCapital(char32_t code) {
    return code % 2 == 0 &&
           ((within(code, 0x100, 0x136) && code != 0x130) || within(code, 0x14A, 0x176) ||
            within(code, 0x1DE, 0x1EE) || within(code, 0x1F8, 0x21E) || within(code, 0x222, 0x232) ||
            within(code, 0x460, 0x480) || within(code, 0x48A, 0x4BE) || within(code, 0x4D0, 0x52E) ||
            within(code, 0x1E00, 0x1E94) || within(code, 0x1EA0, 0x1EFE));
}

constexpr bool isOddCapital(char32_t code) {
    return code % 2 == 1 && (within(code, 0x139, 0x147) || within(code, 0x179, 0x17D) ||
                             within(code, 0x1CD, 0x1DB) || within(code, 0x4C1, 0x4CD));
}

// Written out rather than asked of the system: its answers grow with each release, and indexes must not.
constexpr char32_t lowerOf(char32_t code) {
    if (isEvenCapital(code) || isOddCapital(code)) {
        return code + 1;
    }
    if ((within(code, 0xC0, 0xDE) && code != 0xD7) || (within(code, 0x391, 0x3AB) && code != 0x3A2) ||
        within(code, 0x410, 0x42F)) {
        return code + 0x20;
    }
    if (within(code, 0x400, 0x40F)) {
        return code + 0x50;
    }
    if (within(code, 0x1C4, 0x1CB)) {  // each a capital, a capital with a small letter, and small
        return code + 2 - (code - 0x1C4) % 3;
    }
    switch (code) {
        case 0x178:
            return 0xFF;
        case 0x386:
            return 0x3AC;
        case 0x388:
        case 0x389:
        case 0x38A:
            return code + 0x25;
        case 0x38C:
            return 0x3CC;
        case 0x38E:
        case 0x38F:
            return code + 0x3F;
        case 0x3C2:  // a sigma at the end of a word
            return 0x3C3;
        case 0x1E9E:
            return 0xDF;
        default:
            return code;
    }
}

constexpr char baseOf(char32_t lower) {
    char base = '.';
    if (within(lower, 0xDF, 0x17F)) {
        base = kBasesDF[lower - 0xDF];
    } else if (within(lower, 0x1C4, 0x233)) {
        base = kBases1C4[lower - 0x1C4];
    } else if (within(lower, 0x1E00, 0x1EFF)) {
        base = kBases1E00[lower - 0x1E00];
    }
    return base == '.' ? '\0' : base;
}

// Looked up while the lists are put in order, so worked out once.
constexpr char32_t kTableEnd = 0x530;
constexpr auto kTable = [] {
    std::array<Letter, kTableEnd> table{};
    for (char32_t code = 0x80; code < kTableEnd; ++code) {
        const char32_t lower = lowerOf(code);
        table[code] = {static_cast<std::uint16_t>(lower), baseOf(lower)};
    }
    return table;
}();

// A letter's place in the alphabet, and what its mark adds where two texts are otherwise the same.
struct Place {
    std::uint32_t letter = 0;
    std::uint32_t mark = 0;
};

// Behind the plain letter and all that counts as it.
constexpr std::uint32_t ownPlace(char32_t lower) {
    switch (lower) {
        case 0x10D:  // č
            return ('c' << 8) + 1;
        case 0x107:  // ć
            return ('c' << 8) + 2;
        case 0x111:  // đ
            return ('d' << 8) + 1;
        case 0x161:  // š
            return ('s' << 8) + 1;
        case 0x17E:  // ž
            return ('z' << 8) + 1;
        default:
            return 0;
    }
}

constexpr Place placeOf(char32_t code) {
    if (code < 0x80) {
        return {static_cast<std::uint32_t>(lowerAscii(static_cast<char>(code))) << 8, 0};
    }
    const Letter letter = code < kTableEnd ? kTable[code]
                                           : Letter{static_cast<std::uint16_t>(lowerOf(code & 0xFFFFU)),
                                                    code < 0x10000 ? baseOf(lowerOf(code)) : '\0'};
    const char32_t lower = code < 0x10000 ? letter.lower : code;
    if (const std::uint32_t own = ownPlace(lower); own != 0) {
        return {own, 0};
    }
    if (letter.base != 0) {
        return {static_cast<std::uint32_t>(letter.base) << 8, lower};
    }
    return {lower << 8, 0};
}

constexpr char32_t kNoText = 0x110000;  // behind the last character there is, plus the byte

// Takes one character off the front.
char32_t takeCharacter(std::string_view& rest) {
    const auto first = static_cast<unsigned char>(rest.front());
    rest.remove_prefix(1);
    if (first < 0x80) {
        return first;
    }
    const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC2 ? 1 : 0;
    if (more == 0 || rest.size() < more) {
        return kNoText + first;
    }
    char32_t code = first & (0x3FU >> more);
    for (std::size_t i = 0; i < more; ++i) {
        const auto next = static_cast<unsigned char>(rest[i]);
        if ((next & 0xC0U) != 0x80) {
            return kNoText + first;
        }
        code = (code << 6) | (next & 0x3FU);
    }
    if (code >= kNoText) {
        return kNoText + first;
    }
    rest.remove_prefix(more);
    return code;
}

int sign(std::uint32_t a, std::uint32_t b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

// A character from U+0080 on as the bytes of a key: as UTF-8, whose bytes order as the characters do. What is
// no text comes behind.
void appendCharacter(std::string& key, char32_t code) {
    if (code >= kNoText) {
        key.push_back(static_cast<char>(0xF8));
        key.push_back(static_cast<char>(code - kNoText));
    } else {
        appendUtf8(key, code);
    }
}

// Behind every byte with which a letter can begin: "čz" after "cz", and after all that begins with c.
constexpr char kOwnLetter = static_cast<char>(0xFF);
constexpr char kEndOfLetters = 0;
constexpr char kNoMark = 1;

void appendLetter(std::string& key, std::uint32_t letter) {
    const std::uint32_t code = letter >> 8;
    if (code >= 0x80) {
        return appendCharacter(key, code);
    }
    key.push_back(static_cast<char>(code));
    if (const std::uint32_t own = letter & 0xFFU; own != 0) {
        key.push_back(kOwnLetter);
        key.push_back(static_cast<char>(own));
    }
}

}  // namespace

int compare(std::string_view a, std::string_view b) {
    int marks = 0;
    while (!a.empty() && !b.empty()) {
        if (a.front() == b.front() && static_cast<unsigned char>(a.front()) < 0x80) {
            a.remove_prefix(1);
            b.remove_prefix(1);
            continue;
        }
        const Place placeA = placeOf(takeCharacter(a));
        const Place placeB = placeOf(takeCharacter(b));
        if (placeA.letter != placeB.letter) {
            return sign(placeA.letter, placeB.letter);
        }
        if (marks == 0) {
            marks = sign(placeA.mark, placeB.mark);
        }
    }
    if (a.empty() != b.empty()) {
        return a.empty() ? -1 : 1;
    }
    return marks;
}

int compareFront(std::string_view text, std::string_view front) {
    while (!front.empty()) {
        if (text.empty()) {
            return -1;
        }
        const std::uint32_t letter = placeOf(takeCharacter(text)).letter;
        const std::uint32_t wanted = placeOf(takeCharacter(front)).letter;
        if (letter != wanted) {
            return sign(letter, wanted);
        }
    }
    return 0;
}

// Most names are plain letters from their first to their last.
void appendOrderKey(std::string& key, std::string_view text) {
    const auto marked = std::find_if(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
    auto plain = static_cast<std::size_t>(marked - text.begin());  // letters since the last mark
    const auto start = static_cast<std::ptrdiff_t>(key.size());
    key.append(text, 0, plain);
    std::transform(key.begin() + start, key.end(), key.begin() + start, lowerAscii);
    text.remove_prefix(plain);
    std::string marks;
    while (!text.empty()) {
        const Place place = placeOf(takeCharacter(text));
        appendLetter(key, place.letter);
        if (place.mark == 0) {
            ++plain;
            continue;
        }
        marks.append(plain, kNoMark);
        plain = 0;
        appendCharacter(marks, place.mark);
    }
    if (!marks.empty()) {
        key.push_back(kEndOfLetters);
        key += marks;
    }
}

std::string orderKey(std::string_view text) {
    std::string key;
    key.reserve(text.size() + 8);
    appendOrderKey(key, text);
    return key;
}

}  // namespace alphabet
