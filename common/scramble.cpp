#include "common/scramble.h"

#include <QHash>
#include <QList>
#include <array>
#include <optional>
#include <utility>

// The firm's data and the database password are kept so that nobody reads them over a shoulder in the
// settings file. This is no cipher, only a veil, and every copy of the program must draw it in the same way.

namespace {

constexpr int kCodes = 256;

// The upper half of Windows-1250. The five places that the page leaves open stand for the control characters
// of the same number, so that all 256 codes go there and back.
constexpr std::array<char16_t, 128> kUpperHalf = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021, 0x0088, 0x2030, 0x0160, 0x2039, 0x015A,
    0x0164, 0x017D, 0x0179, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B, 0x00B0, 0x00B1, 0x02DB, 0x0142,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C, 0x0154,
    0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD,
    0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA,
    0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4,
    0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9};

char32_t characterOf(int code) {
    constexpr int kHalf = kCodes / 2;
    return code < kHalf ? static_cast<char32_t>(code) : kUpperHalf[static_cast<std::size_t>(code - kHalf)];
}

// Nothing for a character outside the page.
std::optional<int> ansiCodeOf(char32_t character) {
    static const QHash<char32_t, int> kCodeOf = [] {
        QHash<char32_t, int> codes;
        for (int code = 0; code < kCodes; ++code) {
            codes.insert(characterOf(code), code);
        }
        return codes;
    }();
    const auto found = kCodeOf.constFind(character);
    return found == kCodeOf.constEnd() ? std::nullopt : std::optional<int>(*found);
}

// Whole characters, not halves of a pair: swapping the halves of one typed beyond the basic plane would
// destroy it. A half without its other half stays what it is, as every character does.
QList<char32_t> charactersOf(const QString& text) {
    QList<char32_t> characters;
    characters.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        characters += pair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : char32_t{text[i].unicode()};
        i += pair ? 1 : 0;
    }
    return characters;
}

QString textOf(const QList<char32_t>& characters) {
    QString text;
    text.reserve(characters.size());
    for (const char32_t character : characters) {
        text += QChar::fromUcs4(character);
    }
    return text;
}

void swapPairs(QList<char32_t>& characters, qsizetype first) {
    for (qsizetype i = first; i + 1 < characters.size(); i += 2) {
        std::swap(characters[i], characters[i + 1]);
    }
}

}  // namespace

QString ScrambleOrder(const QString& text, bool flag) {
    QList<char32_t> characters = charactersOf(text);
    if (characters.size() < 3) {
        return text;
    }
    constexpr qsizetype kPassA = 1;
    constexpr qsizetype kPassB = 0;
    swapPairs(characters, flag ? kPassA : kPassB);
    swapPairs(characters, flag ? kPassB : kPassA);
    return textOf(characters);
}

QString ScrambleChars(const QString& text) {
    QList<char32_t> characters = charactersOf(text);
    for (qsizetype i = 0; i < characters.size(); ++i) {
        if (const std::optional<int> code = ansiCodeOf(characters[i])) {
            const qsizetype turned = kCodes - (i + 1) - *code;
            characters[i] = characterOf(static_cast<int>(((turned % kCodes) + kCodes) % kCodes));
        }
    }
    return textOf(characters);
}
