#include "exchange/old_text.h"

#include <algorithm>

#include "platform/text/code_page.h"
#include "platform/text/utf8.h"

namespace exchange {
namespace {

constexpr char32_t kUnknown = 0xFFFD;

// Puts letters together, and notices what is none.
class Letters {
 public:
    void add(char32_t letter) {
        if (letter == 0 || letter == kUnknown) {
            text_.sound = text_.sound && letter != 0;
            write(kUnknown);
        } else {
            write(letter);
        }
    }
    void addUnit(char16_t unit) {
        const bool isSecond = unit >= 0xDC00 && unit < 0xE000;
        if (first_ != 0 && isSecond) {
            add(0x10000 + ((static_cast<char32_t>(first_) - 0xD800) << 10) + (unit - 0xDC00));
            first_ = 0;
            return;
        }
        endPair();
        if (unit >= 0xD800 && unit < 0xDC00) {
            first_ = unit;
        } else if (isSecond) {
            addBroken();
        } else {
            add(unit);
        }
    }
    void addBroken() {
        text_.sound = false;
        write(kUnknown);
    }
    OldText take() {
        endPair();
        return std::move(text_);
    }

 private:
    void endPair() {
        if (first_ != 0) {
            first_ = 0;
            addBroken();
        }
    }
    void write(char32_t letter) { alphabet::appendUtf8(text_.text, letter); }

    OldText text_;
    char16_t first_ = 0;  // of a pair
};

unsigned char byteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

void addUnits(Letters& letters, std::string_view bytes, std::size_t at, std::size_t end) {
    for (; at + 1 < end; at += 2) {
        letters.addUnit(static_cast<char16_t>(byteAt(bytes, at) | (byteAt(bytes, at + 1) << 8)));
    }
    if (at < end) {
        letters.addBroken();
    }
}

void addPacked(Letters& letters, std::string_view bytes) {
    bool packed = true;
    for (std::size_t at = 2; at < bytes.size();) {
        if (packed && byteAt(bytes, at) != 0) {
            letters.addUnit(byteAt(bytes, at++));
            continue;
        }
        if (packed) {
            packed = false;
            ++at;
            continue;
        }
        // A stretch of two bytes a letter ends with a zero in the place of the lower byte.
        if (byteAt(bytes, at) == 0) {
            packed = true;
            ++at;
        } else {
            addUnits(letters, bytes, at, std::min(at + 2, bytes.size()));
            at += 2;
        }
    }
}

}  // namespace

OldText fromCodePage(std::string_view bytes) {
    Letters letters;
    for (const char byte : bytes) {
        letters.add(alphabet::letterOf(static_cast<unsigned char>(byte)));
    }
    return letters.take();
}

OldText fromTwoBytes(std::string_view bytes) {
    Letters letters;
    if (bytes.size() >= 2 && byteAt(bytes, 0) == 0xFF && byteAt(bytes, 1) == 0xFE) {
        addPacked(letters, bytes);
    } else {
        addUnits(letters, bytes, 0, bytes.size());
    }
    return letters.take();
}

}  // namespace exchange
