#include "common/scramble.h"

#include <QList>
#include <optional>
#include <utility>

#include "platform/text/code_page.h"

// The firm's data and the database password are kept so that nobody reads them over a shoulder in the
// settings file. This is no cipher, only a veil, and every copy of the program must draw it in the same way.

namespace {

constexpr int kCodes = 256;

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
        if (const std::optional<unsigned char> code = alphabet::codeOf(characters[i])) {
            const qsizetype turned = kCodes - (i + 1) - *code;
            characters[i] =
                alphabet::letterOf(static_cast<unsigned char>(((turned % kCodes) + kCodes) % kCodes));
        }
    }
    return textOf(characters);
}
