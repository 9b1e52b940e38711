#include "exchange/old_text.h"

#include <array>

namespace exchange {
namespace {

constexpr char32_t kUnknown = 0xFFFD;

// The upper half of Windows-1250; the five places that it leaves empty stand for themselves, as everywhere.
constexpr std::array<char16_t, 128> kUpperHalf{
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
    void write(char32_t letter) {
        std::string& out = text_.text;
        const auto tail = [&](int shift) { out += static_cast<char>(0x80 | ((letter >> shift) & 0x3F)); };
        if (letter < 0x80) {
            out += static_cast<char>(letter);
        } else if (letter < 0x800) {
            out += static_cast<char>(0xC0 | (letter >> 6));
            tail(0);
        } else if (letter < 0x10000) {
            out += static_cast<char>(0xE0 | (letter >> 12));
            tail(6);
            tail(0);
        } else {
            out += static_cast<char>(0xF0 | (letter >> 18));
            tail(12);
            tail(6);
            tail(0);
        }
    }

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
        const auto code = static_cast<unsigned char>(byte);
        letters.add(code < 0x80 ? code : kUpperHalf[code - 0x80]);
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
