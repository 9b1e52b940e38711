#include "platform/text/utf8.h"

#include <algorithm>

namespace alphabet {
namespace {

// What may stand behind a letter's first byte: how many bytes in all, and the bounds of the second. The
// bounds keep out long forms of short letters, halves of pairs, and what lies behind the last letter.
struct Shape {
    std::size_t size = 0;  // 0: no letter begins so
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
};

Shape shapeOf(unsigned char first) {
    if (first >= 0xC2 && first <= 0xDF) {
        return {2};
    }
    switch (first) {
        case 0xE0:
            return {3, 0xA0};
        case 0xED:
            return {3, 0x80, 0x9F};
        case 0xF0:
            return {4, 0x90};
        case 0xF4:
            return {4, 0x80, 0x8F};
        default:
            break;
    }
    if (first > 0xE0 && first <= 0xEF) {
        return {3};
    }
    return first > 0xF0 && first < 0xF4 ? Shape{4} : Shape{};
}

// The bytes of a letter behind its first one.
bool goesOn(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The letter of more than one byte that the text begins with; 0: there is none.
std::size_t letterSize(std::string_view text) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const Shape shape = shapeOf(byte(0));
    if (shape.size == 0 || text.size() < shape.size || byte(1) < shape.low || byte(1) > shape.high) {
        return 0;
    }
    const std::string_view rest = text.substr(2, shape.size - 2);
    return std::all_of(rest.begin(), rest.end(), goesOn) ? shape.size : 0;
}

}  // namespace

bool isSound(std::string_view text) {
    while (!text.empty()) {
        const auto first = static_cast<unsigned char>(text.front());
        const std::size_t size = first >= 0x80 ? letterSize(text) : first != 0 ? 1 : 0;
        if (size == 0) {
            return false;
        }
        text.remove_prefix(size);
    }
    return true;
}

std::size_t lettersIn(std::string_view text) {
    return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), goesOn));
}

std::size_t bytesOfLetters(std::string_view text, std::size_t letters) {
    std::size_t at = 0;
    while (at < text.size() && (goesOn(text[at]) || letters-- > 0)) {
        ++at;
    }
    return at;
}

void appendUtf8(std::string& text, char32_t letter) {
    const auto tail = [&text](char32_t part) { text.push_back(static_cast<char>(0x80U | (part & 0x3FU))); };
    if (letter < 0x80) {
        text.push_back(static_cast<char>(letter));
        return;
    }
    if (letter < 0x800) {
        text.push_back(static_cast<char>(0xC0U | (letter >> 6)));
    } else if (letter < 0x10000) {
        text.push_back(static_cast<char>(0xE0U | (letter >> 12)));
        tail(letter >> 6);
    } else {
        text.push_back(static_cast<char>(0xF0U | (letter >> 18)));
        tail(letter >> 12);
        tail(letter >> 6);
    }
    tail(letter);
}

}  // namespace alphabet
