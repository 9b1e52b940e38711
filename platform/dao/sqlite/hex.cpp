#include "platform/dao/sqlite/hex.h"

namespace dao {

std::string toHex(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::string fromHex(std::string_view digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    }
    return bytes;
}

}  // namespace dao
